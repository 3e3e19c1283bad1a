#include "tests/desktop/harness/plasma/PlasmaScreen.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <gio/gio.h>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace mirrolet::harness {

namespace {

std::uint32_t numberIn(const BusValue& results, const char* key) {
    guint32 value = 0;
    const BusValue entries(g_variant_get_child_value(results.get(), 0));
    if (g_variant_lookup(entries.get(), key, "u", &value) == FALSE)
        throw HarnessError(std::string("a screenshot without ") + key);
    return value;
}

std::string readAll(int descriptor) {
    std::string data;
    std::array<char, 65536> block{};
    for (;;) {
        const ssize_t count = read(descriptor, block.data(), block.size());
        if (count <= 0)
            return data;
        data.append(block.data(), static_cast<std::size_t>(count));
    }
}

Picture pictureOf(const std::string& data, std::size_t width, std::size_t height, std::size_t stride) {
    if (data.size() < stride * height || stride < width * sizeof(std::uint32_t))
        throw HarnessError("a screenshot with too few pixels");
    Picture picture{static_cast<int>(width), static_cast<int>(height), {}};
    picture.pixels.resize(width * height);
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(&picture.pixels[y * width], &data[y * stride], width * sizeof(std::uint32_t));
    for (std::uint32_t& pixel : picture.pixels)
        pixel &= 0xffffff;
    return picture;
}

} // namespace

PlasmaScreen::PlasmaScreen(const PlasmaSession& session) : bus(session.bus()) {}

/// Asks KWin for a screenshot. KWin answers with the format of the pixels, and writes the pixels into a pipe.
Picture PlasmaScreen::screenshot(const Box& box) const {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw HarnessError("no pipe for a screenshot");
    GVariant* wanted = g_variant_new("(iiuu@a{sv}h)", box.x, box.y, static_cast<guint32>(box.width),
                                     static_cast<guint32>(box.height),
                                     g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0), 0);
    const BusValue results =
        bus.call({"org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", "CaptureArea"},
                 wanted, ends[1]);
    close(ends[1]);
    const std::string data = readAll(ends[0]);
    close(ends[0]);
    return pictureOf(data, numberIn(results, "width"), numberIn(results, "height"),
                     numberIn(results, "stride"));
}

} // namespace mirrolet::harness
