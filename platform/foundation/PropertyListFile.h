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
        PropertyList::Dictionary values; ///< Empty if there is no file.
        std::string problem;             ///< Why reading failed; empty after success or if there is no file.
    };

    /// Reads the file. Never waits, whatever kind of file the path names. A file that is not regular, or far
    /// larger than the program writes, counts as broken.
    [[nodiscard]] static Content read(const std::string& path);
    /// Returns the dictionary that the bytes of a file hold; none if they hold none.
    [[nodiscard]] static std::optional<PropertyList::Dictionary> parse(std::string_view bytes);
    /// Replaces the whole file, or leaves the file unchanged on failure. Makes the folder if there is none.
    /// Only the user may read the file. Returns why writing failed; empty after success.
    [[nodiscard]] static std::string write(const std::string& path, const PropertyList::Dictionary& values);
};

} // namespace mirrolet::platform
