#pragma once

#include "tests/desktop/harness/Picture.h"
#include "tests/desktop/harness/XClient.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mirrolet::harness {

/// In pixels of the root window.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Box&) const = default;
};

/// Asks the server and the window manager about windows. The answers for a destroyed window are empty.
class WindowFacts {
  public:
    explicit WindowFacts(XClient& client) : client(client) {}

    [[nodiscard]] bool exists(xcb_window_t window) const;
    [[nodiscard]] bool viewable(xcb_window_t window) const;
    [[nodiscard]] bool overrideRedirect(xcb_window_t window) const;
    /// The window's place on the root window, without its border.
    [[nodiscard]] Box box(xcb_window_t window) const;
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const std::string& property) const;
    [[nodiscard]] std::string text(xcb_window_t window, const std::string& property) const;
    /// The names of the atoms in a property such as "_NET_WM_STATE".
    [[nodiscard]] std::vector<std::string> atomNames(xcb_window_t window, const std::string& property) const;
    [[nodiscard]] bool hasState(xcb_window_t window, const std::string& state) const;

    /// The window with the focus, as the server says. May be XCB_NONE or 1 (pointer root).
    [[nodiscard]] xcb_window_t focus() const;
    /// The active window, as the window manager says.
    [[nodiscard]] xcb_window_t active() const;
    [[nodiscard]] std::vector<xcb_window_t> clientList() const {
        return numbers(client.root(), "_NET_CLIENT_LIST");
    }
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window) const;
    /// The root's child that holds the window: the window itself, or its window manager's frame.
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;
    /// Whether the first window is stacked above the second. False if either is destroyed.
    [[nodiscard]] bool isAbove(xcb_window_t first, xcb_window_t second) const;
    /// The process that made the window, as the server says. 0 if the server does not know.
    [[nodiscard]] pid_t process(xcb_window_t window) const;
    /// The viewable top-level windows of a process, back to front.
    [[nodiscard]] std::vector<xcb_window_t> windowsOf(pid_t process) const;

    /// The pixels on the screen.
    [[nodiscard]] Picture screenshot() const;
    [[nodiscard]] Picture screenshot(const Box& box) const;
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return screenshot({x, y, 1, 1}).at(0, 0); }

    [[nodiscard]] XClient& connection() const { return client; }

  private:
    [[nodiscard]] std::vector<std::uint8_t> bytes(xcb_window_t window, const std::string& property) const;
    void collect(xcb_window_t window, pid_t process, int depth, std::vector<xcb_window_t>& found) const;

    XClient& client;
};

} // namespace mirrolet::harness
