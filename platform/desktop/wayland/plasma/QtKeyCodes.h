#pragma once

#include "platform/desktop/wayland/keyboard/Keymap.h"

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

// Plasma's global shortcuts use Qt's numbers of keys (Qt::Key). This backend has its own table, because it
// does not link Qt.

/// Returns Qt's number of the key that types a symbol (an XKB keysym), or 0 if there is none.
[[nodiscard]] std::uint32_t qtKeyOf(std::uint32_t symbol);

/// Returns the combinations that KWin can make of these key strokes, each of them once. A combination is Qt's
/// number of a key plus modifiers (Qt::KeyboardModifier). For a key of the number pad, returns one
/// combination with Qt's keypad flag and one without.
[[nodiscard]] std::vector<std::int32_t> qtCombinationsOf(const std::vector<KeyStroke>& strokes);

} // namespace mirrolet::platform::desktop::wayland
