#pragma once

#include "tests/desktop/harness/InputDevice.h"
#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/XDisplay.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// A window of another program, which looks like a video call by default. It is an X window on an X11
/// desktop, and a native window on Wayland.
class SourceWindow {
  public:
    struct Options {
        std::string title = "Video call";
        std::string application = "WhatsApp"; ///< The WM_CLASS or the application id.
        /// "RRGGBB", or a colour for each quarter: "RRGGBB,RRGGBB,RRGGBB,RRGGBB" (top left, top right, bottom
        /// left, bottom right).
        std::string colours = "d03030,30b040,3050d0,d0c030";
        int width = 400;
        int height = 400;
        int rate = 0; ///< Frames a second. The default 0 paints once.
        bool fullScreen = false;
    };

    SourceWindow() = default;
    virtual ~SourceWindow() = default;
    SourceWindow(const SourceWindow&) = delete;
    SourceWindow& operator=(const SourceWindow&) = delete;

    /// Sends a command to the window's program: "title T", "resize W H", "colour COLOURS", "rate N",
    /// "iconify" or "quit". The program runs the command some time after the call returns.
    virtual void tell(const std::string& command) const = 0;
    /// Returns the key events that came to the window, such as "key 36 press" (X key codes).
    [[nodiscard]] virtual std::vector<std::string> keys() const = 0;
    [[nodiscard]] virtual bool hasFocus() const = 0;
    [[nodiscard]] virtual bool isMinimized() const = 0;
    /// Asks the window manager to show the window and to give it the focus, as a task list does.
    virtual void activate() const = 0;
    virtual void minimize() const = 0;
    virtual void close() const = 0;
    /// Kills the window's program without letting it clean up.
    virtual void kill() = 0;
};

/// Starts a whole desktop. A test that uses only this interface can run on every kind of desktop.
class TestDesktop {
  public:
    enum class Kind { openbox, plasma };
    static std::unique_ptr<TestDesktop> make(Kind kind);

    TestDesktop() = default;
    virtual ~TestDesktop() = default;
    TestDesktop(const TestDesktop&) = delete;
    TestDesktop& operator=(const TestDesktop&) = delete;

    [[nodiscard]] virtual const XDisplay& display() const = 0;
    [[nodiscard]] virtual const SessionBus& bus() const = 0;
    [[nodiscard]] virtual std::shared_ptr<InputDevice> input() = 0;
    /// Returns the pixels of the box as they are on the screen.
    [[nodiscard]] virtual Picture screenshot(const Box& box) const = 0;
    /// Shows a window, and waits until the window is on the screen.
    virtual std::unique_ptr<SourceWindow> show(const SourceWindow::Options& options) = 0;
    /// Shows the virtual desktop with this index, 0 or 1.
    virtual void switchToDesktop(int index) = 0;
    /// Returns whether Mirrolet holds its shortcuts.
    [[nodiscard]] virtual bool hasShortcuts() const = 0;
    /// Returns whether windows that are minimized or on another virtual desktop can still be captured.
    [[nodiscard]] virtual bool capturesHiddenWindows() const = 0;
};

/// Returns the desktop's name, which becomes part of the names of parameterized tests.
std::string nameOf(TestDesktop::Kind kind);

inline void PrintTo(TestDesktop::Kind kind, std::ostream* out) {
    *out << nameOf(kind);
}

} // namespace mirrolet::harness
