#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace mirrolet::harness {

/// A picture that was read back from the server. Pixels are 0xRRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    /// Outside of the picture: black.
    [[nodiscard]] std::uint32_t at(int x, int y) const;
    /// As PNG.
    void save(const std::filesystem::path& file) const;
    bool operator==(const Picture&) const = default;
};

/// Two colours, equal but for what scaling and rounding do.
bool isNear(std::uint32_t first, std::uint32_t second);

} // namespace mirrolet::harness
