#pragma once

#include "platform/desktop/wayland/ext/Toplevel.h"
#include "platform/desktop/wayland/ext/ToplevelPairs.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Holds what is known of the windows of a session with the standard protocols. Toplevels updates the model
/// at each event of the compositor, and any thread may read it.
class ToplevelModel {
  public:
    /// Adds a window, or changes what the list of windows tells of it.
    void publish(const ListedToplevel& window);
    void remove(WindowNumber number);
    /// Adds an entry of the list that has the states, or changes it.
    void publish(const ManagedToplevel& window);
    void removeManaged(std::uint32_t id);

    /// Returns all windows. The window that became active last comes first. Windows that never were active
    /// come last, the newest first. The protocols do not tell the stacking order.
    [[nodiscard]] std::vector<Toplevel> frontToBack() const;
    /// Returns the window with this number; none once the window has been closed.
    [[nodiscard]] std::optional<Toplevel> find(WindowNumber number) const;
    /// Returns the active window, or none. While a window that `isOurs` recognizes is active, returns the
    /// window that was active before it.
    [[nodiscard]] std::optional<Toplevel> active(const std::function<bool(const Toplevel&)>& isOurs) const;

  private:
    struct Ranked {
        Toplevel window;
        std::uint64_t activation = 0; ///< Higher for a window that became active later. 0 means never.
    };
    [[nodiscard]] Ranked describe(const ListedToplevel& listedWindow) const MIRROLET_REQUIRES(modelMutex);
    [[nodiscard]] std::vector<Ranked> ranked() const MIRROLET_REQUIRES(modelMutex);

    mutable Mutex modelMutex;
    // Both lists have the order in which the compositor listed the windows.
    std::vector<ListedToplevel> listed MIRROLET_GUARDED_BY(modelMutex);
    std::vector<ManagedToplevel> managed MIRROLET_GUARDED_BY(modelMutex);
    ToplevelPairs pairs MIRROLET_GUARDED_BY(modelMutex);
    /// When each managed entry became active last, by its id.
    std::map<std::uint32_t, std::uint64_t> activations MIRROLET_GUARDED_BY(modelMutex);
    std::uint64_t lastActivation MIRROLET_GUARDED_BY(modelMutex) = 0;
};

} // namespace mirrolet::platform::desktop::wayland
