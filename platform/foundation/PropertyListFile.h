#pragma once

#include "platform/foundation/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform {

/// A dictionary in a JSON file. Integers, doubles, booleans and strings come back with their types, but a
/// whole double may come back as an integer.
class PropertyListFile {
  public:
    struct Content {
        PropertyList::Dictionary values; ///< Empty where there is no file.
        std::string problem; ///< Why the file could not be read; empty if it could be, or does not exist.
    };

    /// Never waits, whatever lies under the path. Anything but a regular file, and a file that is far larger
    /// than the program writes, counts as broken.
    [[nodiscard]] static Content read(const std::string& path);
    /// The dictionary in a file's bytes, if there is one.
    [[nodiscard]] static std::optional<PropertyList::Dictionary> parse(std::string_view bytes);
    /// Replaces the file as a whole or leaves the file as it is; makes the folder. Only the user may read the
    /// file. Returns why writing failed, empty after success.
    [[nodiscard]] static std::string write(const std::string& path, const PropertyList::Dictionary& values);
};

} // namespace mirrolet::platform
