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

    /// This program by its installed path, or by its running path if it is not installed.
    static const SMAppService& mainApp();
    /// A program by its absolute path.
    explicit SMAppService(std::string program) : program(std::move(program)) {}

    /// The status as a desktop decides it. The user's own entry counts before those of the system.
    [[nodiscard]] Status status() const;
    /// Makes the desktop start the program. No error if the desktop did so before. Other keys of the entry
    /// stay.
    [[nodiscard]] std::optional<NSError> registerService() const;
    /// Keeps the desktop from starting the program. No error if the desktop did so before.
    [[nodiscard]] std::optional<NSError> unregisterService() const;

  private:
    std::string program;
};

} // namespace mirrolet::platform
