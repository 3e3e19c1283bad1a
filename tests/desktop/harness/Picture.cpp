#include "tests/desktop/harness/Picture.h"

#include <fstream>

namespace mirrolet::harness {

std::uint32_t Picture::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        return 0;
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
}

void Picture::save(const std::filesystem::path& file) const {
    std::ofstream stream(file, std::ios::binary);
    stream << "P6\n" << width << ' ' << height << "\n255\n";
    for (const std::uint32_t pixel : pixels)
        for (const int shift : {16, 8, 0})
            stream.put(static_cast<char>(pixel >> shift & 0xff));
}

} // namespace mirrolet::harness
