// By hand, as often as one likes: MIRROLET_DEATHS=10000 desktop_tests --gtest_filter='ASourceThatDies*'

#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/Holdings.h"
#include "tests/desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <thread>

namespace mirrolet::harness {
namespace {

using platform::desktop::PixelRect;

/// Windows of a client that come, change and go at any moment, while capture and presenter are at work on
/// them.
class ASourceThatDies : public testing::Test, protected MirrorParts {
  protected:
    ASourceThatDies() {
        target = makeWindow({700, 10, 100, 100});
        presenter = x11::X11WindowPresenter::make(*connection, target);
        presenter->resize({100, 100}, 10);
    }

    /// Ends the window after some of the requests of a tick, by chance; other events come before.
    void killSoon(XClient& killer, xcb_window_t window, unsigned chance) {
        std::this_thread::sleep_for(std::chrono::microseconds(chance % 3000));
        if (chance % 3 == 0) {
            const std::uint32_t size[] = {100 + chance % 100, 100};
            xcb_configure_window(killer.xcb(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                 size);
        }
        if (chance % 5 == 0)
            xcb_unmap_window(killer.xcb(), window);
        if (chance % 7 == 0) {
            xcb_unmap_window(killer.xcb(), window);
            xcb_map_window(killer.xcb(), window);
        }
        xcb_destroy_window(killer.xcb(), window);
        killer.sync();
    }

    void mirrorUntilGone(xcb_window_t window) {
        const PixelRect part{0, 0, 100, 100};
        require("the capture sees that the window is gone", [&] {
            const auto image = capture->image(window);
            presenter->setPicture(image, image ? part : PixelRect{});
            presenter->present();
            return !image;
        });
    }

    xcb_window_t target = XCB_NONE;
    std::unique_ptr<platform::desktop::WindowPresenter> presenter;
};

TEST_F(ASourceThatDies, BetweenAnyTwoRequestsLeavesNothingBehind) {
    const char* wanted = std::getenv("MIRROLET_DEATHS");
    const int deaths = wanted == nullptr ? 300 : std::atoi(wanted);
    XClient killer(server);
    std::mt19937 chance(7); // NOLINT: the same deaths in each run.
    std::map<std::string, long> before;
    for (int death = 0; death < deaths; ++death) {
        const auto window = makeWindow({10, 10, 120, 100});
        std::thread killing(
            [&, moment = static_cast<unsigned>(chance())] { killSoon(killer, window, moment); });
        mirrorUntilGone(window);
        killing.join();
        if (death == 10)
            before = resourcesOf(client, connection->ownWindow());
    }
    require("the server keeps no more than at the start",
            [&] { return resourcesOf(client, connection->ownWindow()) == before; });
    const auto last = makeWindow({10, 10, 120, 100});
    EXPECT_TRUE(waitUntil([&] { return capture->image(last) != nullptr; }));
}

} // namespace
} // namespace mirrolet::harness
