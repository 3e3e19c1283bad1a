// By hand, as often as one likes: MIRROLET_DEATHS=1000000 desktop_tests --gtest_filter='ASourceThatDies*'

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

/// Windows of a client that come, change and go between any two requests of capture and presenter.
class ASourceThatDies : public testing::Test, protected MirrorParts {
  protected:
    ASourceThatDies() {
        connect(gate.display());
        target = makeWindow({700, 10, 100, 100});
        presenter = x11::X11WindowPresenter::make(*connection, target);
        presenter->resize({100, 100}, 10);
    }

    /// The gate goes before its client otherwise.
    ~ASourceThatDies() override {
        presenter.reset();
        capture.reset();
        connection.reset();
    }

    /// After some requests the window is changed, and some more later it ends. What is drawn for one tick are
    /// four to ten requests, what begins a mirror some twenty.
    void killSoon(xcb_window_t window, unsigned chance) {
        dead = false;
        gate.after(chance % 40, [this, window, chance] {
            const bool seen = change(window, chance);
            if (seen)
                gate.after(chance / 256 % 10, [this, window] { destroy(window); });
            else // No more requests come.
                destroy(window);
        });
    }

    void destroy(xcb_window_t window) {
        xcb_destroy_window(killer.xcb(), window);
        killer.sync();
        dead = true;
    }

    /// False if it is not on the screen any more.
    bool change(xcb_window_t window, unsigned chance) {
        if (chance % 3 == 0) {
            const std::uint32_t size[] = {100 + chance % 100, 100};
            xcb_configure_window(killer.xcb(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                 size);
        }
        if (chance % 7 < 2)
            xcb_unmap_window(killer.xcb(), window);
        if (chance % 7 == 0)
            xcb_map_window(killer.xcb(), window);
        killer.sync();
        return chance % 7 != 1;
    }

    /// Without a pause: its picture changes all the time.
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

    XClient killer{server};
    RequestGate gate{server};
    std::atomic<bool> dead = false;
    xcb_window_t target = XCB_NONE;
    std::unique_ptr<platform::desktop::WindowPresenter> presenter;
};

TEST_F(ASourceThatDies, BetweenAnyTwoRequestsLeavesNothingBehind) {
    const char* wanted = std::getenv("MIRROLET_DEATHS");
    const int deaths = wanted == nullptr ? 10000 : std::atoi(wanted);
    std::mt19937 chance(7); // NOLINT: the same deaths in each run.
    std::map<std::string, long> before;
    for (int death = 0; death < deaths; ++death) {
        const auto window = makeWindow({10, 10, 120, 100});
        killSoon(window, static_cast<unsigned>(chance()));
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
