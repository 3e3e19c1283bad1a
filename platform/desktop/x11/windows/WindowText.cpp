#include "platform/desktop/x11/windows/WindowText.h"

#include <algorithm>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr char escape = '\x1b';

unsigned byteAt(std::string_view bytes, std::size_t index) {
    return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0;
}

/// Returns the number of bytes of a UTF-8 character that begins with this byte. Returns 0 if no character
/// begins with it.
std::size_t announcedLength(unsigned first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/// Returns whether a UTF-8 character can begin with these two bytes. Some first bytes restrict the second
/// byte, because UTF-8 forbids surrogates, numbers above U+10FFFF, and characters in more bytes than
/// necessary.
bool validSecond(unsigned first, unsigned second) {
    const unsigned lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

std::size_t characterLength(std::string_view bytes, std::size_t at) {
    const auto first = byteAt(bytes, at);
    const auto length = announcedLength(first);
    if (length <= 1)
        return length;
    if (!validSecond(first, byteAt(bytes, at + 1)))
        return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if ((byteAt(bytes, at + i) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

void appendLatin1(std::string& text, unsigned byte) {
    if (byte < 0x80) {
        text += static_cast<char>(byte);
        return;
    }
    text += static_cast<char>(0xC0 | (byte >> 6));
    text += static_cast<char>(0x80 | (byte & 0x3F));
}

/// Reads compound text and keeps track of the character sets that the escape sequences have chosen.
class CompoundText {
  public:
    explicit CompoundText(std::string_view text) : rest(text) {}

    std::string decoded() {
        while (!rest.empty()) {
            if (rest.front() == escape)
                takeEscape();
            else
                takeCharacter();
        }
        return std::move(text);
    }

  private:
    void takeEscape() {
        if (rest.starts_with("\x1b%G"))
            return takeUtf8();
        if (rest.starts_with("\x1b%/"))
            return takeExtendedSegment();
        // An escape sequence is ESC, any number of intermediate bytes, and one final byte.
        std::size_t end = 1;
        while (byteAt(rest, end) >= 0x20 && byteAt(rest, end) <= 0x2F)
            ++end;
        designate(rest.substr(1, end - 1), static_cast<char>(byteAt(rest, end)));
        skip(end + 1);
    }

    void designate(std::string_view intermediates, char set) {
        const std::size_t bytes = intermediates.starts_with("$") ? 2 : 1;
        const char target = intermediates.empty() ? '\0' : intermediates.back();
        if (target == '(' || intermediates == "$") {
            left = bytes == 1 && (set == 'B' || set == 'J') ? Set::known : Set::unknown;
            leftBytes = bytes;
        }
        if (target == '-' || target == ')') {
            right = target == '-' && set == 'A' ? Set::known : Set::unknown;
            rightBytes = bytes;
        }
    }

    void takeUtf8() {
        skip(3);
        const auto end = rest.find("\x1b%@");
        text += repairedUtf8(rest.substr(0, end));
        skip(end == std::string_view::npos ? rest.size() : end + 3);
    }

    /// Takes an extended segment and replaces it by U+FFFD, because its text has another encoding. The
    /// segment is ESC % / F, a length in two bytes of base 128, the name of the encoding, STX and the text.
    void takeExtendedSegment() {
        const std::size_t length = (byteAt(rest, 4) & 0x7F) * 128U + (byteAt(rest, 5) & 0x7F);
        skip(6 + length);
        text += replacement;
    }

    void takeCharacter() {
        const auto byte = byteAt(rest, 0);
        const bool isRight = byte >= 0x80;
        const bool control = (byte & 0x7F) < 0x20;
        if (control || (isRight ? right : left) == Set::known) {
            appendLatin1(text, byte);
            return skip(1);
        }
        text += replacement;
        skip(isRight ? rightBytes : leftBytes);
    }

    void skip(std::size_t count) { rest.remove_prefix(std::min(count, rest.size())); }

    enum class Set { known, unknown };
    std::string_view rest;
    std::string text;
    Set left = Set::known;
    Set right = Set::known;
    std::size_t leftBytes = 1;
    std::size_t rightBytes = 1;
};

} // namespace

std::string repairedUtf8(std::string_view bytes) {
    std::string text;
    // The start of the valid characters that have not been copied yet. They are copied together, because most
    // texts have only valid characters.
    std::size_t soundFrom = 0;
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (const auto length = characterLength(bytes, at); length > 0) {
            at += length;
            continue;
        }
        text.append(bytes.substr(soundFrom, at - soundFrom)).append(replacement);
        soundFrom = ++at;
    }
    return text.append(bytes.substr(soundFrom));
}

std::string latin1ToUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        appendLatin1(text, byteAt(bytes, i));
    return text;
}

std::string compoundTextToUtf8(std::string_view bytes) {
    return CompoundText(bytes).decoded();
}

std::string_view untilNul(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

std::string_view withoutCutCharacter(std::string_view bytes) {
    for (std::size_t back = 1; back <= std::min<std::size_t>(3, bytes.size()); ++back) {
        const auto byte = byteAt(bytes, bytes.size() - back);
        if (announcedLength(byte) > back)
            return bytes.substr(0, bytes.size() - back);
        if ((byte & 0xC0) != 0x80)
            break;
    }
    return bytes;
}

} // namespace mirrolet::platform::desktop::x11
