#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

class PlasmaSession;

/// A window of another program that is a native Wayland client. It has a colour in each quarter. The
/// constructor waits until the window is shown.
class NativeWindow {
  public:
    struct Options {
        std::string title = "Video call";
        std::string applicationId = "WhatsApp";
        int width = 640;
        int height = 400;
        /// One colour, or those of the quarters: top left, top right, bottom left, bottom right.
        std::string colours = "d03030,30b040,3050d0,d0c030";
        int rate = 0; ///< Frames a second. The default 0 paints once.
        bool decorated = true;
        bool fullScreen = false;
        Environment environment = {}; ///< More variables for its process.
    };

    explicit NativeWindow(const PlasmaSession& session);
    NativeWindow(const PlasmaSession& session, const Options& options);

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    [[nodiscard]] bool running() const { return process->running(); }
    /// Sends a command to the other program: "title T", "app-id ID", "resize W H", "colour COLOURS", "page",
    /// "rate N", "full-screen", "windowed", "iconify", "menu", "close-menu" or "quit". The other program runs
    /// the command some time after the call returns.
    void tell(const std::string& command) const { process->write(command + "\n"); }
    /// Returns the key events that came to the window, such as "key 36 press" and "key 36 release" (X key
    /// codes).
    [[nodiscard]] std::vector<std::string> keys() const;
    /// Returns whether the window has the focus.
    [[nodiscard]] bool hasFocus() const;
    /// Kills the process without letting it clean up.
    void kill() const;

  private:
    [[nodiscard]] std::vector<std::string> linesWith(const std::string& start) const;

    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
