// Shows one native Wayland window that looks like a video call, for tests. Runs the commands that it reads
// from standard input, and prints the keys that the window receives.

#include "tests/desktop/programs/CommandLoop.h"
#include "tests/desktop/programs/native_window/Connection.h"
#include "tests/desktop/programs/native_window/Scene.h"
#include "tests/desktop/programs/native_window/Window.h"

#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Options {
    Window::Options window;
    std::string colours = "d03030,30b040,3050d0,d0c030";
    int rate = 0;
};

std::optional<Options> parse(const std::vector<std::string>& arguments) {
    Options options;
    bool isBare = false;
    const Handlers values{
        {"--title", storesIn(options.window.title)},   {"--app-id", storesIn(options.window.applicationId)},
        {"--colours", storesIn(options.colours)},      {"--width", storesIn(options.window.width)},
        {"--height", storesIn(options.window.height)}, {"--rate", storesIn(options.rate)},
    };
    if (!readOptions(arguments, values,
                     {{"--no-decoration", &isBare}, {"--full-screen", &options.window.fullScreen}}))
        return std::nullopt;
    options.window.decorated = !isBare;
    return options;
}

/// Handles Wayland events and commands. Ends also when the window is closed, or when the connection to the
/// compositor is lost.
class Loop {
  public:
    explicit Loop(const Options& options)
        : window(connection, scene, options.window), commands(
                                                         handlers(), [this] { nextFrame(); }, options.rate) {
        scene.setColours(options.colours);
    }

    /// Returns false if the compositor is gone or has ended the connection because of an error.
    bool run() {
        while (!commands.isDone() && !window.isClosed()) {
            if (!handleEvents())
                return false;
            commands.proceed();
        }
        return true;
    }

  private:
    Handlers handlers() {
        return {
            {"title", [this](const std::string& text) { window.setTitle(text); }},
            {"app-id", [this](const std::string& text) { window.setApplicationId(text); }},
            {"resize", [this](const std::string& text) { resize(text); }},
            {"colour", [this](const std::string& text) { recolour(text); }},
            {"page", [this](const std::string&) { showPage(); }},
            {"full-screen", [this](const std::string&) { window.setFullScreen(true); }},
            {"windowed", [this](const std::string&) { window.setFullScreen(false); }},
            {"iconify", [this](const std::string&) { window.minimize(); }},
            {"menu", [this](const std::string&) { window.openMenu(); }},
            {"close-menu", [this](const std::string&) { window.closeMenu(); }},
        };
    }

    /// Waits for events or commands until the next frame is due.
    bool handleEvents() {
        wl_display* display = connection.display;
        while (wl_display_prepare_read(display) != 0)
            wl_display_dispatch_pending(display);
        wl_display_flush(display);
        if (!commands.wait(wl_display_get_fd(display)))
            wl_display_cancel_read(display);
        else if (wl_display_read_events(display) < 0)
            return false;
        if (wl_display_dispatch_pending(display) < 0)
            return false;
        window.paintMissed();
        announce();
        return true;
    }

    /// Prints "shown" once, when the compositor has received the first picture.
    void announce() {
        if (announced || !window.isConfigured())
            return;
        announced = true;
        wl_display_roundtrip(connection.display);
        std::cout << "shown" << std::endl;
    }

    void nextFrame() {
        scene.nextFrame();
        window.paint();
    }

    void resize(const std::string& size) {
        int width = 0;
        int height = 0;
        if (std::istringstream(size) >> width >> height)
            window.resize(width, height);
    }

    void recolour(const std::string& colours) {
        scene.setColours(colours);
        window.paint();
    }

    void showPage() {
        scene.showPage();
        window.paint();
    }

    Connection connection;
    Scene scene;
    Window window;
    CommandLoop commands;
    bool announced = false;
};

} // namespace

int main(int count, char** values) {
    const auto options = parse({values + 1, values + count});
    if (!options) {
        std::cerr << "native_window: an argument that it does not know" << std::endl;
        return 2;
    }
    return Loop(*options).run() ? 0 : 1;
}
