#pragma once

#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/plasma/WaylandClient.h"

#include <cstdint>
#include <memory>
#include <sys/types.h>
#include <vector>

struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

namespace mirrolet::harness {

/// Reads KWin's list of windows, and changes windows as a task list does. A window is identified by its
/// process.
class PlasmaWindows {
  public:
    struct Window {
        org_kde_plasma_window* object = nullptr;
        pid_t process = 0;
        Box frame = {}; ///< Includes the title bar.
        std::uint32_t state = 0;
        bool isGone = false;
    };

    explicit PlasmaWindows(const PlasmaSession& session);
    ~PlasmaWindows();
    PlasmaWindows(const PlasmaWindows&) = delete;
    PlasmaWindows& operator=(const PlasmaWindows&) = delete;

    /// Returns the first window of the process, as KWin describes it now. If there is none, `isGone` is true
    /// in the result.
    [[nodiscard]] Window find(pid_t process) const;
    [[nodiscard]] bool exists(pid_t process) const { return !find(process).isGone; }
    [[nodiscard]] bool isActive(pid_t process) const;
    [[nodiscard]] bool isMinimized(pid_t process) const;
    [[nodiscard]] Box frame(pid_t process) const { return find(process).frame; }

    /// Gives the window the focus, even if the window is minimized.
    void activate(pid_t process) const;
    void minimize(pid_t process) const;
    void close(pid_t process) const;

  private:
    void add(const char* uuid);
    void request(pid_t process, std::uint32_t flags, std::uint32_t state) const;

    WaylandClient client;
    org_kde_plasma_window_management* manager;
    std::vector<std::unique_ptr<Window>> windows;
};

} // namespace mirrolet::harness
