#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::harness {

class XDisplay;

struct FreeReply {
    void operator()(void* reply) const;
};
template <typename T> using Reply = std::unique_ptr<T, FreeReply>;

/// Connects the test to the X server. The constructor throws HarnessError if it cannot connect.
class XClient {
  public:
    explicit XClient(const XDisplay& server);
    explicit XClient(const std::string& server);
    ~XClient();
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    [[nodiscard]] const std::string& display() const { return name; }
    [[nodiscard]] xcb_connection_t* xcb() const { return connection; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *defaultScreen; }
    [[nodiscard]] xcb_window_t root() const { return defaultScreen->root; }
    xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::string nameOf(xcb_atom_t atom) const;
    /// Waits until the X server has handled all requests of this connection.
    void sync();
    /// Sends a client message about `window` to the root window. Programs ask the window manager for
    /// something in this way.
    void sendToRoot(xcb_window_t window, const std::string& type, const std::vector<std::uint32_t>& data);

  private:
    std::string name;
    xcb_connection_t* connection;
    const xcb_screen_t* defaultScreen;
    std::map<std::string, xcb_atom_t> atoms;
};

} // namespace mirrolet::harness
