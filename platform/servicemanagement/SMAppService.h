#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// The login item: whether the desktop starts a program when the user logs in. It is the user's autostart
/// entry, read anew on every question, as other programs change it too. Main thread; blocks for the disk.
class SMAppService {
  public:
    enum class Status { notRegistered = 0, enabled = 1 };

    /// This program, as it is installed; one that is not, as it runs.
    static const SMAppService& mainApp();
    /// A program by its absolute path.
    explicit SMAppService(std::string program) : program(std::move(program)) {}

    /// What a desktop would make of the entries: the user's own counts before those of the system.
    [[nodiscard]] Status status() const;
    /// Makes the desktop start the program. No error if it did so before; other keys of the entry stay.
    [[nodiscard]] std::optional<NSError> registerService() const;
    /// Makes the desktop start it no more. No error if it did not before.
    [[nodiscard]] std::optional<NSError> unregisterService() const;

  private:
    std::string program;
};

} // namespace mirrolet::platform
