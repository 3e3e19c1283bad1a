#pragma once

#include "platform/foundation/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace mirrolet::platform {

/// A dictionary in a JSON file. Reading gives back the types that were written, except that a whole number of
/// type double may become an integer.
class PropertyListFile {
  public:
    struct Content {
        PropertyList::Dictionary values; ///< Empty if there is no file, or if reading failed.
        std::string problem;             ///< Says why reading failed, or is empty.
    };

    /// Reads the file. Never waits, whatever kind of file the path names. Anything but a regular file counts
    /// as broken, and so does a file that is far larger than the program writes.
    [[nodiscard]] static Content read(const std::string& path);
    /// Parses the bytes of a file. Returns none if the bytes are not a JSON object.
    [[nodiscard]] static std::optional<PropertyList::Dictionary> parse(std::string_view bytes);
    /// Replaces the whole file. If writing fails, the old file stays unchanged and the result says why. After
    /// success the result is empty. Makes the folder if there is none. Only the user may read the file.
    [[nodiscard]] static std::string write(const std::string& path, const PropertyList::Dictionary& values);
};

} // namespace mirrolet::platform
