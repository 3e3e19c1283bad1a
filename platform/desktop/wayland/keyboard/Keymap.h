#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct xkb_keymap;
struct xkb_state;

namespace mirrolet::platform::desktop::wayland {

/// The symbol and the modifiers that a compositor recognizes when a key is pressed together with modifier
/// keys.
struct KeyStroke {
    std::uint32_t symbol = 0; ///< An XKB keysym.
    /// A sum of HotKeyModifier values. A modifier that only chose the symbol is left out. For example, Shift
    /// and 1 give an exclamation mark without Shift. Shift is kept if the symbol is a letter.
    std::uint32_t modifiers = 0;

    friend bool operator==(const KeyStroke&, const KeyStroke&) = default;
};

/// Knows what each key types in each layout that the user has configured. Any thread may use an object of
/// this class.
class Keymap {
  public:
    /// Reads a keymap in XKB's text format. Returns nullptr if the text is not a keymap.
    static std::shared_ptr<const Keymap> fromText(const std::string& text);
    /// Compiles the keymap of some layouts, such as "us,ru". An empty list means the layout that the
    /// environment or the system names. Returns nullptr if there is no such layout.
    static std::shared_ptr<const Keymap> ofLayouts(const std::string& layouts);
    ~Keymap();
    Keymap(const Keymap&) = delete;
    Keymap& operator=(const Keymap&) = delete;

    /// Returns every key stroke that the compositor can recognize when a key (evdev code) is pressed together
    /// with modifier keys (HotKeyModifier values). The key stroke depends on the layout, Caps Lock and Num
    /// Lock, so every state of these is tried. Equal key strokes are returned once. Returns an empty list if
    /// the keyboard has no such key or modifier.
    [[nodiscard]] std::vector<KeyStroke> strokes(std::uint32_t evdevCode, std::uint32_t modifiers) const;
    /// Returns the label of a key (evdev code) in a layout. Layouts are counted from 0. If the key has no
    /// label in that layout, returns the label in the first layout, or else an empty text.
    [[nodiscard]] std::string label(std::uint32_t evdevCode, std::uint32_t layout) const;

  private:
    explicit Keymap(xkb_keymap* keymap);
    [[nodiscard]] std::uint32_t maskOfPlace(std::uint32_t evdevCode) const MIRROLET_REQUIRES(stateMutex);
    [[nodiscard]] std::optional<std::uint32_t> maskOf(std::uint32_t modifiers) const
        MIRROLET_REQUIRES(stateMutex);
    [[nodiscard]] KeyStroke strokeOf(xkb_state* state, std::uint32_t key) const;

    xkb_keymap* const keymap;
    mutable Mutex
        stateMutex; ///< Held while a state exists, because states change the keymap's reference count.
};

} // namespace mirrolet::platform::desktop::wayland
