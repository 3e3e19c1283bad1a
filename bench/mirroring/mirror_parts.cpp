// Mirrors WINDOW into a new window of WIDTH x HEIGHT pixels, fifteen times a second. Uses only the capture
// and the presenter of Mirrolet, so that their cost can be measured without the rest of Mirrolet.
//
//   mirror_parts WINDOW WIDTH HEIGHT

#include "platform/desktop/x11/capture/X11WindowCapture.h"
#include "platform/desktop/x11/mirror/X11WindowPresenter.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using namespace mirrolet::platform::desktop;
using Clock = std::chrono::steady_clock;

xcb_window_t makePanel(x11::X11Connection& connection, PixelSize size) {
    const auto panel = xcb_generate_id(connection.xcb());
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection.xcb(), XCB_COPY_FROM_PARENT, panel, connection.root(), 0, 0,
                      static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(size.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrideRedirect);
    xcb_map_window(connection.xcb(), panel);
    connection.flush();
    return panel;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::string problem;
    const auto connection = x11::X11Connection::open({}, problem);
    if (argumentCount != 4 || !connection) {
        std::fprintf(stderr, "mirror_parts WINDOW WIDTH HEIGHT %s\n", problem.c_str());
        return EXIT_FAILURE;
    }
    const auto source = static_cast<WindowNumber>(std::stoul(arguments[1]));
    const PixelSize size{std::stoi(arguments[2]), std::stoi(arguments[3])};
    x11::X11WindowCapture capture(*connection);
    connection->start();
    const auto presenter = x11::X11WindowPresenter::make(*connection, makePanel(*connection, size));
    presenter->resize(size, 12);
    presenter->setOverlay(
        {size, std::vector<std::uint32_t>(static_cast<std::size_t>(size.width) * size.height)});
    constexpr auto period = std::chrono::nanoseconds(std::chrono::seconds(1)) / 15;
    for (auto due = Clock::now();; due += period) {
        std::this_thread::sleep_until(due);
        auto image = capture.image(source);
        if (!image)
            return EXIT_SUCCESS;
        presenter->setPicture(std::move(image), {0, 0, size.width, size.height});
        presenter->present();
    }
}
