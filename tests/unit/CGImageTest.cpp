#include "platform/coregraphics/CGImage.h"

#include "tests/unit/DesktopTest.h"

namespace mirrolet::platform {
namespace {

using desktop::CaptureFailure;

class CGImageTest : public DesktopTest {
  protected:
    /// Tries to make an image of the window, and expects that this fails. Returns what is logged meanwhile.
    static std::string logOf(desktop::WindowNumber window) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(CGWindowListCreateImage(CGRectNull, kCGWindowListOptionIncludingWindow, window,
                                          kCGWindowImageBoundsIgnoreFraming | kCGWindowImageBestResolution),
                  nullptr);
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(CGImageTest, LogsWhyAWindowCannotBeMirroredUnlessThatIsExpected) {
    auto& capture = desktop.capture();
    capture.failWindow(1, CaptureFailure::gone);
    capture.failWindow(2, CaptureFailure::serverLost);
    capture.failWindow(3, CaptureFailure::nothingToSee);
    capture.failWindow(4, CaptureFailure::notPermitted);
    EXPECT_EQ(logOf(1), "");
    EXPECT_EQ(logOf(2), "");
    EXPECT_EQ(logOf(3), "Window 3 cannot be mirrored: it never shows anything.\n");
    EXPECT_EQ(logOf(4), "Window 4 cannot be mirrored: this desktop does not permit it.\n");
}

} // namespace
} // namespace mirrolet::platform
