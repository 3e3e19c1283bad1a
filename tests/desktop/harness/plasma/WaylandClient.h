#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

struct wl_display;
struct wl_interface;
struct wl_registry;

namespace mirrolet::harness {

class PlasmaSession;

/// Connects the test to the compositor. The constructor throws HarnessError if it cannot connect.
class WaylandClient {
  public:
    explicit WaylandClient(const PlasmaSession& session);
    ~WaylandClient();
    WaylandClient(const WaylandClient&) = delete;
    WaylandClient& operator=(const WaylandClient&) = delete;

    /// Returns whether the compositor offers this process a global of this type. A global is an object
    /// through which a client uses a part of the compositor.
    [[nodiscard]] bool offers(const wl_interface& type) const;
    /// Binds the global of this type in this version. Throws HarnessError if the compositor does not offer
    /// it.
    template <typename T> T* bind(const wl_interface& type, std::uint32_t version) const {
        return static_cast<T*>(bindGlobal(type, version));
    }
    /// Waits until the compositor has handled all requests of this connection, and handles its events.
    void sync() const;

  private:
    [[nodiscard]] void* bindGlobal(const wl_interface& type, std::uint32_t version) const;

    wl_display* display;
    wl_registry* registry;
    std::map<std::string, std::pair<std::uint32_t, std::uint32_t>> globals; ///< Name and version.
};

} // namespace mirrolet::harness
