#pragma once

#include "platform/desktop/wayland/keyboard/Keymap.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace mirrolet::platform::desktop::wayland {

/// Follows the keymap of the seat's keyboard. A seat is Wayland's word for the input devices of one user. The
/// compositor sends the keymap even to a client that does not have the focus.
class SeatKeyboard {
  public:
    /// To be made before the connection starts.
    explicit SeatKeyboard(WaylandConnection& connection);
    /// To be destroyed after the connection has ended.
    ~SeatKeyboard();
    SeatKeyboard(const SeatKeyboard&) = delete;
    SeatKeyboard& operator=(const SeatKeyboard&) = delete;

    /// Sets the function that is called on the connection's thread after each new keymap. To be called before
    /// the connection starts.
    void setChanged(std::function<void()> handler) { changed = std::move(handler); }
    /// Returns the current keymap. Until the compositor has sent a keymap, this is the keymap of the system's
    /// default layout, or nullptr if there is no such layout. Any thread may call this function.
    [[nodiscard]] std::shared_ptr<const Keymap> keymap() const;

  private:
    void followCapabilities(std::uint32_t capabilities);
    void read(std::uint32_t format, int descriptor, std::uint32_t size);

    wl_seat* const seat;
    wl_keyboard* keyboard = nullptr; ///< nullptr while the seat has no keyboard.
    std::function<void()> changed;

    mutable Mutex keymapMutex;
    std::shared_ptr<const Keymap> present MIRROLET_GUARDED_BY(keymapMutex);
};

} // namespace mirrolet::platform::desktop::wayland
