#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/wayland/keyboard/SeatKeyboard.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// Registers hot keys with KWin (org.kde.kglobalaccel) in a Plasma session. KWin identifies a key by the
/// symbol that the key types. So a hot key is registered with the symbol that its key types in each of the
/// user's layouts.
class PlasmaHotKeys final : public HotKeys {
  public:
    /// Must be called before the keyboard's connection starts. The object must be destroyed before the
    /// keyboard and after the connection has ended. `isDown` returns whether a key (evdev code) is down. It
    /// knows only the key events that this program's windows have received. It is called on the session bus's
    /// thread.
    PlasmaHotKeys(SeatKeyboard& keyboard, std::function<bool(std::uint32_t)> isDown);
    ~PlasmaHotKeys() override;
    PlasmaHotKeys(const PlasmaHotKeys&) = delete;
    PlasmaHotKeys& operator=(const PlasmaHotKeys&) = delete;

    void setPressed(std::function<void(std::uint32_t grab)> handler) override;
    GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) override;
    void setTitle(std::uint32_t number, const std::string& title) override;
    void release(std::uint32_t number) override;
    void suspend(bool suspended) override;
    std::string keyLabel(std::uint32_t evdevCode) override;

  private:
    struct State;

    void follow();

    SeatKeyboard& keyboard;
    bool follows = false;               ///< Used on the main thread.
    const std::shared_ptr<State> state; ///< Used on the session bus's thread.
};

} // namespace mirrolet::platform::desktop::wayland
