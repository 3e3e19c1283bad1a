#pragma once

#include "tests/desktop/harness/ChildProcess.h"

#include <memory>

namespace mirrolet::harness {

/// PipeWire with its session manager WirePlumber, which connects the two ends of a stream. The constructor
/// waits until PipeWire accepts clients.
class PipeWire {
  public:
    enum class SessionManager { none, wirePlumber };

    /// The environment names the runtime directory, where the socket is.
    explicit PipeWire(const Environment& environment, SessionManager manager = SessionManager::wirePlumber);

    [[nodiscard]] pid_t pid() const { return process->pid(); }
    /// Kills both processes. All streams end at once.
    void kill();
    /// Kills both processes and starts new ones.
    void restart();

  private:
    void start();

    Environment environment;
    SessionManager manager;
    Sandbox sandbox;
    std::unique_ptr<ChildProcess> process;
    std::unique_ptr<ChildProcess> managerProcess;
};

} // namespace mirrolet::harness
