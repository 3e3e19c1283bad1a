// Kills 10000 windows by default. To kill another number of windows:
// MIRROLET_DEATHS=1000000 desktop_tests --gtest_filter='DyingSourceTest*'

#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/RequestGate.h"
#include "tests/desktop/harness/Wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>

namespace mirrolet::harness {
namespace {

using platform::desktop::PixelRect;

/// A test in which a client's windows appear, change and die between any two requests of capture and
/// presenter.
class DyingSourceTest : public testing::Test, protected MirrorParts {
  protected:
    DyingSourceTest() {
        connect(gate.display());
        target = makeWindow({700, 10, 100, 100});
        presenter = x11::X11WindowPresenter::make(*connection, target);
        presenter->resize({100, 100}, 10);
    }

    /// Closes the connection first, because the gate must outlive its client.
    ~DyingSourceTest() override {
        presenter.reset();
        capture.reset();
        connection.reset();
    }

    /// Changes the window after some requests, and destroys it after some more.
    void killSoon(xcb_window_t window) {
        dead = false;
        gate.after(below(requests), [this, window] {
            const bool seen = change(window);
            if (seen)
                gate.after(below(requests / 4), [this, window] { destroy(window); });
            else // A window out of sight causes no more requests.
                destroy(window);
        });
    }

    void destroy(xcb_window_t window) {
        xcb_destroy_window(killer.xcb(), window);
        killer.sync();
        dead = true;
    }

    /// Changes the window at random. Returns false if the window is no longer on the screen.
    bool change(xcb_window_t window) {
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
        return mapping != 1;
    }

    /// Puts the window above or below `cover`. Capture redirects a window below `cover`, because the window
    /// is obscured there.
    void restackAtCover(XClient& own, xcb_window_t window) {
        configure(own, window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                  {cover, below(2) == 0 ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW});
    }

    static void configure(XClient& own, xcb_window_t window, std::uint16_t what,
                          const std::vector<std::uint32_t>& values) {
        xcb_configure_window(own.xcb(), window, what, values.data());
    }

    /// Returns a random number less than `end`. The numbers are the same in each run. The gate's thread calls
    /// this only while the test waits for a window's death.
    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(chance()) % end; }

    /// Mirrors the window until the window is gone. There is no pause, because the picture changes all the
    /// time.
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

    /// As many requests as begin a mirror and show its first pictures.
    static constexpr std::uint32_t requests = 60;

    std::mt19937 chance{7}; // NOLINT: the fixed seed makes each run the same.
    XClient killer{server};
    const xcb_window_t cover = makeWindow({0, 0, 60, 60});
    RequestGate gate{server};
    std::atomic<bool> dead = false;
    xcb_window_t target = XCB_NONE;
    std::unique_ptr<platform::desktop::WindowPresenter> presenter;
};

TEST_F(DyingSourceTest, BetweenAnyTwoRequestsLeavesNothingBehind) {
    const char* wanted = std::getenv("MIRROLET_DEATHS");
    const int deaths = wanted == nullptr ? 10000 : std::atoi(wanted);
    std::map<std::string, long> before;
    for (int death = 0; death < deaths; ++death) {
        const auto window = makeWindow({10, 10, 120, 100});
        restackAtCover(client, window);
        killSoon(window);
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
