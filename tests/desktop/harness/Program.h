#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::harness {

class XDisplay;
class SessionBus;

/// Runs Mirrolet in a home directory of its own.
class Program {
  public:
    struct Options {
        /// The content of the settings file defaults.json at the start, such as a result of defaults(). If
        /// the content is empty, there is no settings file, as on a first start.
        std::string defaults = {};
        /// More environment variables for Mirrolet. They override variables of the same name in the sandbox.
        Environment environment = {};
        /// The home directory. Without one, the run gets a new home directory. A test that starts Mirrolet
        /// again passes the home directory of the earlier run.
        std::shared_ptr<Sandbox> home = {};
    };

    /// Starts Mirrolet. `bus` is nullptr on a desktop without a session bus.
    Program(const XDisplay* server, const SessionBus* bus, const Options& options);
    /// Ends Mirrolet. Fails the test, with Mirrolet's whole log, if a sanitizer has found a fault or the X
    /// server has sent an error that Mirrolet did not expect.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Returns the content of a settings file (JSON) with a short poll interval. `more` adds entries, such as
    /// `"promptTimeout": 1`.
    static std::string defaults(const std::string& more = {});

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    [[nodiscard]] ChildProcess& child() { return *process; }
    [[nodiscard]] double pixelsPerPoint() const { return scale; }
    [[nodiscard]] const std::shared_ptr<Sandbox>& home() const { return sandbox; }
    [[nodiscard]] std::filesystem::path defaultsFile() const;
    /// Returns what Mirrolet has written to standard error so far.
    [[nodiscard]] std::string log() const;

    /// Returns the windows of Mirrolet that are on the screen. Leaves out small windows, which are status
    /// icons and helper windows.
    [[nodiscard]] std::vector<xcb_window_t> windows(const WindowFacts& facts) const;
    /// Returns the prompt's window. A window with the prompt's fixed size is taken for the prompt.
    [[nodiscard]] std::optional<xcb_window_t> prompt(const WindowFacts& facts) const;
    /// Waits until the prompt is shown and has the focus. A key that a test presses before that goes to
    /// another window.
    xcb_window_t awaitPrompt(const WindowFacts& facts) const;
    /// Returns the mirror panel. A window of Mirrolet that is not the prompt is taken for the mirror panel.
    [[nodiscard]] std::optional<xcb_window_t> panel(const WindowFacts& facts) const;

    /// The prompt's size in pixels. QT_SCALE_FACTOR multiplies this size.
    static constexpr int promptWidth = 360;
    static constexpr int promptHeight = 160;

  private:
    [[nodiscard]] bool isPrompt(const Box& box) const;

    std::shared_ptr<Sandbox> sandbox;
    double scale = 1;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
