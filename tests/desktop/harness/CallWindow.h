#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <xcb/xcb.h>

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

class XDisplay;

/// Runs a program that shows one window, and owns its process. By default the window looks like a video call.
/// The constructor waits until the window is on the screen.
class CallWindow {
  public:
    struct Options {
        std::string title = "Video call";
        std::string wmClass = "WhatsApp";
        std::string wmInstance = "whatsapp";
        Box place{60, 80, 640, 400};
        int rate = 0;   ///< Frames that the program paints a second. With 0 it paints only once.
        int border = 0; ///< The X border width, which is not part of the window's size.
        int alpha = -1; ///< The alpha of every pixel, 0 to 255. -1 makes a window without alpha.
        /// One colour "RRGGBB" for the whole window, or four colours with commas between them for its
        /// quarters: upper left, upper right, lower left, lower right. Without a colour, the window shows two
        /// people.
        std::string colour = {};
        /// The states in the window's _NET_WM_STATE when the window is mapped, such as
        /// "_NET_WM_STATE_FULLSCREEN".
        std::vector<std::string> states = {};
        std::string type = {};         ///< The window type, such as "_NET_WM_WINDOW_TYPE_DIALOG".
        std::string frameExtents = {}; ///< The widths "left,right,top,bottom" of the window's own shadow.
        bool overrideRedirect = false;
    };

    explicit CallWindow(const XDisplay& server);
    CallWindow(const XDisplay& server, const Options& options);

    [[nodiscard]] xcb_window_t window() const { return number; }
    [[nodiscard]] pid_t pid() const { return process->pid(); }
    /// Sends a command to the program that shows the window: "resize W H", "title T", "unmap",
    /// "map", "repaint", "rate N", "colour RRGGBB" or "quit". The call returns before the program has run the
    /// command.
    void tell(const std::string& command) const { process->write(command + "\n"); }
    /// Returns the key events that the window has received, such as "key 36 press" and "key 36 release". The
    /// numbers are X key codes.
    [[nodiscard]] std::vector<std::string> keys() const;
    /// Kills the process without letting it clean up.
    void kill();

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
    xcb_window_t number = XCB_NONE;
};

} // namespace mirrolet::harness
