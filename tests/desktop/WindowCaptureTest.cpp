#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace mirrolet::harness {
namespace {

using platform::desktop::CaptureFailure;
using platform::desktop::CaptureResult;
using platform::desktop::PixelSize;

constexpr std::uint32_t red = 0xffcc2020;
constexpr std::uint32_t green = 0xff20a040;
constexpr std::uint32_t black = 0xff000000;

class WindowCaptureTest : public testing::Test, protected MirrorParts {
  protected:
    static CallWindow::Options plain(const std::string& colour) {
        CallWindow::Options options;
        options.colour = colour;
        return options;
    }

    /// Returns whether the image has this size and all of its pixels have this colour.
    static bool isPlain(const Image& image, std::uint32_t colour, PixelSize size) {
        if (!image || image->size() != size)
            return false;
        const auto bitmap = image->readBack();
        return bitmap.size == size && std::all_of(bitmap.pixels.begin(), bitmap.pixels.end(),
                                                  [colour](std::uint32_t pixel) { return pixel == colour; });
    }

    bool becomesPlain(xcb_window_t window, std::uint32_t colour, PixelSize size = {640, 400}) {
        return waitUntil([&] {
            held = capture->image(window);
            return isPlain(held, colour, size);
        });
    }

    /// Waits until the capture returns the same image for 1.2 seconds. A shorter time would not be enough,
    /// because the capture reads the window once more when the last change is a second old.
    bool comesToRest(xcb_window_t window) {
        return waitUntil([&] {
            held = capture->image(window);
            return holdsFor([&] { return capture->image(window) == held; }, std::chrono::milliseconds(1200));
        });
    }

    Image held;
};

TEST_F(WindowCaptureTest, ShowsAnObscuredWindowLiveAndAnUnchangedOneAsTheSameObject) {
    const CallWindow window(server, plain("cc2020"));
    const CallWindow cover(server, plain("0000ff"));
    ASSERT_TRUE(capture->permitted());
    ASSERT_TRUE(becomesPlain(window.window(), red));
    EXPECT_TRUE(comesToRest(window.window()));

    const auto before = held;
    window.tell("colour 20a040");
    EXPECT_TRUE(waitUntil([&] { return capture->image(window.window()) != before; }));
    EXPECT_TRUE(becomesPlain(window.window(), green));
    EXPECT_TRUE(comesToRest(window.window()));
}

TEST_F(WindowCaptureTest, FollowsContinuousDamageToTheLastPictureAndComesToRest) {
    const CallWindow window(server, plain("cc2020"));
    ASSERT_TRUE(becomesPlain(window.window(), red));
    // Changes the window so often that the capture assumes damage for some time, and then waits for damage
    // reports again.
    for (int picture = 0; picture < 40; ++picture) {
        window.tell(picture % 2 == 0 ? "colour 20a040" : "colour cc2020");
        ASSERT_TRUE(becomesPlain(window.window(), picture % 2 == 0 ? green : red)) << picture;
    }
    window.tell("resize 300 200");
    EXPECT_TRUE(becomesPlain(window.window(), red, {300, 200}));
    EXPECT_TRUE(comesToRest(window.window()));
    window.tell("colour 20a040");
    EXPECT_TRUE(becomesPlain(window.window(), green, {300, 200}));
}

TEST_F(WindowCaptureTest, IsBlackUntilTheWindowIsFirstSeen) {
    auto options = plain("cc2020");
    const CallWindow window(server, options);
    window.tell("unmap");
    ASSERT_TRUE(waitUntil([&] { return !WindowFacts(client).viewable(window.window()); }));
    EXPECT_TRUE(isPlain(held = capture->image(window.window()), black, {640, 400}));
    EXPECT_EQ(capture->image(window.window()), held);
    window.tell("map");
    EXPECT_TRUE(becomesPlain(window.window(), red));
}

TEST_F(WindowCaptureTest, ShowsTheWindowWithoutItsBorderItsShadowAndItsAlpha) {
    struct Row {
        const char* what;
        int border;
        int alpha;
        const char* extents;
        PixelSize size;
        std::uint32_t colour;
    };
    const Row rows[] = {
        {"border", 7, -1, "", {640, 400}, red},
        {"shadow", 0, -1, "10,20,30,40", {610, 330}, red},
        {"shadow larger than the window", 0, -1, "320,320,0,0", {640, 400}, red},
        {"shadow out of all bounds", 0, -1, "4294967295,2,0,0", {640, 400}, red},
        {"alpha, which has darkened the colour", 0, 128, "", {640, 400}, 0xff661010},
        {"all of them", 5, 255, "1,2,3,4", {637, 393}, red},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        auto options = plain("cc2020");
        options.border = row.border;
        options.alpha = row.alpha;
        options.frameExtents = row.extents;
        const CallWindow window(server, options);
        EXPECT_TRUE(becomesPlain(window.window(), row.colour, row.size));
    }
}

TEST_F(WindowCaptureTest, GivesNothingForAWindowThatIsGoneEvenIfItsNumberIsUsedAgain) {
    const auto window = xcb_generate_id(client.xcb());
    EXPECT_EQ(capture->image(window), nullptr);
    const auto create = [&] {
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 80, 60, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &red);
        xcb_map_window(client.xcb(), window);
        client.sync();
    };
    create();
    EXPECT_FALSE(capture->isCaptured(window));
    ASSERT_TRUE(becomesPlain(window, red, {80, 60}));
    EXPECT_TRUE(capture->isCaptured(window));
    xcb_destroy_window(client.xcb(), window);
    create();
    EXPECT_TRUE(waitUntil([&] { return capture->image(window) == nullptr; }));
    EXPECT_TRUE(isPlain(held, red, {80, 60})) << "the last picture stays readable";
    EXPECT_FALSE(capture->isCaptured(window)) << "the held image is of the old window";
    held.reset();
    EXPECT_TRUE(becomesPlain(window, red, {80, 60})) << "nobody holds the old window's picture any more";
}

TEST_F(WindowCaptureTest, SaysWhyThereIsNoImage) {
    const auto failsFor = [&](xcb_window_t window, CaptureFailure failure) {
        return capture->capture(window) == CaptureResult(failure);
    };
    const auto inputOnly = xcb_generate_id(client.xcb());
    xcb_create_window(client.xcb(), 0, inputOnly, client.root(), 0, 0, 80, 60, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    client.sync();
    EXPECT_TRUE(failsFor(0, CaptureFailure::gone));
    EXPECT_TRUE(failsFor(client.root(), CaptureFailure::gone));
    EXPECT_TRUE(failsFor(xcb_generate_id(client.xcb()), CaptureFailure::gone));
    EXPECT_TRUE(failsFor(inputOnly, CaptureFailure::nothingToSee));
    kill(server.pid(), SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return failsFor(inputOnly, CaptureFailure::serverLost); }));
}

} // namespace
} // namespace mirrolet::harness
