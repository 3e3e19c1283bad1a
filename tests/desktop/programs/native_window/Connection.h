#pragma once

#include <cstdint>
#include <wayland-client.h>

struct xdg_wm_base;
struct zxdg_decoration_manager_v1;

/// Connects to the compositor, and binds the globals (the compositor's interfaces) that a window needs. Ends
/// the program if a needed global is missing.
class Connection {
  public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    wl_display* display = nullptr;
    wl_compositor* compositor = nullptr;
    wl_shm* memory = nullptr;
    wl_seat* seat = nullptr;
    xdg_wm_base* shell = nullptr;
    zxdg_decoration_manager_v1* decorations = nullptr; ///< May stay nullptr.

  private:
    void bind(wl_registry* registry, std::uint32_t name, const char* interface);
};
