#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// The content of a regular file. None for anything else (a FIFO would block for ever), for a file that
/// cannot be read, and for a file of more than `most` bytes.
std::optional<std::string> readRegularFile(const std::string& path, std::size_t most);

} // namespace mirrolet::platform
