#pragma once

#include "platform/desktop/x11/capture/X11WindowCapture.h"
#include "platform/desktop/x11/mirror/X11WindowPresenter.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/Holdings.h"
#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/XClient.h"
#include "tests/desktop/harness/XServer.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

namespace x11 = platform::desktop::x11;
using Image = std::shared_ptr<const platform::desktop::WindowImage>;

/// Runs only the capture and the presenter of Mirrolet, on an X server of their own.
struct MirrorParts {
    explicit MirrorParts(const XServer::Options& options = {}) : server(options) {
        std::string problem;
        connection = x11::X11Connection::open(server.display(), problem);
        if (!connection)
            throw HarnessError(problem);
        capture = std::make_unique<x11::X11WindowCapture>(*connection);
        connection->start();
    }

    /// Makes a viewable window. Window managers do not decorate it, because it is override-redirect.
    xcb_window_t makeWindow(platform::desktop::PixelRect box, std::uint8_t depth = 24) {
        const auto window = xcb_generate_id(client.xcb());
        const auto colormap = xcb_generate_id(client.xcb());
        const auto visual = visualOf(depth);
        xcb_create_colormap(client.xcb(), XCB_COLORMAP_ALLOC_NONE, colormap, client.root(), visual);
        const std::uint32_t values[] = {0, 0, 1, colormap};
        xcb_create_window(
            client.xcb(), depth, window, client.root(), static_cast<std::int16_t>(box.x),
            static_cast<std::int16_t>(box.y), static_cast<std::uint16_t>(box.width),
            static_cast<std::uint16_t>(box.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
            XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
        xcb_map_window(client.xcb(), window);
        client.sync();
        return window;
    }

    /// Waits until the X server has handled all requests of the capture and the presenter.
    void sync() const {
        const Reply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection->xcb(), xcb_get_input_focus(connection->xcb()), nullptr));
    }

    /// Returns how many resources of each kind the capture and the presenter hold on the X server.
    std::map<std::string, long> resources() {
        sync();
        return resourcesOf(client, connection->ownWindow());
    }

    /// Returns the window's pixels. The pixels have alpha if the window has an alpha channel.
    Picture pixelsOf(xcb_window_t window, platform::desktop::PixelRect part) {
        sync();
        const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
            client.xcb(),
            xcb_get_image(client.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(part.x),
                          static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
                          static_cast<std::uint16_t>(part.height), ~0U),
            nullptr));
        if (!reply)
            throw HarnessError("the window cannot be read back");
        const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
        Picture picture{
            part.width, part.height, {pixels, pixels + static_cast<std::size_t>(part.width) * part.height}};
        // In a window of depth 24 the fourth byte of a pixel is unused and may hold anything.
        if (reply->depth == 24)
            for (auto& pixel : picture.pixels)
                pixel &= 0xffffff;
        return picture;
    }

    /// Returns the image's pixels without alpha.
    static Picture pictureOf(const Image& image) {
        auto bitmap = image->readBack();
        for (auto& pixel : bitmap.pixels)
            pixel &= 0xffffff;
        return {bitmap.size.width, bitmap.size.height, std::move(bitmap.pixels)};
    }

    XServer server;
    XClient client{server};
    std::unique_ptr<x11::X11Connection> connection;
    std::unique_ptr<x11::X11WindowCapture> capture;

  private:
    [[nodiscard]] xcb_visualid_t visualOf(std::uint8_t depth) const {
        for (auto it = xcb_screen_allowed_depths_iterator(&client.screen()); it.rem > 0; xcb_depth_next(&it))
            if (it.data->depth == depth && xcb_depth_visuals_length(it.data) > 0)
                return depth == client.screen().root_depth ? client.screen().root_visual
                                                           : xcb_depth_visuals(it.data)->visual_id;
        throw HarnessError("the server has no such depth");
    }
};

} // namespace mirrolet::harness
