#pragma once

#include "tests/desktop/programs/native_window/Connection.h"
#include "tests/desktop/programs/native_window/Scene.h"
#include "tests/desktop/programs/native_window/SharedBuffer.h"

#include <array>
#include <memory>
#include <string>

struct xdg_popup;
struct xdg_surface;
struct xdg_toplevel;

/// Shows a top-level window. The window keeps its own size, except while the compositor makes it full screen
/// or maximizes it.
class Window {
  public:
    struct Options {
        std::string title = {};
        std::string applicationId = {};
        int width = 640;
        int height = 400;
        bool decorated = true; ///< Asks the compositor for a title bar.
        bool fullScreen = false;
    };

    Window(Connection& connection, Scene& scene, const Options& options);

    [[nodiscard]] bool isConfigured() const { return configured; }
    [[nodiscard]] bool isClosed() const { return closed; }
    void setTitle(const std::string& title);
    void setApplicationId(const std::string& id);
    void resize(int width, int height);
    void setFullScreen(bool wanted);
    void minimize();
    /// Paints the scene. Paints nothing while the compositor holds all buffers.
    void paint();
    /// Paints the scene if the last paint() found no buffer.
    void paintMissed();
    /// Opens a menu of one colour. The menu extends beyond the right edge of the window.
    void openMenu();
    void closeMenu();

  private:
    void listenToKeys();
    void configure(std::uint32_t serial);
    void configureTop(int width, int height, const wl_array* states);
    SharedBuffer* freeBuffer();

    Connection& connection;
    Scene& scene;
    wl_surface* surface;
    xdg_surface* role;
    xdg_toplevel* top;
    wl_surface* menuSurface = nullptr;
    xdg_surface* menuRole = nullptr;
    xdg_popup* menu = nullptr;
    std::unique_ptr<SharedBuffer> menuBuffer;
    int ownWidth, ownHeight, width, height;
    bool configured = false;
    bool closed = false;
    bool missed = false;
    std::array<std::unique_ptr<SharedBuffer>, 3> buffers;
};
