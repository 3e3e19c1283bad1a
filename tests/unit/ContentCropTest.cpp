#include "platform/desktop/wayland/plasma/ContentCrop.h"

#include <gtest/gtest.h>

namespace mirrolet::platform::desktop::wayland {
namespace {

PlasmaWindow windowWith(PixelRect frame, PixelRect content) {
    PlasmaWindow window;
    window.frame = frame;
    window.content = content;
    return window;
}

TEST(ContentCropTest, LeavesTheTitleBarOutAtEachScale) {
    const auto window = windowWith({100, 50, 640, 430}, {102, 80, 636, 398});
    ContentCrop crop;
    EXPECT_EQ(crop.partOf({0, 0, 640, 430}, window), (PixelRect{2, 30, 636, 398}));
    EXPECT_EQ(crop.partOf({0, 0, 1280, 860}, window), (PixelRect{4, 60, 1272, 796}));
    EXPECT_EQ(crop.partOf({0, 0, 800, 538}, window), (PixelRect{3, 38, 795, 498}));
}

TEST(ContentCropTest, LeavesAMenuOutThatReachesOverTheEdge) {
    const auto window = windowWith({100, 50, 640, 430}, {100, 80, 640, 400});
    ContentCrop crop;
    EXPECT_EQ(crop.partOf({0, 0, 1280, 860}, window), (PixelRect{0, 60, 1280, 800}));
    EXPECT_EQ(crop.partOf({0, 0, 1500, 860}, window), (PixelRect{0, 60, 1280, 800}));
    EXPECT_EQ(crop.partOf({0, 0, 1280, 1300}, window), (PixelRect{0, 60, 1280, 800}));
}

TEST(ContentCropTest, TakesTheWholeFrameIfTheContentIsNotKnownOrNotInIt) {
    PlasmaWindow unknown;
    unknown.frame = {0, 0, 640, 430};
    ContentCrop crop;
    EXPECT_EQ(crop.partOf({0, 0, 640, 400}, unknown), (PixelRect{0, 0, 640, 400}));
    const auto elsewhere = windowWith({0, 0, 640, 430}, {5000, 0, 10, 10});
    EXPECT_EQ(crop.partOf({0, 0, 640, 430}, elsewhere), (PixelRect{0, 0, 640, 430}));
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
