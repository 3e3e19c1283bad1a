#pragma once

#include "tests/desktop/harness/Sandbox.h"
#include "tests/desktop/harness/ext/ScriptedWindow.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct wl_client;
struct wl_display;
struct wl_event_source;

namespace mirrolet::harness {

/// Plays a compositor that shows its windows to other clients by the standard protocols, and does what a test
/// tells it to. Has no screen. Runs on a thread of its own. The functions may be called on any other thread,
/// and return when the compositor has sent its events.
class ScriptedCompositor {
  public:
    static constexpr std::uint32_t minimized = 1U << 1U; ///< A window's state.
    static constexpr std::uint32_t activated = 1U << 2U; ///< A window's state.
    enum class Lists { both, ext, wlr };
    enum class First { closed, stopped };
    enum class Resize { announceFirst, failFirst };
    struct Options {
        bool tellsStates = true; ///< Whether there is a wlr list.
    };
    struct Window {
        std::string title = "Video call";
        std::string application = "WhatsApp";
        int width = 400;
        int height = 400;
        bool hidesApplication = false; ///< Whether the ext list lacks the application.
        std::uint32_t states = 0;
        std::vector<std::uint32_t> formats = {0, 1}; ///< Of wl_shm.
    };

    ScriptedCompositor() : ScriptedCompositor(Options{}) {}
    explicit ScriptedCompositor(const Options& options);
    ~ScriptedCompositor();
    ScriptedCompositor(const ScriptedCompositor&) = delete;
    ScriptedCompositor& operator=(const ScriptedCompositor&) = delete;

    /// Returns the absolute path of the socket, for WAYLAND_DISPLAY.
    [[nodiscard]] std::string socket() const { return sandbox.folder() / "wayland-test"; }

    /// Opens a black window. Returns its index, which the other functions take.
    std::size_t open(const Window& window);
    void setTitle(std::size_t window, const std::string& title, Lists lists = Lists::both);
    void setStates(std::size_t window, std::uint32_t states);
    /// Fills a part of the window. `colour` is 0xRRGGBB.
    void paint(std::size_t window, const platform::desktop::PixelRect& part, std::uint32_t colour);
    /// Gives the window another size, in one colour. A pending frame fails before or after the new
    /// constraints are announced.
    void resize(std::size_t window, int width, int height, std::uint32_t colour,
                Resize order = Resize::announceFirst);
    /// Makes the next frames fail, each with one of these reasons. Begins with a frame that is pending.
    void failFrames(std::size_t window, const std::vector<std::uint32_t>& reasons);
    /// Stops the window's sessions. With `failing`, a pending frame fails first.
    void stopSessions(std::size_t window, bool failing);
    void close(std::size_t window, First order = First::closed);

    [[nodiscard]] Picture picture(std::size_t window) const;
    [[nodiscard]] std::size_t openSessions(std::size_t window) const;
    [[nodiscard]] int sessionsOpened(std::size_t window) const;
    [[nodiscard]] int framesAsked(std::size_t window) const;

  private:
    void serve();
    void runTasks();
    /// Runs the task on the compositor's thread, sends the events, and waits for both.
    void run(const std::function<void()>& task) const;
    /// Returns a fact about the window. Reads it on the compositor's thread.
    template <typename Fact> [[nodiscard]] auto read(std::size_t window, Fact fact) const;
    static void bindList(wl_client* client, void* self, std::uint32_t version, std::uint32_t id);
    static void bindManager(wl_client* client, void* self, std::uint32_t version, std::uint32_t id);

    Sandbox sandbox;
    wl_display* display;
    int wakeUp;
    wl_event_source* wakeUps;
    std::thread thread;
    // The members below belong to the thread.
    std::vector<std::unique_ptr<ScriptedWindow>> windows;
    std::vector<wl_resource*> lists;
    std::vector<wl_resource*> managers;
    bool isEnding = false;

    mutable std::mutex tasksLock;
    mutable std::vector<std::function<void()>> tasks;
};

} // namespace mirrolet::harness
