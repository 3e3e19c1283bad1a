#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// A desktop entry in an autostart folder. The entry makes a desktop start a program at login.
class AutostartEntry {
  public:
    explicit AutostartEntry(std::string path) : path(std::move(path)) {}

    /// Returns the user's own entry for this program.
    static AutostartEntry own();
    /// Returns the entry that is installed for every user, or none if no such entry exists.
    static std::optional<AutostartEntry> systemWide();

    [[nodiscard]] bool exists() const;
    /// Returns true if a desktop would start the program. For that the entry must be readable, switched on
    /// and meant for this desktop, and its program must be installed.
    [[nodiscard]] bool isOn() const;
    /// Replaces the entry atomically. If there is no old entry, the new entry gets the keys of `base`.
    /// Changes only the keys that decide whether a desktop starts the program, and keeps the others.
    [[nodiscard]] std::optional<NSError> write(const std::string& program, bool on,
                                               const std::optional<AutostartEntry>& base) const;
    [[nodiscard]] std::optional<NSError> remove() const;

    /// Returns the program's path, quoted for the Exec key of a desktop entry.
    static std::string quoted(const std::string& program);

  private:
    std::string path;
};

} // namespace mirrolet::platform
