#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/StatusHost.h"
#include "tests/desktop/harness/StatusIcon.h"

#include <algorithm>
#include <csignal>
#include <memory>
#include <optional>

namespace mirrolet {
namespace {

using namespace harness;
using namespace std::chrono_literals;

class StatusItemTest : public EndToEndTest {
  protected:
    std::optional<Box> icon() { return statusIcon(facts, program->pid()); }

    void awaitIcon() {
        require("the status icon", [this] {
            const auto box = icon();
            return box && isStatusIconDrawn(facts, *box);
        });
    }

    [[nodiscard]] bool menuIsOpen() const {
        const auto windows = facts.windowsOf(program->pid());
        return std::any_of(windows.begin(), windows.end(), [this](xcb_window_t window) {
            return facts.overrideRedirect(window) && facts.box(window).height > 60;
        });
    }

    /// Waits until the menu has grabbed the keyboard. A key that is pressed earlier would go to another
    /// window.
    void awaitMenu() {
        require("the menu", [this] { return menuIsOpen() && isKeyboardTaken(client); });
    }

    void closeMenu() {
        awaitMenu();
        keyboard.stroke({key::escape});
        require("no menu", [this] { return !menuIsOpen(); });
    }
};

TEST_F(StatusItemTest, ComesWithATrayThatComesLaterGoesAndComesBack) {
    startQuiet();
    EXPECT_FALSE(icon());
    for (int times = 0; times < 2; ++times) {
        std::optional<TrayHost> tray(std::in_place, server);
        awaitIcon();
        tray.reset();
        require("no status icon", [this] { return !icon(); });
    }
}

TEST_F(StatusItemTest, OpensItsMenuWithEitherButton) {
    const TrayHost tray(server);
    startQuiet();
    awaitIcon();
    for (const int button : {1, 3}) {
        const auto box = *icon();
        pointer.click(box.x + box.width / 2, box.y + box.height / 2, button);
        closeMenu();
    }
    const auto box = *icon();
    pointer.click(box.x + box.width / 2, box.y + box.height / 2);
    awaitMenu();
    constexpr int q = 16;
    keyboard.stroke({key::leftControl, q});
    EXPECT_EQ(program->child().waitForExit(), 0) << "Ctrl+Q in the open menu";
}

TEST_F(StatusItemTest, ComesWithAHostOnTheSessionBusThatComesLaterGoesAndComesBack) {
    auto host = std::make_unique<StatusHost>(bus);
    startQuiet();
    EXPECT_EQ(host->icons(), 0);
    for (int times = 0; times < 2; ++times) {
        host->setPresent(false);
        require("no status icon", [&] { return host->icons() == 0; });
        host->setPresent(true);
        require("the status icon", [&] { return host->icons() == 1; });
    }
    host->click();
    closeMenu();
    // The first host has to end before the second one starts, because both use the same D-Bus name.
    host.reset();
    host = std::make_unique<StatusHost>(bus);
    host->setPresent(true);
    require("the status icon with another registry", [&] { return host->icons() == 1; });
}

TEST_F(StatusItemTest, ComesBackWithASessionBusThatIsStartedAnew) {
    startQuiet();
    for (const bool anew : {false, true}) {
        if (anew)
            bus.restart();
        const StatusHost host(bus);
        host.setPresent(true);
        require("the status icon", [&] { return host.icons() == 1; });
        host.click();
        closeMenu();
    }
    const ChildProcess launcher(
        {.command = {"gdbus", "call", "--session", "--dest", "app.mirrolet.Mirrolet", "--object-path",
                     "/app/mirrolet/Mirrolet", "--method", "org.freedesktop.Application.Activate", "{}"},
         .environment = bus.with(program->home()->environment())});
    require("the settings, asked for over the new bus", [this] { return !program->windows(facts).empty(); });
    EXPECT_EQ(program->log(), "");
}

TEST_F(StatusItemTest, IsNotHeldUpByARegistryThatHangs) {
    const StatusHost host(bus);
    host.setPresent(true);
    host.child().signal(SIGSTOP);
    startQuiet(); // Returns when the shortcuts work.
    pressFrontmostShortcut();
    program->child().signal(SIGTERM);
    EXPECT_EQ(program->child().waitForExit(), 0);
    host.child().signal(SIGCONT);
}

} // namespace
} // namespace mirrolet
