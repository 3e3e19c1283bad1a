#pragma once

#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/Program.h"
#include "tests/desktop/harness/TestDesktop.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

namespace mirrolet {

/// Runs Mirrolet on one of the desktops, and acts as its user. Mirrolet's own windows are X windows on every
/// desktop. A function whose action has no effect throws an error with a message, and the test fails.
class AnyDesktopTest : public testing::Test {
  protected:
    using Quarters = std::array<std::uint32_t, 4>; ///< Top left, top right, bottom left, bottom right.
    static constexpr Quarters fourColours{0xd03030, 0x30b040, 0x3050d0, 0xd0c030};
    static constexpr Quarters otherColours{0x208080, 0x802080, 0xe08020, 0xc0c0c0};

    static constexpr std::uint32_t notesColour = 0x202020;

    explicit AnyDesktopTest(std::unique_ptr<harness::TestDesktop> desktop);
    void TearDown() override;

    /// Starts Mirrolet with these defaults and a short poll interval. Returns when its shortcuts work.
    void start(const std::string& defaults = {});
    /// Starts Mirrolet without monitoring, so that only shortcuts open a mirror.
    void startQuiet(const std::string& defaults = {});

    /// Shows a square window with a call's title. The window is square, so that its picture fills the square
    /// mirror.
    std::unique_ptr<harness::SourceWindow> showCall() { return desktop->show({}); }
    /// Shows a window that is no call, and waits until it has the focus.
    std::unique_ptr<harness::SourceWindow> showNotes(bool isFullScreen = false);
    static void recolour(const harness::SourceWindow& window, const Quarters& colours);
    static void awaitFocus(const harness::SourceWindow& window);
    /// Returns whether a key was pressed in the window. Ignores releases, because the prompt closes when
    /// Return or Escape is pressed, and the window may then receive the release.
    static bool gotPress(const harness::SourceWindow& window);

    /// Waits until the prompt has the focus and is on the screen.
    xcb_window_t awaitPrompt();
    void decline();
    xcb_window_t awaitPanel();
    /// Accepts the prompt, and waits until the mirror shows the colours.
    xcb_window_t accept(const Quarters& colours = fourColours);
    /// Presses the shortcut that mirrors the focused window. Waits until the mirror shows the colours.
    xcb_window_t openMirror(const Quarters& colours = fourColours);
    [[nodiscard]] bool nothingShown() const { return program->windows(facts).empty(); }
    void awaitNothing();
    /// Returns whether neither a prompt nor a mirror is seen during several polls.
    [[nodiscard]] bool nothingAppears() const;
    /// Returns whether a mirror and no prompt is seen during several polls.
    [[nodiscard]] bool mirrorStays() const;

    /// Returns whether the mirror on the screen has these colours in its quarters.
    [[nodiscard]] bool shows(const Quarters& colours) const;
    void awaitColours(const Quarters& colours) const;
    /// Changes the window's colours twice. Waits after each change until the mirror shows it.
    void awaitLive(const harness::SourceWindow& window) const;
    [[nodiscard]] std::uint32_t pixel(int x, int y) const {
        return desktop->screenshot({x, y, 1, 1}).at(0, 0);
    }

    void pressFrontmostShortcut() {
        keyboard.stroke({harness::key::leftSuper, harness::key::leftAlt, harness::key::f});
    }
    void pressVisibilityShortcut() {
        keyboard.stroke({harness::key::leftSuper, harness::key::leftAlt, harness::key::p});
    }

    /// Writes a desktop entry, so that the program finds an installed application of this name. The windows
    /// of the application have this identifier.
    void installApplication(const std::string& identifier, const std::string& name);

    std::unique_ptr<harness::TestDesktop> desktop;
    harness::XClient client{desktop->display()};
    harness::WindowFacts facts{client};
    std::shared_ptr<harness::InputDevice> input = desktop->input();
    harness::Keyboard keyboard{input};
    harness::Pointer pointer{input};
    harness::Sandbox machine; ///< Takes the place of /usr/share for the program's applications.
    /// These variables are added to the environment of the program.
    harness::Environment environment{{"XDG_DATA_DIRS", machine.folder() / "share"}};
    std::unique_ptr<harness::Program> program;
};

/// Returns the colours as "RRGGBB,RRGGBB,RRGGBB,RRGGBB".
std::string colourNames(const std::array<std::uint32_t, 4>& colours);

} // namespace mirrolet
