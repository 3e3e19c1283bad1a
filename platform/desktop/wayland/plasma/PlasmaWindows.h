#pragma once

#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <map>
#include <memory>
#include <string>

struct org_kde_plasma_window_management;

namespace mirrolet::platform::desktop::wayland {

/// Keeps a list of all windows, those of Wayland and of X11 applications. The compositor reports each change
/// (org_kde_plasma_window_management), so reading the list costs no request.
class PlasmaWindows {
  public:
    /// To be made before the connection starts.
    explicit PlasmaWindows(WaylandConnection& connection);
    /// To be destroyed after the connection has ended.
    ~PlasmaWindows();
    PlasmaWindows(const PlasmaWindows&) = delete;
    PlasmaWindows& operator=(const PlasmaWindows&) = delete;

    /// Any thread may read the model.
    [[nodiscard]] const PlasmaWindowModel& model() const { return theModel; }

  private:
    class Window;

    void add(const char* uuid);
    void remove(const Window& window);
    void askForStackingOrder();

    org_kde_plasma_window_management* const management;
    std::map<std::string, std::unique_ptr<Window>> proxies; ///< Used by the connection's thread only.
    WindowNumber lastNumber = 0;                            ///< Used by the connection's thread only.
    /// Contains a window once the compositor has described the whole window.
    PlasmaWindowModel theModel;
};

} // namespace mirrolet::platform::desktop::wayland
