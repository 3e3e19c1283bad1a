// Demonstrates one call with Mirrolet from start to end. Starts a desktop, a window that looks like a video
// call, and Mirrolet. Answers the prompt, and writes a screenshot of each step. Fails if a step does not
// happen.

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/Program.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <csignal>
#include <iostream>

namespace {

using namespace mirrolet::harness;

constexpr std::uint32_t ground = 0x3f5170;

class CallDemo {
  public:
    explicit CallDemo(std::filesystem::path folder) : folder(std::move(folder)) {
        std::filesystem::create_directories(this->folder);
    }

    void run() {
        auto call = std::make_unique<CallWindow>(server, callOptions());
        Program program(&server, &bus, {.defaults = Program::defaults()});
        settle(program.awaitPrompt(facts));
        take("1-prompt");

        Keyboard(client).stroke({key::returnKey});
        require("Return closes the prompt and opens the mirror",
                [&] { return !program.prompt(facts) && program.panel(facts).has_value(); });
        const xcb_window_t panel = *program.panel(facts);
        require("the mirror shows the call", [&] { return showsPicture(panel); });
        take("2-mirror");

        enlarge(panel);
        take("3-mirror-resized");

        hover(panel);
        take("4-close-button");

        call.reset();
        require("the end of the call closes the mirror", [&] { return !program.panel(facts); });
        take("5-call-ended");

        program.child().signal(SIGTERM);
        if (program.child().waitForExit() != 0)
            throw HarnessError("Mirrolet did not end well: " + program.log());
    }

  private:
    static CallWindow::Options callOptions() {
        CallWindow::Options options;
        options.place = {90, 90, 720, 450};
        options.rate = 30;
        return options;
    }

    /// Returns options for a window that fills the desktop with a background colour. The colour of the root
    /// window would not do, because a compositing manager does not show it.
    static CallWindow::Options backgroundOptions() {
        CallWindow::Options options;
        options.title = options.wmClass = options.wmInstance = "Background";
        options.type = "_NET_WM_WINDOW_TYPE_DESKTOP";
        options.colour = "3f5170"; // The same colour as `ground`.
        options.place = {0, 0, 1280, 800};
        return options;
    }

    /// Waits until the prompt is drawn and no longer changes. A drawn prompt has the same colour at its left
    /// and right side. The windows behind the prompt differ there.
    void settle(xcb_window_t prompt) {
        const Box box = facts.box(prompt);
        Picture last;
        require("the prompt is drawn", [&] {
            const Picture now = facts.screenshot(box);
            const bool still =
                now == last && now.at(20, box.height / 2) == now.at(box.width - 20, box.height / 2);
            last = now;
            return still;
        });
    }

    /// Returns whether the left and right side of the panel show the walls behind the two people in the call.
    /// A compositing manager shows a resized panel later than the X server does. Until then the colour
    /// `ground` is seen.
    [[nodiscard]] bool showsPicture(xcb_window_t panel) const {
        const Box box = facts.box(panel);
        const Picture picture = facts.screenshot(box);
        const auto left = picture.at(box.width / 8, box.height / 2);
        const auto right = picture.at(box.width * 7 / 8, box.height / 2);
        return left != 0 && left != right && (right & 0xffffff) != ground;
    }

    void enlarge(xcb_window_t panel) {
        const Box before = facts.box(panel);
        const int right = before.x + before.width;
        const int bottom = before.y + before.height;
        // Moves the mirror to a free place, and then resizes it by its grip.
        constexpr int x = 900;
        constexpr int y = 520;
        Pointer(client).drag(before.x + before.width / 2, before.y + before.height / 2, x, y);
        require("the mirror follows the pointer to its end", [&] {
            const Box now = facts.box(panel);
            return now.x == x - before.width / 2 && now.y == y - before.height / 2;
        });
        const Box moved = facts.box(panel);
        const int gripX = right - before.x + moved.x - 8;
        const int gripY = bottom - before.y + moved.y - 8;
        Pointer(client).drag(gripX, gripY, gripX + 220, gripY + 100);
        require("the grip makes the mirror larger",
                [&] { return facts.box(panel).width == 320 && facts.box(panel).height == 200; });
        Pointer(client).move(20, 780);
        require("the larger mirror shows the call", [&] { return showsPicture(panel); });
    }

    void hover(xcb_window_t panel) {
        const Box box = facts.box(panel);
        Pointer(client).move(box.x + box.width / 2, box.y + box.height / 2);
        require("the close button appears under the pointer", [&] {
            const std::uint32_t pixel = facts.pixel(box.x + 12, box.y + 18);
            return (pixel >> 16) > 0xc0 && (pixel >> 8 & 0xff) < 0x60;
        });
    }

    void take(const std::string& name) const {
        const auto file = folder / (name + ".png");
        facts.screenshot().save(file);
        std::cout << "screenshot: " << file.string() << std::endl;
    }

    std::filesystem::path folder;
    XServer server;
    SessionBus bus;
    WindowManager manager{server, WindowManagerKind::openbox};
    Picom compositor{server};
    TrayHost tray{server};
    CallWindow background{server, backgroundOptions()};
    XClient client{server};
    WindowFacts facts{client};
};

} // namespace

int main(int count, char** values) {
    if (count != 2) {
        std::cerr << "demo: name the folder for the screenshots" << std::endl;
        return 2;
    }
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { interruptWait(); });
    try {
        CallDemo(values[1]).run();
    } catch (const std::exception& problem) {
        std::cerr << "demo: " << problem.what() << std::endl;
        return 1;
    }
    std::cout << "Mirrolet showed the prompt, the mirror and its end." << std::endl;
    return 0;
}
