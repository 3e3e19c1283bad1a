// Shows one native Wayland window that looks like a video call, for tests. Runs the commands that it reads
// from standard input, and prints the keys that the window receives.

#include "tests/desktop/programs/native_window/Connection.h"
#include "tests/desktop/programs/native_window/Scene.h"
#include "tests/desktop/programs/native_window/Window.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <poll.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Options {
    Window::Options window;
    std::string colours = "d03030,30b040,3050d0,d0c030";
    int rate = 0;
};

std::optional<Options> parse(const std::vector<std::string>& arguments) {
    Options options;
    const std::map<std::string, std::string*> texts{{"--title", &options.window.title},
                                                    {"--app-id", &options.window.applicationId},
                                                    {"--colours", &options.colours}};
    const std::map<std::string, int*> numbers{
        {"--width", &options.window.width}, {"--height", &options.window.height}, {"--rate", &options.rate}};
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--no-decoration") {
            options.window.decorated = false;
        } else if (name == "--full-screen") {
            options.window.fullScreen = true;
        } else if (i + 1 == arguments.size()) {
            return std::nullopt;
        } else if (const auto text = texts.find(name); text != texts.end()) {
            *text->second = arguments[++i];
        } else if (const auto number = numbers.find(name); number != numbers.end()) {
            *number->second = std::stoi(arguments[++i]);
        } else {
            return std::nullopt;
        }
    }
    return options;
}

/// Handles events, commands and frames. Ends at the command "quit", when the window is closed, at the end of
/// standard input, or when the connection to the compositor is lost.
class Loop {
  public:
    explicit Loop(const Options& options) : window(connection, scene, options.window) {
        scene.setColours(options.colours);
        setRate(options.rate);
    }

    /// Returns false if the compositor is gone or has ended the connection because of an error.
    bool run() {
        while (!done && !window.isClosed()) {
            if (!handleEvents())
                return false;
            if (period && Clock::now() >= due)
                nextFrame();
        }
        return true;
    }

  private:
    /// Waits for events or commands until the next frame is due.
    bool handleEvents() {
        wl_display* display = connection.display;
        while (wl_display_prepare_read(display) != 0)
            wl_display_dispatch_pending(display);
        wl_display_flush(display);
        std::array<pollfd, 2> sources{{{wl_display_get_fd(display), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        poll(sources.data(), sources.size(), timeout());
        if ((sources[0].revents & (POLLIN | POLLHUP)) == 0)
            wl_display_cancel_read(display);
        else if (wl_display_read_events(display) < 0)
            return false;
        if (wl_display_dispatch_pending(display) < 0)
            return false;
        window.paintMissed();
        announce();
        if ((sources[1].revents & (POLLIN | POLLHUP)) != 0)
            readCommands();
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

    [[nodiscard]] int timeout() const {
        if (!period)
            return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
        return static_cast<int>(std::max<std::int64_t>(0, left.count()));
    }

    void setRate(int framesPerSecond) {
        period.reset();
        if (framesPerSecond > 0)
            period = std::chrono::nanoseconds(1'000'000'000 / framesPerSecond);
        due = Clock::now();
    }

    void nextFrame() {
        // Skips the frames that are already late, so that they are not all painted at once.
        while (due <= Clock::now())
            due += *period;
        scene.nextFrame();
        window.paint();
    }

    void readCommands() {
        std::array<char, 1024> block{};
        const ssize_t count = read(STDIN_FILENO, block.data(), block.size());
        if (count <= 0 && errno != EINTR)
            done = true;
        pending.append(block.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
            obey(pending.substr(0, end));
            pending.erase(0, end + 1);
        }
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        std::string rest;
        words >> verb >> std::ws;
        std::getline(words, rest);
        const auto command = commands.find(verb);
        if (command == commands.end())
            std::cerr << "no such command: " << line << std::endl;
        else
            command->second(rest);
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
    std::optional<std::chrono::nanoseconds> period;
    Clock::time_point due;
    std::string pending;
    bool announced = false;
    bool done = false;
    const std::map<std::string, std::function<void(const std::string&)>> commands{
        {"title", [this](const std::string& text) { window.setTitle(text); }},
        {"app-id", [this](const std::string& text) { window.setApplicationId(text); }},
        {"resize", [this](const std::string& text) { resize(text); }},
        {"colour", [this](const std::string& text) { recolour(text); }},
        {"page", [this](const std::string&) { showPage(); }},
        {"rate", [this](const std::string& text) { setRate(std::stoi(text)); }},
        {"full-screen", [this](const std::string&) { window.setFullScreen(true); }},
        {"windowed", [this](const std::string&) { window.setFullScreen(false); }},
        {"iconify", [this](const std::string&) { window.minimize(); }},
        {"menu", [this](const std::string&) { window.openMenu(); }},
        {"close-menu", [this](const std::string&) { window.closeMenu(); }},
        {"quit", [this](const std::string&) { done = true; }},
    };
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
