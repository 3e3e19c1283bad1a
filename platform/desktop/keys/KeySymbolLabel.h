#pragma once

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop {

/// Returns the label of a key that has this symbol (an XKB keysym), in UTF-8. The label is the capital letter
/// or sign of the key, or the name of the key if the key types no character. Returns an empty label for the
/// symbol 0, which means that the key has no symbol. May be called on any thread.
[[nodiscard]] std::string keySymbolLabel(std::uint32_t symbol);

} // namespace mirrolet::platform::desktop
