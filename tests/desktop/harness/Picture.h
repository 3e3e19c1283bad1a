#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace mirrolet::harness {

/// Holds a picture that was read from the X server. Each pixel is 0xRRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    /// Returns the pixel at the place. A place outside of the picture is black.
    [[nodiscard]] std::uint32_t at(int x, int y) const;
    /// Writes the picture to a PNG file.
    void save(const std::filesystem::path& file) const;
    bool operator==(const Picture&) const = default;
};

/// Returns whether two colours are the same apart from small errors, as scaling and rounding make them.
bool isNear(std::uint32_t first, std::uint32_t second);

} // namespace mirrolet::harness
