#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// A desktop entry in an autostart folder.
class AutostartEntry {
  public:
    explicit AutostartEntry(std::string path) : path(std::move(path)) {}

    /// The user's own entry of this program.
    static AutostartEntry own();
    /// The entry that is installed for every user; none if there is none.
    static std::optional<AutostartEntry> systemWide();

    [[nodiscard]] bool exists() const;
    /// True if a desktop would start the program: the entry can be read, is not switched off and is meant for
    /// this desktop, and its program is installed.
    [[nodiscard]] bool isOn() const;
    /// Replaces the entry atomically. Keys of the old entry stay. Without an old entry, those of `base` are
    /// taken.
    [[nodiscard]] std::optional<NSError> write(const std::string& program, bool on,
                                               const std::optional<AutostartEntry>& base) const;
    [[nodiscard]] std::optional<NSError> remove() const;

    /// The program's path, quoted for the Exec key.
    static std::string quoted(const std::string& program);

  private:
    std::string path;
};

} // namespace mirrolet::platform
