#pragma once

#include <string>
#include <string_view>

/// Turns texts of window properties into valid UTF-8. Clients write them in different encodings, right or
/// wrong. Pure.
namespace mirrolet::platform::desktop::x11 {

/// The same text with U+FFFD for each byte that belongs to no valid character of UTF-8.
std::string repairedUtf8(std::string_view bytes);
std::string latin1ToUtf8(std::string_view bytes);
/// Reads compound text, in which escape sequences choose the character set. Characters of ASCII, Latin-1 and
/// UTF-8 are kept, and each character of any other set becomes U+FFFD.
std::string compoundTextToUtf8(std::string_view bytes);
/// The text before the first NUL.
std::string_view untilNul(std::string_view bytes);
/// The text without an incomplete character at its end.
std::string_view withoutCutCharacter(std::string_view bytes);

} // namespace mirrolet::platform::desktop::x11
