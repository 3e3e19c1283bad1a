#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// Describes an application that was running when this object was made. A plain value. Any thread.
class NSRunningApplication {
  public:
    /// Returns the application that this process belongs to, or none if there is no such application.
    static std::optional<NSRunningApplication> withProcessIdentifier(std::int32_t processIdentifier);

    NSRunningApplication(std::int32_t processIdentifier, std::optional<std::string> bundleIdentifier,
                         std::string localizedName);

    [[nodiscard]] std::int32_t processIdentifier() const { return number; }
    [[nodiscard]] const std::optional<std::string>& bundleIdentifier() const { return identifier; }
    [[nodiscard]] const std::string& localizedName() const { return name; }

  private:
    std::int32_t number;
    std::optional<std::string> identifier;
    std::string name;
};

} // namespace mirrolet::platform
