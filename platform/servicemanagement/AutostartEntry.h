#pragma once

#include "platform/foundation/NSError.h"

#include <optional>
#include <string>
#include <utility>

namespace mirrolet::platform {

/// One file of an autostart folder.
class AutostartEntry {
  public:
    explicit AutostartEntry(std::string path) : path(std::move(path)) {}

    /// The user's own entry of this program.
    static AutostartEntry own();
    /// The entry that the system brings for every user; none if it brings none.
    static std::optional<AutostartEntry> systemWide();

    [[nodiscard]] bool exists() const;
    /// Whether a desktop would start the program: the entry is whole, not switched off, meant for this
    /// desktop, and its program is there.
    [[nodiscard]] bool isOn() const;
    /// Writes the entry, in place of the old one at once or not at all. Keys that it had, or else those of
    /// `base`, stay.
    [[nodiscard]] std::optional<NSError> write(const std::string& program, bool on,
                                               const std::optional<AutostartEntry>& base) const;
    [[nodiscard]] std::optional<NSError> remove() const;

    /// The path as the Exec key takes a program.
    static std::string quoted(const std::string& program);

  private:
    std::string path;
};

} // namespace mirrolet::platform
