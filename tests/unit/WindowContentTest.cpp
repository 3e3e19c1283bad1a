#include "platform/desktop/x11/capture/WindowContent.h"

#include <gtest/gtest.h>

namespace mirrolet::platform::desktop::x11 {
namespace {

const PixelRect everything{0, 0, 100, 80};

TEST(WindowContentTest, GivesWhatChangedBetweenTwoImagesAlsoWhenSomeInBetweenWereNeverShown) {
    WindowContent content(NothingSeen{{100, 80}});
    EXPECT_EQ(content.changedBetween(0, 0), PixelRect{});
    content.noteDamage({10, 10, 5, 5});
    content.noteDamage({20, 30, 10, 10});
    content.noteDamage({90, 70, 50, 50});
    EXPECT_EQ(content.serial(), 3U);
    EXPECT_EQ(content.changedBetween(0, 1), (PixelRect{10, 10, 5, 5}));
    EXPECT_EQ(content.changedBetween(0, 2), (PixelRect{10, 10, 20, 30}));
    EXPECT_EQ(content.changedBetween(2, 3), (PixelRect{90, 70, 10, 10})) << "no more than the window";
    EXPECT_EQ(content.changedBetween(3, 1), everything) << "an older image shown after a newer one";
}

TEST(WindowContentTest, GivesAllOfItWhenTheLastImageIsTooOld) {
    WindowContent content(NothingSeen{{100, 80}});
    for (int i = 0; i < 1000; ++i)
        content.noteDamage({1, 1, 1, 1});
    EXPECT_EQ(content.changedBetween(0, 1000), everything);
    EXPECT_EQ(content.changedBetween(999, 1000), (PixelRect{1, 1, 1, 1}));
}

TEST(WindowContentTest, GivesChangesInThePartThatIsShownOfAWindowWithBorderAndShadow) {
    constexpr int border = 7;
    WindowContent content(RedirectedPixels{{{}, 0, {border + 10, border + 30, 60, 40}}, border});
    content.noteDamage({10, 30, 5, 5});
    content.noteDamage({0, 0, 1000, 31});
    content.noteDamage({0, 0, 9, 9});
    EXPECT_EQ(content.changedBetween(0, 1), (PixelRect{0, 0, 5, 5}));
    EXPECT_EQ(content.changedBetween(1, 2), (PixelRect{0, 0, 60, 1}));
    EXPECT_EQ(content.changedBetween(2, 3), PixelRect{});
    content.noteDamageEverywhere();
    EXPECT_EQ(content.changedBetween(3, 4), (PixelRect{0, 0, 60, 40}));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
