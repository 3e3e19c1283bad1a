// The test destroys 10000 windows by default. A run by hand can set another number:
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

/// Tests the capture and the presenter. Source windows change and are destroyed between any two X requests
/// that the capture and the presenter send.
class DyingSourceTest : public testing::Test, protected MirrorParts {
  protected:
    DyingSourceTest() {
        connect(gate.display());
        target = makeWindow({700, 10, 100, 100});
        presenter = x11::X11WindowPresenter::make(*connection, target);
        presenter->resize({100, 100}, 10);
    }

    /// Closes the backend's connection first, because the destructor of `gate` waits until its client has
    /// gone.
    ~DyingSourceTest() override {
        presenter.reset();
        capture.reset();
        connection.reset();
    }

    /// Lets some requests of the capture and the presenter pass, and then changes the window. Lets some more
    /// requests pass, and then destroys the window.
    void killSoon(xcb_window_t window) {
        dead = false;
        gate.after(below(requests), [this, window] {
            const bool seen = change(window);
            if (seen)
                gate.after(below(requests / 4), [this, window] { destroy(window); });
            else // The gate would wait in vain: nothing is sent about an unmapped window.
                destroy(window);
        });
    }

    void destroy(xcb_window_t window) {
        xcb_destroy_window(killer.xcb(), window);
        killer.sync();
        dead = true;
    }

    /// Changes the window at random. Returns false if the window is then unmapped.
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

    /// Returns a random number below `end`. The numbers are the same in each run. Two threads share `chance`,
    /// but the gate's thread calls this function only while the test's thread waits for the death of a
    /// window.
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

    /// The start of a mirror and its first frames need about this many X requests.
    static constexpr std::uint32_t requests = 60;

    std::mt19937 chance{7}; // NOLINT: a fixed seed makes all runs the same.
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
