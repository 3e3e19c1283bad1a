// Hostile clients beside the real program. The mirror stays alive. The cost is only printed, because a figure
// from a loaded machine proves nothing.

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

/// Repeats one step, on a connection and a thread of its own, until the destructor ends the thread.
class HostileClient {
  public:
    /// Calls `step` with the client and the number of the round, `perSecond` times a second.
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
    /// Starts no window manager, because a window manager would cost more than the program.
    HostileClientTest() : EndToEndTest(WindowManagerKind::none) {}

    /// Mirrors a detected call. The program reads the window list ten times a second meanwhile.
    void detect(const std::string& defaults = {}) {
        start(defaults);
        call = showCall();
        awaitPrompt();
        keyboard.stroke({key::returnKey});
        panel = awaitPanel();
        awaitColour(panel, blue);
    }

    /// Mirrors a window by the shortcut, even one that is no call.
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
            call->tell("colour " + colourName(colour));
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

TEST_F(HostileClientTest, AMirrorOfAWindowWithATitleOfAMegabyteStaysAlive) {
    detect();
    setTitle(client, call->window(), std::string(1'000'000, 'x').append(" video call"));
    expectAlive();
    const HostileClient hostile(server, 60, [window = call->window()](XClient& own, unsigned round) {
        setTitle(own, window, std::string(1'000'000, static_cast<char>('a' + round % 26)));
    });
    expectAlive();
    printCost("a new title of a megabyte, 60 times a second");
}

TEST_F(HostileClientTest, AMirrorOfAWindowAmongThousandsStaysAlive) {
    const char* wanted = std::getenv("MIRROLET_MANY_WINDOWS");
    const int count = wanted == nullptr ? 10000 : std::atoi(wanted);
    // A run by hand, with MIRROLET_MANY_WINDOWS set, uses the default poll interval.
    detect(wanted == nullptr ? "" : R"("pollInterval": 2)");
    for (int i = 0; i < count; ++i) {
        const auto window = xcb_generate_id(client.xcb());
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 900, 10, 200, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        // Puts each window below the windows before it, fully obscured, so that the server maps ten thousand
        // fast.
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

TEST_F(HostileClientTest, AMirrorOfAWindowThatIsResizedOnEveryFrameStaysAlive) {
    detect();
    {
        const HostileClient hostile(server, 60, [window = call->window()](XClient& own, unsigned round) {
            resize(own, window, 400 + round % 2 * 100, 400 + round % 2 * 100);
        });
        expectAlive();
        printCost("resized and painted 60 times a second");
    }
    expectAlive();
}

TEST_F(HostileClientTest, AMirrorOfAWindowWhosePropertiesAndPicturesFloodStaysAlive) {
    detect();
    const std::pair<const char*, std::function<void(XClient&, unsigned)>> floods[] = {
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
             for (unsigned i = 0; i < 1000; ++i) { // Left of the middle, where the test reads the colour.
                 const xcb_rectangle_t dot{static_cast<std::int16_t>((round * 7 + i) % 100),
                                           static_cast<std::int16_t>(i * 13 % 400), 1, 1};
                 xcb_poly_fill_rectangle(own.xcb(), window, context, 1, &dot);
             }
         }},
    };
    for (const auto& [what, step] : floods) {
        SCOPED_TRACE(what);
        const HostileClient hostile(server, 60, step);
        expectAlive();
        printCost(what);
    }
}

} // namespace
} // namespace mirrolet
