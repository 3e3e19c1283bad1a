// Tests that the mirror stays alive beside hostile clients. The program's processor time is only printed and
// not checked, because other work on the machine would change it.

#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/ProcessorTime.h"

#include <atomic>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <thread>

namespace mirrolet {
namespace {

using namespace harness;

/// Calls a function again and again, on a thread and a connection of its own. The destructor ends the thread.
class HostileClient {
  public:
    /// Calls `step` `perSecond` times a second. The arguments of `step` are the client and the number of
    /// earlier calls.
    HostileClient(const XServer& server, int perSecond, std::function<void(XClient&, unsigned)> step)
        : client(server), thread([this, perSecond, step = std::move(step)] {
              auto due = std::chrono::steady_clock::now();
              for (unsigned round = 0; !done; ++round) {
                  step(client, round);
                  client.sync();
                  due += std::chrono::nanoseconds(1'000'000'000 / perSecond);
                  std::this_thread::sleep_until(due);
              }
          }) {}
    ~HostileClient() {
        done = true;
        thread.join();
    }
    HostileClient(const HostileClient&) = delete;
    HostileClient& operator=(const HostileClient&) = delete;

  private:
    XClient client;
    std::atomic<bool> done = false;
    std::thread thread;
};

void setTitle(XClient& client, xcb_window_t window, const std::string& title) {
    for (const auto property : {xcb_atom_t{XCB_ATOM_WM_NAME}, client.atom("_NET_WM_NAME")})
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, window, property, client.atom("UTF8_STRING"),
                            8, static_cast<std::uint32_t>(title.size()), title.data());
    client.sync();
}

void resize(XClient& client, xcb_window_t window, std::uint32_t width, std::uint32_t height) {
    const std::uint32_t size[] = {width, height};
    xcb_configure_window(client.xcb(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    client.sync();
}

class HostileClientTest : public EndToEndTest {
  protected:
    /// Starts no window manager, because it would also have to handle the hostile clients and would use more
    /// processor time than the program.
    HostileClientTest() : EndToEndTest(WindowManagerKind::none) {}

    /// Shows a call, accepts the prompt and waits for the mirror. The program polls the windows ten times a
    /// second.
    void detect(const std::string& defaults = {}) {
        start(defaults);
        call = showCall();
        awaitPrompt();
        keyboard.stroke({key::returnKey});
        panel = awaitPanel();
        awaitColour(panel, blue);
    }

    /// Opens a mirror of the call by the shortcut. The program does not poll the windows.
    void choose() {
        startQuiet();
        call = showCall();
        xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, call->window(), XCB_CURRENT_TIME);
        client.sync();
        pressFrontmostShortcut();
        panel = awaitPanel();
        awaitColour(panel, blue);
    }

    void expectAlive() {
        for (const auto colour : {green, orange, blue}) {
            paint(*call, colour);
            awaitColour(panel, colour);
        }
        EXPECT_TRUE(program->child().running());
        EXPECT_EQ(program->log(), "");
    }

    void printCost(const std::string& what) const {
        const char* wanted = std::getenv("MIRROLET_COST_SECONDS");
        if (wanted == nullptr)
            return;
        const double seconds = std::atof(wanted);
        const double before = processorTime(program->pid());
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        const double share = (processorTime(program->pid()) - before) / (seconds * 10);
        std::cout << what << ": " << share << " % of a core" << std::endl;
    }

    std::unique_ptr<CallWindow> call;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(HostileClientTest, AMirrorOfAWindowAmongThousandsStaysAlive) {
    const char* wanted = std::getenv("MIRROLET_MANY_WINDOWS");
    const int count = wanted == nullptr ? 10000 : std::atoi(wanted);
    // A run by hand sets MIRROLET_MANY_WINDOWS to measure the cost. Such a run uses the default poll
    // interval.
    detect(wanted == nullptr ? "" : R"("pollInterval": 2)");
    for (int i = 0; i < count; ++i) {
        const auto window = xcb_generate_id(client.xcb());
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 900, 10, 200, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        // Puts each window below the earlier ones. An X server shows thousands of windows faster if they are
        // obscured.
        const std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(client.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
        xcb_map_window(client.xcb(), window);
    }
    client.sync();
    expectAlive();
    printCost("among " + std::to_string(count) + " windows");
}

TEST_F(HostileClientTest, AMirrorOfAWindowOfOddSizesStaysAlive) {
    choose();
    const std::pair<int, int> sizes[] = {{30000, 2}, {2, 30000}, {1, 1}, {32767, 1}, {400, 400}};
    for (const auto& [width, height] : sizes) {
        resize(client, call->window(), static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
        call->tell("repaint");
        printCost(std::to_string(width) + " x " + std::to_string(height));
    }
    expectAlive();
}

TEST_F(HostileClientTest, AMirrorOfAWindowThatChangesAllTheTimeStaysAlive) {
    detect();
    const std::pair<const char*, std::function<void(XClient&, unsigned)>> floods[] = {
        {"a new title of a megabyte, 60 times a second",
         [window = call->window()](XClient& own, unsigned round) {
             setTitle(own, window, std::string(1'000'000, static_cast<char>('a' + round % 26)));
         }},
        {"resized and painted 60 times a second",
         [window = call->window()](XClient& own, unsigned round) {
             resize(own, window, 400 + round % 2 * 100, 400 + round % 2 * 100);
         }},
        {"6,000 property changes a second",
         [window = call->window()](XClient& own, unsigned round) {
             for (unsigned i = 0; i < 100; ++i) {
                 const std::uint32_t value = round + i;
                 xcb_change_property(own.xcb(), XCB_PROP_MODE_REPLACE, window, own.atom("_FLOOD"),
                                     XCB_ATOM_CARDINAL, 32, 1, &value);
             }
         }},
        {"60,000 small drawings a second",
         [window = call->window(), context = xcb_gcontext_t{XCB_NONE}](XClient& own, unsigned round) mutable {
             if (context == XCB_NONE) {
                 context = xcb_generate_id(own.xcb());
                 xcb_create_gc(own.xcb(), context, window, 0, nullptr);
             }
             // Draws in a corner of the window, because shows() does not check the pixels of the mirror's
             // corners.
             for (unsigned i = 0; i < 1000; ++i) {
                 const xcb_rectangle_t dot{static_cast<std::int16_t>((round * 7 + i) % 20),
                                           static_cast<std::int16_t>(i * 13 % 20), 1, 1};
                 xcb_poly_fill_rectangle(own.xcb(), window, context, 1, &dot);
             }
         }},
    };
    for (const auto& [what, step] : floods) {
        SCOPED_TRACE(what);
        {
            const HostileClient hostile(server, 60, step);
            expectAlive();
            printCost(what);
        }
        expectAlive();
    }
}

} // namespace
} // namespace mirrolet
