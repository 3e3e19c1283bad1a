#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/x11/keys/HeldKeys.h"
#include "platform/desktop/x11/keys/ModifierMap.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Implements the hot keys as passive grabs on the root window. Each hot key is grabbed by key code, so that
/// the keyboard layout does not matter. After a change of the modifier mapping, the connection's thread
/// renews the grabs.
class X11HotKeys final : public HotKeys {
  public:
    explicit X11HotKeys(X11Connection& connection);
    ~X11HotKeys() override;
    X11HotKeys(const X11HotKeys&) = delete;
    X11HotKeys& operator=(const X11HotKeys&) = delete;

    void setPressed(std::function<void(std::uint32_t grab)> handler) override;
    GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) override;
    void release(std::uint32_t number) override;
    void suspend(bool suspended) override;
    std::string keyLabel(std::uint32_t evdevCode) override;
    [[nodiscard]] bool isDown(std::uint32_t evdevCode) override;

  private:
    struct Combination {
        xcb_keycode_t key = 0;
        std::uint32_t modifiers = 0;       ///< HotKeyModifier values.
        std::optional<std::uint16_t> bits; ///< The bits to grab. None if the keyboard lacks a modifier.
        bool grabbed = false;
    };

    [[nodiscard]] GrabResult acquire(Combination& combination) MIRROLET_REQUIRES(combinationsMutex);
    void ungrab(Combination& combination) const MIRROLET_REQUIRES(combinationsMutex);
    void remove(std::uint32_t number) MIRROLET_REQUIRES(combinationsMutex);
    void reacquire(std::uint32_t number, Combination& combination) MIRROLET_REQUIRES(combinationsMutex);
    [[nodiscard]] bool heldByUs(const Combination& wanted) const MIRROLET_REQUIRES(combinationsMutex);
    [[nodiscard]] std::optional<std::uint32_t> numberOf(const xcb_key_press_event_t& event) const
        MIRROLET_REQUIRES(combinationsMutex);

    void keyPressed(const xcb_key_press_event_t& event);
    void keyReleased(const xcb_key_release_event_t& event);
    void followMapping();
    void followModifiers();

    X11Connection& connection;
    std::function<void(std::uint32_t)> pressed;

    /// This mutex stays locked while the server is asked. It is not locked while the handler `pressed` runs,
    /// because other threads would have to wait for the handler.
    Mutex combinationsMutex;
    /// The hot keys, by the number that the caller gave to grab().
    std::map<std::uint32_t, Combination> combinations MIRROLET_GUARDED_BY(combinationsMutex);
    /// The modifier bits of each modifier key. Read from the server when they are first needed.
    std::optional<ModifierMap> modifierMap MIRROLET_GUARDED_BY(combinationsMutex);
    bool isSuspended MIRROLET_GUARDED_BY(combinationsMutex) = false;
    HeldKeys heldBeforeGrab MIRROLET_GUARDED_BY(combinationsMutex);
    /// Keys that have been pressed and not yet released. A further press of such a key is auto-repeat.
    std::set<xcb_keycode_t> down MIRROLET_GUARDED_BY(combinationsMutex);
    /// The key whose release ends the server's active grab.
    xcb_keycode_t grabbedBy MIRROLET_GUARDED_BY(combinationsMutex) = 0;

    X11Connection::Subscription pressSubscription;
    X11Connection::Subscription releaseSubscription;
    X11Connection::Subscription rawReleaseSubscription;
    X11Connection::Subscription mappingSubscriptions[2];
};

} // namespace mirrolet::platform::desktop::x11
