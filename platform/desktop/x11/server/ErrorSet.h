#pragma once

#include <cstdint>
#include <initializer_list>

namespace mirrolet::platform::desktop::x11 {

/// Names the errors of the X server. The values up to `implementation` are the error codes of the core
/// protocol.
enum class XError : std::uint8_t {
    request = 1,
    value,
    window,
    pixmap,
    atom,
    cursor,
    font,
    match,
    drawable,
    access,
    alloc,
    colourMap,
    graphicsContext,
    idChoice,
    name,
    length,
    implementation,
    damage, ///< This and the later values are errors of extensions, whose codes differ by server.
    pictureFormat,
    picture,
    region,
    unknown,
};

/// A set of errors, built at compile time.
class ErrorSet {
  public:
    constexpr ErrorSet() = default;
    constexpr ErrorSet(std::initializer_list<XError> errors) {
        for (const auto error : errors)
            bits |= bitOf(error);
    }

    [[nodiscard]] constexpr bool holds(XError error) const { return (bits & bitOf(error)) != 0; }
    friend constexpr bool operator==(ErrorSet, ErrorSet) = default;
    constexpr ErrorSet operator|(ErrorSet other) const {
        other.bits |= bits;
        return other;
    }

  private:
    static constexpr std::uint32_t bitOf(XError error) { return 1U << static_cast<unsigned>(error); }

    std::uint32_t bits = 0;
};

/// The errors that a request causes if its window no longer exists. A window of another program, or of Qt,
/// can disappear between any two requests.
constexpr ErrorSet windowGone{XError::window, XError::drawable};
/// The errors that a request causes if its window no longer exists, or if the window's number belongs to a
/// new window already. A drawing request for the new window causes BadMatch if that window has another depth
/// or only takes input.
constexpr ErrorSet windowGoneOrReplaced = windowGone | ErrorSet{XError::match};
/// The errors that a request causes if its window no longer exists, including the errors for a damage,
/// picture or region that was made from the window. The server destroys such a resource together with the
/// window.
constexpr ErrorSet windowAndResourcesGone =
    windowGone | ErrorSet{XError::damage, XError::picture, XError::region};

} // namespace mirrolet::platform::desktop::x11
