#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// The login item of a program. The item makes the desktop start the program when the user logs in. Each call
/// reads the user's autostart entry, because other programs change the entry too. Main thread. Blocks while
/// the disk is read.
class SMAppService {
  public:
    enum class Status { notRegistered = 0, enabled = 1 };

    /// Returns the service for this program. The login item starts the installed program if there is one, and
    /// otherwise the executable that runs now.
    static const SMAppService& mainApp();
    /// Makes a service for a program with this absolute path.
    explicit SMAppService(std::string program) : program(std::move(program)) {}

    /// Returns the status by the rules that a desktop follows. The user's own entry overrides the system-wide
    /// entry.
    [[nodiscard]] Status status() const;
    /// Makes the desktop start the program at login. Does nothing if the desktop does so already. Returns an
    /// error if the entry cannot be written, or if the desktop would not start the program even with the
    /// entry.
    [[nodiscard]] std::optional<NSError> registerService() const;
    /// Keeps the desktop from starting the program at login. If the desktop did not start the program before,
    /// that is no error.
    [[nodiscard]] std::optional<NSError> unregisterService() const;

  private:
    std::string program;
};

} // namespace mirrolet::platform
