#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;

/// A run of the real program in its own home directory.
class Program {
  public:
    struct Options {
        /// The content of defaults.json at the start. The default is no file, as on a first start. See
        /// `defaults()`.
        std::string defaults = {};
        Environment environment = {}; ///< Is added to the usual variables and overrides them.
        /// The home directory. Pass the home of another run to start again in the same home.
        std::shared_ptr<Sandbox> home = {};
    };

    /// Starts the program. `bus` is nullptr on a desktop without a session bus.
    Program(const XServer* server, const SessionBus* bus, const Options& options);
    /// Ends the program. Fails the test, with the program's whole log, if a sanitizer has found a fault or
    /// the X server has sent an error that the program did not expect.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Returns a defaults file as JSON, with a short poll interval and the entries of `more` (`"key": value,
    /// ...`).
    static std::string defaults(const std::string& more = {});

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    [[nodiscard]] ChildProcess& child() { return *process; }
    [[nodiscard]] const std::shared_ptr<Sandbox>& home() const { return sandbox; }
    [[nodiscard]] std::filesystem::path defaultsFile() const;
    /// Returns the text on the program's standard error until now.
    [[nodiscard]] std::string log() const;

    /// Returns the program's windows on the screen. Leaves out small windows, which are status icons and
    /// helper windows.
    [[nodiscard]] std::vector<xcb_window_t> windows(const WindowFacts& facts) const;
    /// Returns the prompt, which is recognized by its fixed size.
    [[nodiscard]] std::optional<xcb_window_t> prompt(const WindowFacts& facts) const;
    /// Waits until the prompt is shown and has the focus. A key that is pressed earlier goes to another
    /// window.
    xcb_window_t awaitPrompt(const WindowFacts& facts) const;
    /// Returns the mirror panel, which is the window that is not the prompt.
    [[nodiscard]] std::optional<xcb_window_t> panel(const WindowFacts& facts) const;

    /// The prompt's size in pixels, before it is multiplied by QT_SCALE_FACTOR.
    static constexpr int promptWidth = 360;
    static constexpr int promptHeight = 160;

  private:
    [[nodiscard]] bool isPrompt(const Box& box) const;

    std::shared_ptr<Sandbox> sandbox;
    double scale = 1;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
