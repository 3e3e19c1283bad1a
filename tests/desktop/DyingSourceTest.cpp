// The test destroys 5000 windows by default. A run by hand can set another number:
// MIRROLET_DEATHS=1000000 desktop_tests --gtest_filter='DyingSourceTest*'

#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace mirrolet::harness {
namespace {

using platform::desktop::PixelRect;

/// Tests the capture and the presenter. Another client changes and destroys source windows while the capture
/// and the presenter work on them.
class DyingSourceTest : public testing::Test, protected MirrorParts {
  protected:
    DyingSourceTest() { presenter->resize({100, 100}, 10); }

    /// Changes the window at a random moment, and destroys it at a later one.
    void killSoon(xcb_window_t window) {
        pause(startOfAMirror);
        change(window);
        pause(startOfAMirror / 4);
        destroy(window);
    }

    void pause(std::chrono::microseconds atMost) {
        const auto end = std::chrono::steady_clock::now() +
                         std::chrono::microseconds(below(static_cast<std::uint32_t>(atMost.count())));
        while (std::chrono::steady_clock::now() < end)
            std::this_thread::yield(); // A sleep would be longer than many of these pauses.
    }

    void destroy(xcb_window_t window) {
        xcb_destroy_window(killer.xcb(), window);
        killer.sync();
        dead = true;
    }

    void change(xcb_window_t window) {
        if (below(3) == 0)
            configure(killer, window, XCB_CONFIG_WINDOW_WIDTH, {100 + below(100)});
        if (below(3) == 0)
            restackAtCover(killer, window);
        const auto mapping = below(7);
        if (mapping < 2)
            xcb_unmap_window(killer.xcb(), window);
        if (mapping == 0)
            xcb_map_window(killer.xcb(), window);
        killer.sync();
    }

    /// Puts the window above or below the window `cover`. Below `cover` the window is obscured, so the
    /// capture redirects it.
    void restackAtCover(XClient& own, xcb_window_t window) {
        configure(own, window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                  {cover, below(2) == 0 ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW});
    }

    static void configure(XClient& own, xcb_window_t window, std::uint16_t what,
                          const std::vector<std::uint32_t>& values) {
        xcb_configure_window(own.xcb(), window, what, values.data());
    }

    /// Returns a random number below `end`. The numbers are the same in each run. The test's thread calls
    /// this function only while no window is being killed.
    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(chance()) % end; }

    /// Changes and mirrors the window again and again, without a pause, until the window is gone.
    void mirrorUntilGone(xcb_window_t window) {
        const PixelRect part{0, 0, 100, 100};
        const auto end = std::chrono::steady_clock::now() + patience;
        for (bool shown = true; shown || !dead;) {
            xcb_discard_reply(client.xcb(),
                              xcb_clear_area_checked(client.xcb(), 0, window, 0, 0, 0, 0).sequence);
            client.sync();
            const auto image = capture->image(window);
            presenter->setPicture(image, image ? part : PixelRect{});
            presenter->present();
            shown = image != nullptr;
            if (std::chrono::steady_clock::now() > end)
                throw HarnessError("never seen to be gone");
        }
    }

    /// The requests of the first frames take about this long.
    static constexpr std::chrono::microseconds startOfAMirror{2000};

    std::mt19937 chance{7}; // NOLINT: a fixed seed makes all runs alike.
    XClient killer{server};
    const xcb_window_t cover = makeWindow({0, 0, 60, 60});
    std::atomic<bool> dead = false;
    const std::unique_ptr<platform::desktop::WindowPresenter> presenter =
        x11::X11WindowPresenter::make(*connection, makeWindow({700, 10, 100, 100}));
};

TEST_F(DyingSourceTest, AtAnyMomentLeavesNothingBehind) {
    const char* wanted = std::getenv("MIRROLET_DEATHS");
    const int deaths = wanted == nullptr ? 5000 : std::atoi(wanted);
    std::map<std::string, long> before;
    for (int death = 0; death < deaths; ++death) {
        const auto window = makeWindow({10, 10, 120, 100});
        restackAtCover(client, window);
        dead = false;
        const std::jthread end([this, window] { killSoon(window); });
        mirrorUntilGone(window);
        if (death == 10)
            before = resources();
    }
    EXPECT_EQ(resources(), before);
    const auto last = makeWindow({10, 10, 120, 100});
    EXPECT_TRUE(waitUntil([&] { return capture->image(last) != nullptr; }));
}

} // namespace
} // namespace mirrolet::harness
