#pragma once

#include <string>
#include <string_view>

/// Functions that turn texts of window properties into valid UTF-8. Clients write such texts in different
/// encodings, and not always correctly.
namespace mirrolet::platform::desktop::x11 {

/// Returns the text with U+FFFD in place of each byte that is not part of a valid UTF-8 character.
std::string repairedUtf8(std::string_view bytes);
std::string latin1ToUtf8(std::string_view bytes);
/// Reads X11 compound text, in which escape sequences choose the character set. Characters of ASCII, Latin-1
/// and UTF-8 are kept, and each character of any other set becomes U+FFFD.
std::string compoundTextToUtf8(std::string_view bytes);
/// Returns the text before the first NUL.
std::string_view untilNul(std::string_view bytes);
/// Returns the text without an incomplete character at its end.
std::string_view withoutCutCharacter(std::string_view bytes);

} // namespace mirrolet::platform::desktop::x11
