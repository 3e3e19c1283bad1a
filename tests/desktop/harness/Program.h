#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::harness {

class XServer;
class SessionBus;

/// The real program in a home of its own.
class Program {
  public:
    struct Options {
        /// What defaults.json holds at the start; empty for a first start. See `defaults()`.
        std::string defaults = {};
        Environment environment = {}; ///< More, or other values than the usual ones.
        /// A desktop without this program's home: pass the same for a second start in the same home.
        std::shared_ptr<Sandbox> home = {};
    };

    /// The bus may be nullptr: a desktop without one.
    Program(const XServer* server, const SessionBus* bus, const Options& options);
    /// Ends it. A finding of a sanitizer ends the test, too, as does an error of the X server that the
    /// program did not expect; the test then shows all that the program logged.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// A defaults file as JSON with a short poll interval, and `more` (`"key": value, ...`) on top.
    static std::string defaults(const std::string& more = {});

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    [[nodiscard]] ChildProcess& child() { return *process; }
    [[nodiscard]] const std::shared_ptr<Sandbox>& home() const { return sandbox; }
    [[nodiscard]] std::filesystem::path defaultsFile() const;
    /// Standard error until now.
    [[nodiscard]] std::string log() const;

    /// Its windows on the screen that are large enough to be neither a status icon nor a helper window.
    [[nodiscard]] std::vector<xcb_window_t> windows(const WindowFacts& facts) const;
    /// The prompt, by its size, which is fixed.
    [[nodiscard]] std::optional<xcb_window_t> prompt(const WindowFacts& facts) const;
    /// Waits until the prompt is shown and has the keyboard; a key before that goes elsewhere.
    xcb_window_t awaitPrompt(const WindowFacts& facts) const;
    /// The mirror: the one that is not the prompt.
    [[nodiscard]] std::optional<xcb_window_t> panel(const WindowFacts& facts) const;

    /// In pixels, times the scale that QT_SCALE_FACTOR gave.
    static constexpr int promptWidth = 360;
    static constexpr int promptHeight = 160;

  private:
    [[nodiscard]] bool isPrompt(const Box& box) const;

    std::shared_ptr<Sandbox> sandbox;
    double scale = 1;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
