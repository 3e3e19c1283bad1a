#pragma once

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/XDisplay.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

/// Runs Xvfb, an X server that draws into memory instead of a screen, on a free display number. The
/// constructor waits until Xvfb accepts clients.
class XServer : public XDisplay {
  public:
    struct Options {
        int width = 1280;
        int height = 800;
        int depth = 24;
        bool composite = true;
        std::vector<std::string> more = {}; ///< More command-line arguments for Xvfb.
    };

    XServer();
    explicit XServer(const Options& options);

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    /// Kills the X server. All of its clients lose their connection at once.
    void kill();

  private:
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
};

} // namespace mirrolet::harness
