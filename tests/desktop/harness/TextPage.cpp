#include "tests/desktop/harness/TextPage.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>

namespace mirrolet::harness {

namespace {

constexpr int charWidth = 6; // The width of a character in the font "fixed".
constexpr int lineHeight = 14;
constexpr int ascent = 11;

std::string word(std::mt19937& random) {
    static constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEF0123456789/._-=(){}";
    std::string text(1 + random() % 11, ' ');
    std::generate(text.begin(), text.end(), [&] { return letters[random() % letters.size()]; });
    return text;
}

} // namespace

void drawTextPage(XClient& client, xcb_drawable_t drawable, int width, int height) {
    static constexpr std::array<std::uint32_t, 6> colours{0xff18181c, 0xffdcdcdc, 0xff78dc78,
                                                          0xff78a0ff, 0xfff0c85a, 0xfff06e6e};
    auto* xcb = client.xcb();
    const auto font = xcb_generate_id(xcb);
    const auto context = xcb_generate_id(xcb);
    xcb_open_font(xcb, font, 5, "fixed");
    const std::array<std::uint32_t, 3> values{colours[0], colours[0], font};
    xcb_create_gc(xcb, context, drawable, XCB_GC_FOREGROUND | XCB_GC_BACKGROUND | XCB_GC_FONT, values.data());
    const xcb_rectangle_t all{0, 0, static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height)};
    xcb_poly_fill_rectangle(xcb, drawable, context, 1, &all);
    std::mt19937 random(1); // NOLINT: a fixed seed makes the same page every time.
    for (int y = 2; y < height; y += lineHeight)
        for (int x = 4; x < width && random() % 16 != 0;) {
            const auto text = word(random);
            xcb_change_gc(xcb, context, XCB_GC_FOREGROUND, &colours[1 + random() % (colours.size() - 1)]);
            xcb_image_text_8(xcb, static_cast<std::uint8_t>(text.size()), drawable, context,
                             static_cast<std::int16_t>(x), static_cast<std::int16_t>(y + ascent),
                             text.data());
            x += static_cast<int>(text.size() + 1) * charWidth;
        }
    xcb_free_gc(xcb, context);
    xcb_close_font(xcb, font);
    client.sync();
}

} // namespace mirrolet::harness
