#pragma once

#include <cstdint>
#include <initializer_list>

namespace mirrolet::platform::desktop::x11 {

/// The errors of the server that requests of ours may meet. The first ones have the core protocol's codes.
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
    damage, ///< The rest are those of extensions, whose codes each server gives out anew.
    pictureFormat,
    picture,
    region,
    unknown,
};

/// Errors that a request is expected to meet. Constant.
class ErrorSet {
  public:
    constexpr ErrorSet() = default;
    constexpr ErrorSet(std::initializer_list<XError> errors) {
        for (const auto error : errors)
            bits |= bitOf(error);
    }

    [[nodiscard]] constexpr bool holds(XError error) const { return (bits & bitOf(error)) != 0; }
    constexpr ErrorSet operator|(ErrorSet other) const {
        other.bits |= bits;
        return other;
    }

  private:
    static constexpr std::uint32_t bitOf(XError error) { return 1U << static_cast<unsigned>(error); }

    std::uint32_t bits = 0;
};

/// A window of another program, or of the toolkit, can disappear between any two requests.
constexpr ErrorSet windowGone{XError::window, XError::drawable};
/// With the window go the resources that were made from it.
constexpr ErrorSet windowAndResourcesGone =
    windowGone | ErrorSet{XError::damage, XError::picture, XError::region};

} // namespace mirrolet::platform::desktop::x11
