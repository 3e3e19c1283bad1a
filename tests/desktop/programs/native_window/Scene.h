#pragma once

#include <array>
#include <cstdint>
#include <string>

class SharedBuffer;

/// The window's content: a colour in each quarter, or a page of small marks that is hard to scale down.
class Scene {
  public:
    /// Takes one colour for the whole window, or four for its quarters: "RRGGBB" or
    /// "RRGGBB,RRGGBB,RRGGBB,RRGGBB" (top left, top right, bottom left, bottom right).
    void setColours(const std::string& text);
    void showPage() { page = true; }
    /// Moves the bar at the lower edge forward. There is no bar before the first call.
    void nextFrame() { ++frame; }
    void paint(const SharedBuffer& buffer) const;

  private:
    [[nodiscard]] std::uint32_t colourAt(int x, int y, const SharedBuffer& buffer) const;
    void paintBar(const SharedBuffer& buffer) const;

    std::array<std::uint32_t, 4> quarters{};
    bool page = false;
    unsigned frame = 0;
};
