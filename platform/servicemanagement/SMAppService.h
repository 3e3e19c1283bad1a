#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// The login item: whether the desktop starts a program when the user logs in. Each call reads the user's
/// autostart entry, because other programs change it too. Main thread. Blocks while the disk is read.
class SMAppService {
  public:
    enum class Status { notRegistered = 0, enabled = 1 };

    /// Returns the service for this program, by its installed path, or by its running path if it is not
    /// installed.
    static const SMAppService& mainApp();
    /// Makes a service for a program with this absolute path.
    explicit SMAppService(std::string program) : program(std::move(program)) {}

    /// Returns the status as a desktop decides it. The user's own entry overrides the system-wide entry.
    [[nodiscard]] Status status() const;
    /// Makes the desktop start the program. Returns no error if the desktop already starts the program. Other
    /// keys of the entry stay.
    [[nodiscard]] std::optional<NSError> registerService() const;
    /// Keeps the desktop from starting the program. Returns no error if the desktop did not start the program
    /// before.
    [[nodiscard]] std::optional<NSError> unregisterService() const;

  private:
    std::string program;
};

} // namespace mirrolet::platform
