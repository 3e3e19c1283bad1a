#pragma once

#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/TextPage.h"
#include "tests/desktop/harness/WindowFacts.h"

#include <array>
#include <chrono>
#include <string>
#include <thread>

namespace mirrolet::bench {

/// Shows a window full of text. Mirrolet treats the window as a video call, because the window carries the
/// WM_CLASS of a call application. The window changes only while runFor() runs.
class TextSource {
  public:
    enum class Change { none, small, full };

    static constexpr int width = 1280;
    static constexpr int height = 800;

    TextSource(const harness::XDisplay& server, Change change, int x = 0, int y = 250)
        : client(server), change(change), window(makeWindow(x, y)) {
        page = xcb_generate_id(client.xcb());
        xcb_create_pixmap(client.xcb(), 24, page, window, width, 2 * height);
        drawTextPage(client, page, width, 2 * height);
        context = xcb_generate_id(client.xcb());
        const std::uint32_t noExposures = 0;
        xcb_create_gc(client.xcb(), context, page, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
        client.sync();
        show(0, 0, width, height, 0);
    }

    [[nodiscard]] xcb_window_t number() const { return window; }

    /// Repaints the window thirty times a second for the given time.
    void runFor(std::chrono::milliseconds time) {
        using Clock = std::chrono::steady_clock;
        const auto end = Clock::now() + time;
        for (auto due = Clock::now(); due < end;
             due += std::chrono::nanoseconds(std::chrono::seconds(1)) / 30) {
            std::this_thread::sleep_until(due);
            ++frame;
            if (change == Change::full)
                show(0, 0, width, height, frame * 14 % height);
            else if (change == Change::small)
                show(600, 300, 200, 28, frame * 14 % height);
        }
        std::this_thread::sleep_until(end);
    }

    /// Paints the whole window again, so that the window shows exactly the pixels that picture() returns. A
    /// window can lose its pixels while another window obscures it.
    void repaint() {
        show(0, 0, width, height, change == Change::full ? frame * 14 % height : 0);
        client.sync();
    }

    /// Returns the pixels that repaint() has painted, even if other windows obscure the window.
    [[nodiscard]] harness::Picture picture() {
        const int top = change == Change::full ? frame * 14 % height : 0;
        const harness::Reply<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(client.xcb(),
                                xcb_get_image(client.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, page, 0,
                                              static_cast<std::int16_t>(top), width, height, ~0U),
                                nullptr));
        if (!reply)
            return {};
        const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
        harness::Picture result{width, height, {pixels, pixels + std::size_t{width} * height}};
        for (auto& pixel : result.pixels)
            pixel &= 0xffffff;
        return result;
    }

  private:
    xcb_window_t makeWindow(int x, int y) {
        const auto made = xcb_generate_id(client.xcb());
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, made, client.root(),
                          static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const std::string name("whatsapp\0WhatsApp", 17);
        setText(made, XCB_ATOM_WM_CLASS, name);
        setText(made, XCB_ATOM_WM_NAME, "Video call");
        // The value 1 says that the user chose the window's place, so the window manager keeps that place.
        std::array<std::uint32_t, 18> hints{1};
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, made, XCB_ATOM_WM_NORMAL_HINTS,
                            XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
        xcb_map_window(client.xcb(), made);
        client.sync();
        const harness::WindowFacts facts(client);
        while (!facts.viewable(made))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return made;
    }

    void setText(xcb_window_t made, xcb_atom_t property, const std::string& text) {
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, made, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }

    void show(std::int16_t x, std::int16_t y, std::uint16_t w, std::uint16_t h, int scrolled) {
        xcb_copy_area(client.xcb(), page, window, context, x, static_cast<std::int16_t>(y + scrolled), x, y,
                      w, h);
        xcb_flush(client.xcb());
    }

    harness::XClient client;
    Change change;
    xcb_window_t window;
    xcb_pixmap_t page = XCB_NONE;
    xcb_gcontext_t context = XCB_NONE;
    int frame = 0;
};

} // namespace mirrolet::bench
