#pragma once

#include <string>
#include <string_view>

/// Texts of window properties, which clients write in whatever encoding, as UTF-8 that is always valid. Pure.
namespace mirrolet::platform::desktop::x11 {

/// UTF-8 as it stands, with U+FFFD for each byte that belongs to no valid character.
std::string repairedUtf8(std::string_view bytes);
std::string latin1ToUtf8(std::string_view bytes);
/// The X encoding by escape sequences: ASCII, Latin-1 and UTF-8 segments are read; the characters of any
/// other set become U+FFFD each.
std::string compoundTextToUtf8(std::string_view bytes);
/// Up to the first NUL.
std::string_view untilNul(std::string_view bytes);
/// Without the bytes of a character that was cut off at the end.
std::string_view withoutCutCharacter(std::string_view bytes);

} // namespace mirrolet::platform::desktop::x11
