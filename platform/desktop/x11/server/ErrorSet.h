#pragma once

#include <cstdint>
#include <initializer_list>

namespace mirrolet::platform::desktop::x11 {

/// The errors that requests of this program may meet. The errors up to `implementation` have the codes of the
/// core protocol.
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
    damage, ///< From here on the errors of extensions, for which each server has codes of its own.
    pictureFormat,
    picture,
    region,
    unknown,
};

/// A constant set of errors that a request is expected to meet.
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

/// Errors of a request whose window has disappeared. A window of another program, or of Qt, can disappear
/// between any two requests.
constexpr ErrorSet windowGone{XError::window, XError::drawable};
/// Errors of a request whose window has disappeared or been replaced. The number of a window that disappeared
/// can belong to a new window at once. A request that draws, or names a format, meets BadMatch if the new
/// window has another depth or takes only input.
constexpr ErrorSet windowGoneOrReplaced = windowGone | ErrorSet{XError::match};
/// Errors of a request whose window or whose resource has disappeared. The resources that were made from a
/// window disappear with the window.
constexpr ErrorSet windowAndResourcesGone =
    windowGone | ErrorSet{XError::damage, XError::picture, XError::region};

} // namespace mirrolet::platform::desktop::x11
