#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/Similarity.h"
#include "tests/desktop/harness/TextPage.h"
#include "tests/desktop/harness/Wait.h"

#include <gtest/gtest.h>
#include <xcb/composite.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <csignal>
#include <thread>

namespace mirrolet::harness {
namespace {

using platform::desktop::Bitmap;
using platform::desktop::PixelRect;
using platform::desktop::PixelSize;
using platform::desktop::WindowPresenter;

class WindowPresenterTest : public testing::Test, protected MirrorParts {
  protected:
    WindowPresenterTest() : MirrorParts({.width = 2200, .height = 2200}) {}

    void fill(xcb_window_t window, std::uint32_t colour, xcb_rectangle_t area) {
        const auto context = xcb_generate_id(client.xcb());
        xcb_create_gc(client.xcb(), context, window, XCB_GC_FOREGROUND, &colour);
        xcb_poly_fill_rectangle(client.xcb(), window, context, 1, &area);
        xcb_free_gc(client.xcb(), context);
        client.sync();
    }

    /// Returns whether the window is redirected. Only a redirected window has a pixmap of its own.
    bool isRedirected(xcb_window_t window) {
        const auto pixmap = xcb_generate_id(client.xcb());
        const Reply<xcb_generic_error_t> error(xcb_request_check(
            client.xcb(), xcb_composite_name_window_pixmap_checked(client.xcb(), window, pixmap)));
        if (!error)
            xcb_free_pixmap(client.xcb(), pixmap);
        return !error;
    }

    static std::ptrdiff_t count(const Picture& picture, std::uint32_t colour) {
        return std::count(picture.pixels.begin(), picture.pixels.end(), colour);
    }

    /// Captures the window until the image is another object than `before`.
    Image freshImage(xcb_window_t window, const Image& before) {
        Image image;
        waitUntil([&] { return (image = capture->image(window)) != before; });
        return image;
    }
};

TEST_F(WindowPresenterTest, PutsBackgroundPictureOverlayAndCornersOverEachOther) {
    const auto source = makeWindow({300, 0, 100, 60});
    fill(source, 0x2040c0, {0, 0, 100, 60});
    Bitmap overlay{{80, 80}, std::vector<std::uint32_t>(80 * 80)};
    overlay.pixels[40 * 80 + 5] = 0xffffffff;  // A white pixel over the picture.
    overlay.pixels[40 * 80 + 6] = 0x80800000;  // A half transparent red pixel over the picture.
    overlay.pixels[70 * 80 + 40] = 0xff00ff00; // A green pixel over the background.
    for (const auto depth : {std::uint8_t{24}, std::uint8_t{32}}) {
        SCOPED_TRACE(static_cast<int>(depth));
        const auto window = makeWindow({0, 0, 80, 80}, depth);
        const auto presenter = x11::X11WindowPresenter::make(*connection, window);
        ASSERT_TRUE(presenter);
        presenter->resize({80, 80}, 12);
        presenter->setBackground(0xff101010);
        presenter->setPicture(capture->image(source), {0, 16, 80, 48});
        presenter->setOverlay(overlay);
        presenter->present();

        const auto seen = pixelsOf(window, {0, 0, 80, 80});
        const std::uint32_t opaque = depth == 32 ? 0xff000000 : 0;
        EXPECT_EQ(seen.at(40, 15), opaque | 0x101010);
        EXPECT_EQ(seen.at(40, 16), opaque | 0x2040c0);
        EXPECT_EQ(seen.at(0, 40), opaque | 0x2040c0);
        EXPECT_EQ(seen.at(79, 63), opaque | 0x2040c0);
        EXPECT_EQ(seen.at(40, 64), opaque | 0x101010);
        EXPECT_EQ(seen.at(5, 40), opaque | 0xffffff);
        EXPECT_NEAR(seen.at(6, 40) >> 16 & 0xff, 0x90, 2);
        EXPECT_EQ(seen.at(40, 70), opaque | 0x00ff00);
        for (const int x : {0, 79})
            for (const int y : {0, 79})
                EXPECT_EQ(seen.at(x, y), depth == 32 ? 0U : 0x101010U);
        if (depth == 32) {
            EXPECT_EQ(seen.at(12, 0) >> 24, 0xffU) << "where the circle ends";
            const auto edge = seen.at(79 - 3, 4) >> 24; // A pixel on the edge of a round corner.
            EXPECT_GT(edge, 0U);
            EXPECT_EQ(edge, seen.at(3, 4) >> 24) << "the same on the other side";
        }
    }
}

TEST_F(WindowPresenterTest, DrawsTheChangedPartJustAsTheWhole) {
    constexpr PixelSize large{801, 603}, small{90, 70};
    struct Row {
        PixelSize source, panel;
        xcb_rectangle_t change;
    };
    const Row rows[] = {
        {large, {200, 150}, {101, 99, 1, 1}},   {large, {320, 241}, {0, 0, 33, 17}},
        {large, {320, 241}, {790, 595, 11, 8}}, {large, {613, 461}, {300, 300, 77, 5}},
        {large, {70, 53}, {400, 31, 3, 300}},   {large, {1200, 904}, {13, 590, 50, 13}},
        {large, {801, 603}, {1, 2, 3, 4}},      {large, {450, 339}, {640, 480, 2, 100}},
        {small, {720, 560}, {14, 9, 5, 3}}}; // One pixel of the source fills many pixels of the panel.
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.panel.width));
        const auto source = makeWindow({0, 0, row.source.width, row.source.height});
        drawTextPage(client, source, row.source.width, row.source.height);
        // The panel does not obscure the source. In some rows the part that changes reaches a round corner of
        // the panel.
        const auto window = makeWindow({100, 700, row.panel.width, row.panel.height}, 32);
        const PixelRect whole{0, 0, row.panel.width, row.panel.height};
        const auto partly = x11::X11WindowPresenter::make(*connection, window);
        partly->resize(row.panel, 12);
        const auto before = capture->image(source);
        partly->setPicture(before, whole);
        partly->present();
        const auto earlier = pixelsOf(window, whole);
        fill(source, 0xffffff, row.change);
        auto seen = earlier;
        EXPECT_TRUE(waitUntil([&] {
            EXPECT_EQ(capture->image(source), before);
            return (seen = pixelsOf(window, whole)) != earlier;
        }));

        const auto anew = x11::X11WindowPresenter::make(*connection, window);
        anew->resize(row.panel, 12);
        anew->setPicture(capture->image(source), whole);
        anew->present();
        EXPECT_EQ(pixelsOf(window, whole), seen);
    }
}

TEST_F(WindowPresenterTest, DrawsNothingWithoutAChangeAndRepairsWhatTheServerLost) {
    const auto source = makeWindow({300, 0, 100, 60});
    const auto window = makeWindow({0, 0, 100, 60});
    const auto presenter = x11::X11WindowPresenter::make(*connection, window);
    presenter->present();
    presenter->repair({0, 0, 100, 60});
    presenter->resize({100, 60}, 0);
    presenter->setBackground(0xff336699);
    const auto image = capture->image(source);
    presenter->setPicture(image, {0, 0, 50, 60});
    presenter->present();
    ASSERT_EQ(pixelsOf(window, {0, 0, 100, 60}).at(75, 30), 0x336699U);

    fill(window, 0xff0000, {0, 0, 100, 60});
    presenter->setBackground(0xff336699);
    presenter->setPicture(image, {0, 0, 50, 60});
    presenter->present();
    EXPECT_EQ(pixelsOf(window, {0, 0, 100, 60}).at(75, 30), 0xff0000U);
    presenter->repair({70, 0, 500, 500});
    EXPECT_EQ(pixelsOf(window, {0, 0, 100, 60}).at(69, 30), 0xff0000U);
    EXPECT_EQ(pixelsOf(window, {0, 0, 100, 60}).at(70, 30), 0x336699U);
}

TEST_F(WindowPresenterTest, DrawsWhatACaptureFindsUntilItsPictureIsTaken) {
    const auto source = makeWindow({300, 0, 100, 60});
    const auto window = makeWindow({0, 0, 100, 60});
    const auto presenter = x11::X11WindowPresenter::make(*connection, window);
    const auto shown = [&] { return pixelsOf(window, {50, 30, 1, 1}).pixels.front(); };
    presenter->resize({100, 60}, 0);
    fill(source, 0x2040c0, {0, 0, 100, 60});
    auto image = capture->image(source);
    presenter->setPicture(image, {0, 0, 100, 60});
    presenter->present();
    EXPECT_EQ(shown(), 0x2040c0U);
    fill(source, 0x20a040, {0, 0, 100, 60});
    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(capture->image(source), image) << "nothing is left to be shown";
        return shown() == 0x20a040U;
    }));

    fill(window, 0xff0000, {0, 0, 100, 60});
    // The capture has already drawn a later state of the source than `image` holds, so present() draws
    // nothing and the red stays.
    presenter->setPicture(image, {0, 0, 100, 60});
    presenter->present();
    EXPECT_EQ(shown(), 0xff0000U);

    // The main thread changes the background but does not call present() yet. Before present() the capture
    // draws nothing, because present() will draw all changes.
    presenter->setBackground(0xff336699);
    fill(source, 0x2040c0, {0, 0, 100, 60});
    image = freshImage(source, image);
    EXPECT_EQ(shown(), 0xff0000U);
    EXPECT_TRUE(waitUntil([&] {
        presenter->setPicture(capture->image(source), {0, 0, 100, 60});
        presenter->present();
        return shown() == 0x2040c0U;
    }));

    presenter->setPicture(nullptr, {});
    presenter->present();
    fill(source, 0x20a040, {0, 0, 100, 60});
    EXPECT_NE(freshImage(source, image), nullptr);
    EXPECT_EQ(shown(), 0x336699U);
}

TEST_F(WindowPresenterTest, MayBeChangedWhileACaptureGoesOn) {
    const auto source = makeWindow({300, 0, 100, 60});
    const auto window = makeWindow({0, 0, 100, 60});
    std::atomic<bool> done = false;
    std::thread ticks([&] {
        for (std::uint32_t colour = 0; !done; ++colour) {
            fill(source, colour, {0, 0, 100, 60});
            capture->image(source);
        }
    });
    for (int round = 0; round < 60; ++round) {
        const auto presenter = x11::X11WindowPresenter::make(*connection, window);
        for (const int width : {100, 60, 100}) {
            presenter->resize({width, 60}, 5);
            presenter->setOverlay(
                {{width, 60}, std::vector<std::uint32_t>(static_cast<std::size_t>(width) * 60)});
            presenter->setPicture(capture->image(source), {0, 0, width, 60});
            presenter->present();
            presenter->repair({0, 0, width, 60});
        }
        if (round % 2 == 0)
            presenter->setPicture(nullptr, {});
    }
    done = true;
    ticks.join();
    EXPECT_FALSE(xcb_connection_has_error(connection->xcb()));
}

TEST_F(WindowPresenterTest, TakesAnOverlayLargerThanARequestMayBe) {
    // The overlay has 17 MB. The X server takes at most 16 MB in one request.
    const PixelSize size{2100, 2100};
    const auto window = makeWindow({0, 0, size.width, size.height});
    const auto presenter = x11::X11WindowPresenter::make(*connection, window);
    presenter->resize(size, 0);
    presenter->setOverlay({size, std::vector<std::uint32_t>(2100 * 2100, 0xff123456)});
    presenter->present();
    EXPECT_EQ(pixelsOf(window, {2099, 2099, 1, 1}).at(0, 0), 0x123456U);
}

TEST_F(WindowPresenterTest, SurvivesTheEndOfItsWindow) {
    const auto window = makeWindow({0, 0, 100, 60});
    const auto presenter = x11::X11WindowPresenter::make(*connection, window);
    presenter->resize({100, 60}, 5);
    xcb_destroy_window(client.xcb(), window);
    client.sync();
    presenter->setBackground(0xff336699);
    presenter->present();
    EXPECT_EQ(x11::X11WindowPresenter::make(*connection, window), nullptr);
    EXPECT_FALSE(xcb_connection_has_error(connection->xcb()));
}

TEST_F(WindowPresenterTest, NeverShowsWhatObscuresTheSource) {
    CallWindow::Options options;
    options.colour = "cc2020";
    options.rate = 30;
    const CallWindow source(server, options);
    const auto panel = makeWindow({0, 1000, 320, 200});
    const auto presenter = x11::X11WindowPresenter::make(*connection, panel);
    presenter->resize({320, 200}, 0);
    Image image;
    const auto shows = [&](std::uint32_t colour) {
        image = capture->image(source.window());
        presenter->setPicture(image, {0, 0, 320, 200});
        presenter->present();
        return count(pixelsOf(panel, {0, 0, 320, 200}), colour) > 0;
    };
    constexpr std::uint32_t red = 0xcc2020;
    constexpr std::uint32_t green = 0x20a040;
    constexpr std::uint32_t blue = 0x0000ff;
    ASSERT_TRUE(waitUntil([&] { return shows(red); }));
    EXPECT_FALSE(isRedirected(source.window())) << "an unobscured window is read directly";

    for (int round = 0; round < 2; ++round) {
        // Stops the process of the source, so that the source cannot repaint itself. While `cover` lies over
        // the source, the pixels there are those of `cover` and must not be shown.
        kill(source.pid(), SIGSTOP);
        const auto cover = makeWindow({100, 100, 300, 200});
        xcb_change_window_attributes(client.xcb(), cover, XCB_CW_BACK_PIXEL, &blue);
        xcb_clear_area(client.xcb(), 0, cover, 0, 0, 0, 0);
        client.sync();
        // Draws the whole panel again, from an image that was captured before `cover` was shown.
        presenter->resize({320, 200}, 0);
        presenter->setPicture(image, {0, 0, 319, 200});
        presenter->present();
        EXPECT_EQ(count(pixelsOf(panel, {0, 0, 320, 200}), blue), 0);
        EXPECT_TRUE(holdsFor([&] { return !shows(blue); }, std::chrono::milliseconds(300)));
        kill(source.pid(), SIGCONT);
        EXPECT_TRUE(isRedirected(source.window()));
        source.tell("colour 20a040");
        EXPECT_TRUE(waitUntil([&] { return shows(green) && !shows(red); })) << "obscured and live";
        xcb_destroy_window(client.xcb(), cover);
        source.tell("colour cc2020");
        EXPECT_TRUE(waitUntil([&] { return !shows(blue) && !isRedirected(source.window()); }));
        EXPECT_TRUE(waitUntil([&] { return shows(red); }));
    }
}

/// Puts a red source into a frame window, as a window manager does. Shows the source in a panel of half its
/// size. Neither the source nor the frame window repaints itself.
class WindowPresenterTestOfAFrame : public WindowPresenterTest {
  protected:
    static constexpr std::uint32_t red = 0xcc2020;
    static constexpr std::uint32_t green = 0x20a040;

    void SetUp() override {
        // Without a background pixmap, the X server never paints the source itself.
        const std::uint32_t none = XCB_BACK_PIXMAP_NONE;
        xcb_change_window_attributes(client.xcb(), source, XCB_CW_BACK_PIXMAP, &none);
        xcb_reparent_window(client.xcb(), source, frame, 0, 0);
        fill(source, red, {0, 0, 400, 300});
        presenter->resize({200, 150}, 0);
        ASSERT_TRUE(waitUntil([&] { return pixelsShown(red) == 200L * 150; }));
    }

    std::ptrdiff_t pixelsShown(std::uint32_t colour, PixelSize size = {200, 150}) {
        presenter->setPicture(capture->image(source), {0, 0, size.width, size.height});
        presenter->present();
        return count(pixelsOf(panel, {0, 0, size.width, size.height}), colour);
    }

    const xcb_window_t frame = makeWindow({300, 300, 400, 300});
    const xcb_window_t source = makeWindow({0, 0, 400, 300});
    const xcb_window_t panel = makeWindow({0, 1000, 400, 300});
    const std::unique_ptr<WindowPresenter> presenter = x11::X11WindowPresenter::make(*connection, panel);
};

TEST_F(WindowPresenterTestOfAFrame, KeepsItsPictureWhenTheFrameIsUnmappedUntold) {
    xcb_unmap_window(client.xcb(), frame);
    client.sync();
    presenter->resize({240, 180}, 0);
    EXPECT_EQ(pixelsShown(red, {240, 180}), 240 * 180);
    // A white overlay hides the picture, and an empty overlay uncovers it again. The presenter then draws the
    // pixels that it read last, because the source can no longer be read.
    for (const std::uint32_t colour : {0xffffffffU, 0U}) {
        presenter->setOverlay({{240, 180}, std::vector<std::uint32_t>(240 * 180, colour)});
        presenter->present();
    }
    EXPECT_EQ(pixelsShown(red, {240, 180}), 240 * 180);
}

TEST_F(WindowPresenterTestOfAFrame, KeepsItsPictureWhenItIsHiddenBeforeItHasRepainted) {
    xcb_reparent_window(client.xcb(), source, client.root(), 300, 300);
    fill(source, red, {0, 0, 400, 300});
    makeWindow({350, 350, 100, 100});
    ASSERT_TRUE(waitUntil([&] { return pixelsShown(red) > 0 && isRedirected(source); }));
    xcb_unmap_window(client.xcb(), source);
    client.sync();
    EXPECT_TRUE(holdsFor([&] { return pixelsShown(red) == 200L * 150; }, std::chrono::milliseconds(2300)));
}

TEST_F(WindowPresenterTestOfAFrame, StaysLiveWhenACompositingManagerHasRedirectedTheSource) {
    xcb_reparent_window(client.xcb(), source, client.root(), 300, 300);
    xcb_composite_redirect_subwindows(client.xcb(), client.root(), XCB_COMPOSITE_REDIRECT_MANUAL);
    fill(source, red, {0, 0, 400, 300});
    ASSERT_TRUE(waitUntil([&] { return pixelsShown(red) == 200L * 150; }));
    makeWindow({350, 350, 100, 100});
    fill(source, green, {60, 60, 60, 60});
    EXPECT_TRUE(waitUntil([&] { return pixelsShown(green) > 0; }, std::chrono::milliseconds(1500)));
}

/// Resizes one panel to several sizes in turn, as a user does with the grip, so the presenter has to scale
/// the picture anew each time.
TEST_F(WindowPresenterTest, KeepsSmallTextSharpAtEveryRatio) {
    constexpr PixelSize size{1279, 803};
    const auto source = makeWindow({0, 0, size.width, size.height});
    drawTextPage(client, source, size.width, size.height);
    const auto image = capture->image(source);
    const auto original = pictureOf(image);
    const auto window = makeWindow({0, size.height, size.width, size.height});
    const auto presenter = x11::X11WindowPresenter::make(*connection, window);
    for (const double ratio : {12.8, 4.0, 3.99, 1.3, 1.9, 2.7, 6.4, 7.5}) {
        const int width = static_cast<int>(std::lround(size.width / ratio));
        const int height = static_cast<int>(std::lround(size.height / ratio));
        presenter->resize({width, height}, 0);
        presenter->setPicture(image, {0, 0, width, height});
        presenter->present();
        EXPECT_GE(similarity(pixelsOf(window, {0, 0, width, height}), areaAverage(original, width, height)),
                  0.96)
            << "shrunk " << ratio << " times";
    }
}

} // namespace
} // namespace mirrolet::harness
