#include "tests/desktop/harness/Picture.h"

#include "tests/desktop/harness/HarnessError.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <zlib.h>

namespace mirrolet::harness {

namespace {

std::string bigEndian(std::uint32_t number) {
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes.push_back(static_cast<char>(number >> shift & 0xff));
    return bytes;
}

std::string chunk(const std::string& type, const std::string& data) {
    const std::string body = type + data;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
    return bigEndian(static_cast<std::uint32_t>(data.size())) + body +
           bigEndian(static_cast<std::uint32_t>(sum));
}

/// Returns the picture's lines as RGB bytes. Each line begins with its filter type, which is always "none".
std::string scanLines(const Picture& picture) {
    std::string lines;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (i % static_cast<std::size_t>(picture.width) == 0)
            lines.push_back(0);
        for (const int shift : {16, 8, 0})
            lines.push_back(static_cast<char>(picture.pixels[i] >> shift & 0xff));
    }
    return lines;
}

std::string compressed(const std::string& data) {
    uLongf size = compressBound(data.size());
    std::string result(size, 0);
    compress(reinterpret_cast<Bytef*>(result.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
             data.size());
    result.resize(size);
    return result;
}

} // namespace

std::uint32_t Picture::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        return 0;
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
}

void Picture::save(const std::filesystem::path& file) const {
    const std::string eightBitColour{8, 2, 0, 0, 0};
    std::ofstream stream(file, std::ios::binary);
    stream << "\x89PNG\r\n\x1a\n"
           << chunk("IHDR", bigEndian(static_cast<std::uint32_t>(width)) +
                                bigEndian(static_cast<std::uint32_t>(height)) + eightBitColour)
           << chunk("IDAT", compressed(scanLines(*this))) << chunk("IEND", {});
    if (!stream.flush())
        throw HarnessError("cannot write " + file.string());
}

bool isNear(std::uint32_t first, std::uint32_t second) {
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int difference = int(first >> shift & 0xff) - int(second >> shift & 0xff);
        if (std::abs(difference) > 3)
            return false;
    }
    return true;
}

} // namespace mirrolet::harness
