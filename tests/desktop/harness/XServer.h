#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// An X server without a screen (Xvfb), on a free display number. The constructor waits until it accepts
/// clients.
class XServer {
  public:
    struct Options {
        int width = 1280;
        int height = 800;
        int depth = 24;
        bool composite = true;
        std::vector<std::string> more = {}; ///< Further arguments of Xvfb.
    };

    XServer();
    explicit XServer(const Options& options);

    /// Returns the display name, such as ":1".
    [[nodiscard]] const std::string& display() const { return name; }
    [[nodiscard]] pid_t pid() const { return process->pid(); }
    /// Returns the environment with DISPLAY set to this server.
    [[nodiscard]] Environment with(Environment environment) const;
    /// Kills the server. All its clients lose their connection at once.
    void kill();

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
    std::string name;
};

} // namespace mirrolet::harness
