#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// Returns the content of a regular file. Returns none for anything else, because reading a FIFO might block
/// for ever. Also returns none for a file that cannot be read or has more than `most` bytes.
std::optional<std::string> readRegularFile(const std::string& path, std::size_t most);

} // namespace mirrolet::platform
