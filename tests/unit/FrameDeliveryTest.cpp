#include "pip/FrameDelivery.h"

#include "tests/unit/DesktopTest.h"

#include <gmock/gmock.h>

namespace mirrolet {
namespace {

using namespace platform;
using testing::ElementsAre;

constexpr desktop::WindowNumber callWindow = 77;

class FrameDeliveryTest : public DesktopTest {
  protected:
    FrameDeliveryTest() {
        atEnd.emplace_back([this] { shown = nullptr; });
    }

    void draw(std::uint32_t colour) { desktop.capture().setPicture(callWindow, {400, 200}, colour); }
    /// Posts the current image of the window `count` times. Returns the colours of the images that reach the
    /// main thread.
    std::vector<std::uint32_t> deliveredAfterPosts(int count) {
        delivered.clear();
        for (int post = 0; post < count; ++post)
            delivery.post(desktop.capture().image(callWindow));
        time.run();
        return delivered;
    }

    std::vector<std::uint32_t> delivered;
    CGImageRef shown; ///< Keeps the last image alive, as the mirror's image view does.
    FrameDelivery delivery{[this](const CGImageRef& image) {
        delivered.push_back(image->readBack().pixels.front() & 0xffffff);
        shown = image;
    }};
};

TEST_F(FrameDeliveryTest, PostsEachImageInItsOrderAndRepeatsOnceASecond) {
    draw(1);
    EXPECT_THAT(deliveredAfterPosts(1), ElementsAre(1));
    EXPECT_THAT(deliveredAfterPosts(14), ElementsAre()) << "the main thread sleeps on";
    EXPECT_EQ(deliveredAfterPosts(1), std::vector<std::uint32_t>(15, 1));
    EXPECT_THAT(deliveredAfterPosts(2), ElementsAre());
    draw(2);
    EXPECT_THAT(deliveredAfterPosts(2), ElementsAre(1, 1, 2));
}

TEST_F(FrameDeliveryTest, KeepsNoImageThatNobodyShowsAnyMore) {
    draw(1);
    deliveredAfterPosts(3);
    shown = nullptr;
    EXPECT_EQ(desktop.capture().imagesHeld(), 0);
    desktop.capture().destroyWindow(callWindow);
    desktop.capture().setPicture(callWindow + 1, {400, 200}, 2);
    delivered.clear();
    delivery.post(desktop.capture().image(callWindow + 1));
    time.run();
    EXPECT_THAT(delivered, ElementsAre(2));
}

} // namespace
} // namespace mirrolet
