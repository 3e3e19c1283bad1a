#include "tests/desktop/harness/Picture.h"

#include "tests/desktop/harness/HarnessError.h"

#include <QImage>

#include <cstdlib>

namespace mirrolet::harness {

std::uint32_t Picture::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        return 0;
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
}

void Picture::save(const std::filesystem::path& file) const {
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    if (!QImage(bytes, width, height, QImage::Format_RGB32).save(QString::fromStdString(file), "PNG"))
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
