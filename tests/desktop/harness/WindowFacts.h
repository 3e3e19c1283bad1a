#pragma once

#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/XClient.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mirrolet::harness {

/// Holds a rectangle in pixels of the root window.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Box&) const = default;
};

/// Asks the X server and the window manager about windows. For a destroyed window the functions return empty
/// values or false.
class WindowFacts {
  public:
    explicit WindowFacts(XClient& client) : client(client) {}

    [[nodiscard]] bool exists(xcb_window_t window) const;
    [[nodiscard]] bool viewable(xcb_window_t window) const;
    [[nodiscard]] bool overrideRedirect(xcb_window_t window) const;
    /// Returns the window's rectangle, without the X border.
    [[nodiscard]] Box box(xcb_window_t window) const;
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string& property) const;
    [[nodiscard]] std::string text(xcb_window_t window, const std::string& property) const;
    /// Returns the names of the atoms in a property of the window, such as "_NET_WM_STATE".
    [[nodiscard]] std::vector<std::string> atomNames(xcb_window_t window, const std::string& property) const;
    [[nodiscard]] bool hasState(xcb_window_t window, const std::string& state) const;

    /// Returns the window that has the focus, according to the X server. The result can also be XCB_NONE or 1
    /// (XCB_INPUT_FOCUS_POINTER_ROOT).
    [[nodiscard]] xcb_window_t focus() const;
    /// Returns the active window according to the window manager.
    [[nodiscard]] xcb_window_t active() const;
    [[nodiscard]] std::vector<xcb_window_t> clientList() const {
        return numbers(client.root(), "_NET_CLIENT_LIST");
    }
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window) const;
    /// Returns the child of the root window that contains the window. That child is the window itself, or the
    /// frame window that the window manager has put around it.
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;
    /// Returns whether the first window is stacked above the second. Returns false if one of the windows is
    /// destroyed.
    [[nodiscard]] bool isAbove(xcb_window_t first, xcb_window_t second) const;
    /// Returns the process that made the window, according to the X server. Returns 0 if the server does not
    /// know the process.
    [[nodiscard]] pid_t process(xcb_window_t window) const;
    /// Returns the viewable top-level windows of a process, back to front.
    [[nodiscard]] std::vector<xcb_window_t> windowsOf(pid_t process) const;

    /// Returns the pixels of the whole screen, or of the box.
    [[nodiscard]] Picture screenshot() const;
    [[nodiscard]] Picture screenshot(const Box& box) const;
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return screenshot({x, y, 1, 1}).at(0, 0); }

    /// Returns what the window itself has drawn, wherever it lies.
    [[nodiscard]] Picture content(xcb_window_t window) const;

    [[nodiscard]] XClient& connection() const { return client; }

  private:
    [[nodiscard]] std::vector<std::uint8_t> bytes(xcb_window_t window, const std::string& property) const;
    [[nodiscard]] Picture read(xcb_drawable_t drawable, const Box& box) const;
    void collect(xcb_window_t window, pid_t process, int depth, std::vector<xcb_window_t>& found) const;

    XClient& client;
};

} // namespace mirrolet::harness
