#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <xcb/xcb.h>

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

class XServer;

/// A window of another program, which looks like a video call by default. The constructor waits until the
/// window is on the screen.
class CallWindow {
  public:
    struct Options {
        std::string title = "Video call";
        std::string wmClass = "WhatsApp";
        std::string wmInstance = "whatsapp";
        Box place{60, 80, 640, 400};
        int rate = 0;            ///< Frames a second. The default 0 paints once.
        int border = 0;          ///< The X border width, which is not part of the window's size.
        int alpha = -1;          ///< 0 to 255 makes a 32-bit window with this alpha everywhere.
        std::string colour = {}; ///< RRGGBB paints one plain colour instead of the scene.
        std::vector<std::string> states =
            {};                        ///< Such as "_NET_WM_STATE_FULLSCREEN", set before it is mapped.
        std::string type = {};         ///< Such as "_NET_WM_WINDOW_TYPE_DIALOG".
        std::string frameExtents = {}; ///< "left,right,top,bottom" of an invisible shadow.
        bool overrideRedirect = false;
        bool waitUntilViewable = true;
        Environment environment = {}; ///< Added for its process, such as the name of its desktop entry.
    };

    explicit CallWindow(const XServer& server);
    CallWindow(const XServer& server, const Options& options);

    [[nodiscard]] xcb_window_t window() const { return number; }
    [[nodiscard]] pid_t pid() const { return process->pid(); }
    /// Sends a command to the other program: "resize W H", "move X Y", "title T", "unmap", "map", "iconify",
    /// "repaint", "rate N", "colour RRGGBB", "scene" or "quit". The other program runs the command some time
    /// after the call returns.
    void tell(const std::string& command) const { process->write(command + "\n"); }
    /// Returns the key events that came to the window, such as "key 36 press" and "key 36 release" (X key
    /// codes).
    [[nodiscard]] std::vector<std::string> keys() const;
    /// Kills the process without letting it clean up.
    void kill();

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
    xcb_window_t number = XCB_NONE;
};

} // namespace mirrolet::harness
