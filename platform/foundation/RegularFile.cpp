#include "platform/foundation/RegularFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mirrolet::platform {

namespace {

std::optional<std::string> readUpTo(int file, std::size_t most) {
    struct stat status {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > static_cast<off_t>(most))
        return std::nullopt;
    std::string content;
    std::array<char, 16384> part;
    // The size that the kernel reports is not used, because files of /proc report 0.
    for (;;) {
        const auto length = read(file, part.data(), part.size());
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return std::nullopt;
        if (length == 0)
            return content;
        content.append(part.data(), static_cast<std::size_t>(length));
        if (content.size() > most)
            return std::nullopt;
    }
}

} // namespace

std::optional<std::string> readRegularFile(const std::string& path, std::size_t most) {
    // Without O_NONBLOCK, opening a FIFO would wait for its writer.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0)
        return std::nullopt;
    auto content = readUpTo(file, most);
    close(file);
    return content;
}

} // namespace mirrolet::platform
