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
        /// The content of defaults.json at the start, or empty for a first start. See `defaults()`.
        std::string defaults = {};
        Environment environment = {}; ///< Added to the usual variables, or replacing them.
        /// The home directory. Pass the same one for a second start in the same home.
        std::shared_ptr<Sandbox> home = {};
    };

    /// `bus` is nullptr on a desktop without a session bus.
    Program(const XServer* server, const SessionBus* bus, const Options& options);
    /// Ends the program. The test fails with all that the program logged, if a sanitizer has found a fault or
    /// the X server has sent an error that the program did not expect.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// A defaults file as JSON, with a short poll interval and the entries of `more` (`"key": value, ...`).
    static std::string defaults(const std::string& more = {});

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    [[nodiscard]] ChildProcess& child() { return *process; }
    [[nodiscard]] const std::shared_ptr<Sandbox>& home() const { return sandbox; }
    [[nodiscard]] std::filesystem::path defaultsFile() const;
    /// The text on standard error until now.
    [[nodiscard]] std::string log() const;

    /// The program's windows on the screen, without status icons and helper windows, which are small.
    [[nodiscard]] std::vector<xcb_window_t> windows(const WindowFacts& facts) const;
    /// The prompt, which is known by its fixed size.
    [[nodiscard]] std::optional<xcb_window_t> prompt(const WindowFacts& facts) const;
    /// Waits until the prompt is shown and has the focus. A key before that goes to another window.
    xcb_window_t awaitPrompt(const WindowFacts& facts) const;
    /// The mirror panel: the window that is not the prompt.
    [[nodiscard]] std::optional<xcb_window_t> panel(const WindowFacts& facts) const;

    /// In pixels, multiplied by the scale of QT_SCALE_FACTOR.
    static constexpr int promptWidth = 360;
    static constexpr int promptHeight = 160;

  private:
    [[nodiscard]] bool isPrompt(const Box& box) const;

    std::shared_ptr<Sandbox> sandbox;
    double scale = 1;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
