#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace mirrolet::harness {

/// A picture that was read back from the server, with pixels of 0xRRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    /// Returns black outside of the picture.
    [[nodiscard]] std::uint32_t at(int x, int y) const;
    /// Writes a PNG file.
    void save(const std::filesystem::path& file) const;
    bool operator==(const Picture&) const = default;
};

/// Returns whether two colours are equal up to the errors of scaling and rounding.
bool isNear(std::uint32_t first, std::uint32_t second);

} // namespace mirrolet::harness
