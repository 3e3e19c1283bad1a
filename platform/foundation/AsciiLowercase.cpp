#include "platform/foundation/AsciiLowercase.h"

#include <algorithm>

namespace mirrolet::platform {

std::string asciiLowercase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
    });
    return lower;
}

} // namespace mirrolet::platform
