#include "tests/desktop/programs/native_window/Scene.h"

#include "tests/desktop/programs/native_window/SharedBuffer.h"

#include <algorithm>
#include <sstream>

namespace {

constexpr int barHeight = 6;
constexpr std::uint32_t barColour = 0x35c46a;

/// Returns a number that looks random. The same place always has the same number.
std::uint32_t mixed(std::uint32_t x, std::uint32_t y) {
    std::uint32_t number = x * 0x9e3779b1U ^ y * 0x85ebca77U;
    number ^= number >> 15;
    number *= 0x2c1b3c6dU;
    return number ^ number >> 13;
}

/// Returns one pixel of a page of letters on a dark ground. Each letter has 6 × 14 pixels, and its strokes
/// are one pixel wide.
std::uint32_t pagePixel(int x, int y) {
    constexpr std::array<std::uint32_t, 4> inks{0xdcdcdc, 0x78dc78, 0x78a0ff, 0xf0c85a};
    const auto cell = mixed(static_cast<std::uint32_t>(x / 6), static_cast<std::uint32_t>(y / 14));
    const int column = x % 6;
    const int line = y % 14;
    const bool isLetter = cell % 5 != 0 && column < 5 && line > 2 && line < 12;
    const bool isStroke = (cell >> column & 1) != 0 && (cell >> (8 + line) & 1) != 0;
    return isLetter && isStroke ? inks[cell >> 24 & 3] : 0x18181c;
}

} // namespace

void Scene::setColours(const std::string& text) {
    std::istringstream names(text);
    std::string name;
    for (std::size_t i = 0; i < quarters.size(); ++i) {
        std::getline(names, name, ','); // A single colour fills all quarters.
        quarters[i] = static_cast<std::uint32_t>(std::stoul(name, nullptr, 16));
    }
    page = false;
}

void Scene::paint(const SharedBuffer& buffer) const {
    for (int y = 0; y < buffer.height(); ++y) {
        const auto row = buffer.row(y);
        for (int x = 0; x < buffer.width(); ++x)
            row[static_cast<std::size_t>(x)] = colourAt(x, y, buffer);
    }
    if (frame > 0)
        paintBar(buffer);
}

std::uint32_t Scene::colourAt(int x, int y, const SharedBuffer& buffer) const {
    if (page)
        return pagePixel(x, y);
    const bool isRight = x >= buffer.width() / 2;
    const bool isLower = y >= buffer.height() / 2;
    return quarters[(isLower ? 2U : 0U) + (isRight ? 1U : 0U)];
}

void Scene::paintBar(const SharedBuffer& buffer) const {
    const auto width = static_cast<std::size_t>(buffer.width());
    const std::size_t from = frame * 4 % width;
    const std::size_t length = std::min(width / 10, width - from);
    for (int y = std::max(0, buffer.height() - barHeight); y < buffer.height(); ++y)
        std::ranges::fill(buffer.row(y).subspan(from, length), barColour);
}
