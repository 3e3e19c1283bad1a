#pragma once

#include "platform/foundation/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform {

/// A dictionary in a JSON file. Integers, doubles, booleans and strings come back as what they were, but a
/// whole double may come back as an integer.
class PropertyListFile {
  public:
    struct Content {
        PropertyList::Dictionary values; ///< Empty where there is no file.
        std::string problem; ///< Why the file could not be read; empty if it could, or is not there.
    };

    /// Never waits, whatever lies under the path: what is no regular file, or larger than any file of ours,
    /// counts as broken.
    [[nodiscard]] static Content read(const std::string& path);
    /// The dictionary that a file's bytes hold; none if they hold none.
    [[nodiscard]] static std::optional<PropertyList::Dictionary> parse(std::string_view bytes);
    /// Replaces the file as a whole or leaves it as it is; makes its folder. Only the user may read it.
    /// Returns why it failed, empty if it did not.
    [[nodiscard]] static std::string write(const std::string& path, const PropertyList::Dictionary& values);
};

} // namespace mirrolet::platform
