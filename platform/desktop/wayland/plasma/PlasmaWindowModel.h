#pragma once

#include "platform/desktop/wayland/plasma/PlasmaWindow.h"
#include "platform/foundation/Mutex.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Holds what is known of the windows of a Plasma session. PlasmaWindows updates the model at each event of
/// the compositor, and any thread may read it.
class PlasmaWindowModel {
  public:
    /// Adds a window, or changes what is known of it.
    void publish(const PlasmaWindow& window);
    void remove(const std::string& uuid);
    /// Sets the stacking order, back to front. The order may contain windows that are not in the model.
    void restack(std::vector<std::string> uuids);

    /// Returns all windows that are in the stacking order, front to back.
    [[nodiscard]] std::vector<PlasmaWindow> frontToBack() const;
    /// Returns the window with this number; none once the window has been closed.
    [[nodiscard]] std::optional<PlasmaWindow> find(WindowNumber number) const;
    /// Returns the active window, or none. While a window that `isOurPanel` recognizes is active, returns the
    /// window that was active before it.
    [[nodiscard]] std::optional<PlasmaWindow>
    active(const std::function<bool(const PlasmaWindow&)>& isOurPanel) const;

  private:
    mutable Mutex modelMutex;
    std::map<std::string, PlasmaWindow> known MIRROLET_GUARDED_BY(modelMutex); ///< By uuid.
    std::vector<std::string> backToFront MIRROLET_GUARDED_BY(modelMutex);      ///< Uuids.
    /// The uuids of known windows that have been active, each once, with the most recent one at the end.
    std::vector<std::string> activated MIRROLET_GUARDED_BY(modelMutex);
};

} // namespace mirrolet::platform::desktop::wayland
