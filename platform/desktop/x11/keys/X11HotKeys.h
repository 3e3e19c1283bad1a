#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/x11/keys/HeldKeys.h"
#include "platform/desktop/x11/keys/ModifierMap.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Hot keys as passive grabs on the root window. They are grabbed by key code, so that the keyboard layout
/// does not matter. A change of the modifier mapping is followed on the connection's thread.
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

  private:
    struct Combination {
        xcb_keycode_t key = 0;
        std::uint32_t modifiers = 0;       ///< HotKeyModifier values.
        std::optional<std::uint16_t> bits; ///< As grabbed. None while the keyboard has no such modifier.
        bool grabbed = false;
    };

    [[nodiscard]] GrabResult acquire(Combination& combination);
    void ungrab(Combination& combination) const;
    void remove(std::uint32_t number);
    void reacquire(std::uint32_t number, Combination& combination);
    [[nodiscard]] bool heldByUs(const Combination& wanted) const;
    [[nodiscard]] std::optional<std::uint32_t> numberOf(const xcb_key_press_event_t& event) const;

    void keyPressed(const xcb_key_press_event_t& event);
    void keyReleased(const xcb_key_release_event_t& event);
    void followMapping();
    void followModifiers();

    X11Connection& connection;
    std::function<void(std::uint32_t)> pressed;

    /// Guards the members below. Held while the server is asked, never while `pressed` runs.
    std::mutex combinationsMutex;
    std::map<std::uint32_t, Combination> combinations; ///< By the caller's number.
    std::optional<ModifierMap> modifierMap;            ///< Read when first needed.
    bool isSuspended = false;
    HeldKeys heldBeforeGrab;
    std::set<xcb_keycode_t> down; ///< Keys whose press was seen. A further press is auto-repeat.
    xcb_keycode_t grabbedBy = 0;  ///< The key whose release ends the server's active grab.

    X11Connection::Subscription pressSubscription;
    X11Connection::Subscription releaseSubscription;
    X11Connection::Subscription rawReleaseSubscription;
    X11Connection::Subscription mappingSubscriptions[2];
};

} // namespace mirrolet::platform::desktop::x11
