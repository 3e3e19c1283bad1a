#pragma once

#include "platform/foundation/GLibPointer.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop::wayland {

/// Follows which of the user's keyboard layouts is active. A compositor tells that only to the focused
/// client, but KWin also announces it on the session bus. All members except current() are used on the bus's
/// thread.
class KeyboardLayouts : public std::enable_shared_from_this<KeyboardLayouts> {
  public:
    static std::shared_ptr<KeyboardLayouts> make() {
        return std::shared_ptr<KeyboardLayouts>(new KeyboardLayouts);
    }
    ~KeyboardLayouts() { end(); }
    KeyboardLayouts(const KeyboardLayouts&) = delete;
    KeyboardLayouts& operator=(const KeyboardLayouts&) = delete;

    /// Returns the number of the active layout, counted from 0. Returns 0 while there is only one layout,
    /// because KWin reports no number then. Any thread.
    [[nodiscard]] std::uint32_t current() const { return layout; }

    /// Follows KWin through this connection to the bus from now on. nullptr means that there is no bus.
    void use(GDBusConnection* bus);
    void end();

  private:
    KeyboardLayouts() = default;
    void ask();
    static void onAnswer(GObject* source, GAsyncResult* result, gpointer data);

    std::atomic<std::uint32_t> layout = 0;
    GLibPointer<GDBusConnection> connection;
    guint nameWatch = 0;
    guint signalWatch = 0;
};

} // namespace mirrolet::platform::desktop::wayland
