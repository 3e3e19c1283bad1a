// Measures how well the mirror scales pictures. Shows a page of small text in a real window, scales it down
// with Mirrolet's presenter, and compares the result with a perfectly scaled picture. Prints a table. With
// --check, the program fails if one result is so bad that text would not be readable.

#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/Similarity.h"
#include "tests/desktop/harness/TextPage.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

using namespace mirrolet::harness;
using mirrolet::platform::desktop::PixelSize;

constexpr double good = 0.96;

Picture shrunk(MirrorParts& mirror, const Image& image, PixelSize size) {
    const auto window = mirror.makeWindow({0, 0, size.width, size.height});
    const auto presenter = x11::X11WindowPresenter::make(*mirror.connection, window);
    presenter->resize(size, 0);
    presenter->setPicture(image, {0, 0, size.width, size.height});
    presenter->present();
    auto picture = mirror.pixelsOf(window, {0, 0, size.width, size.height});
    xcb_destroy_window(mirror.client.xcb(), window);
    return picture;
}

/// Scales a page of text of this size down by several ratios. Returns the lowest similarity among the
/// results.
double measure(MirrorParts& mirror, PixelSize size) {
    const auto source = mirror.makeWindow({0, 0, size.width, size.height});
    drawTextPage(mirror.client, source, size.width, size.height);
    const auto image = mirror.capture->image(source);
    const auto original = MirrorParts::pictureOf(image);
    double worst = 1;
    std::printf("%d x %d\n  shrunk   panel       SSIM\n", size.width, size.height);
    for (const double ratio :
         {1.3, 1.6, 1.9, 2.0, 2.7, 3.5, 3.99, 4.0, 5.0, 6.4, 7.0, 7.9, 10.0, 12.8, 15.0}) {
        const PixelSize panel{static_cast<int>(std::lround(size.width / ratio)),
                              static_cast<int>(std::lround(size.height / ratio))};
        const double result =
            similarity(shrunk(mirror, image, panel), areaAverage(original, panel.width, panel.height));
        std::printf("  %6.2f   %4d x %-4d %.3f\n", ratio, panel.width, panel.height, result);
        worst = std::min(worst, result);
    }
    xcb_destroy_window(mirror.client.xcb(), source);
    return worst;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const bool check = argumentCount > 1 && std::strcmp(arguments[1], "--check") == 0;
    try {
        MirrorParts mirror({.width = 1400, .height = 900});
        double worst = measure(mirror, {1280, 800});
        worst = std::min(worst, measure(mirror, {1151, 863}));
        std::printf("worst %.3f\n", worst);
        return check && worst < good ? EXIT_FAILURE : EXIT_SUCCESS;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return EXIT_FAILURE;
    }
}
