#include "platform/foundation/PropertyList.h"

#include <cmath>
#include <limits>

namespace mirrolet::platform {

namespace {

/// A number that is whole and fits a 64-bit integer.
std::optional<std::int64_t> wholeNumber(const PropertyList::Storage& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return *integer;
    const auto* real = std::get_if<double>(&value);
    constexpr double limit =
        9.0e18; // Inside the range, so that the cast is defined. The comparison is false for NaN.
    if (!real || !(std::abs(*real) <= limit) || std::trunc(*real) != *real)
        return std::nullopt;
    return static_cast<std::int64_t>(*real);
}

template <class Integer> std::optional<Integer> wholeNumberIn(const PropertyList::Storage& value) {
    const auto whole = wholeNumber(value);
    if (!whole || *whole < std::numeric_limits<Integer>::min() ||
        *whole > std::numeric_limits<Integer>::max())
        return std::nullopt;
    return static_cast<Integer>(*whole);
}

} // namespace

std::optional<bool> PropertyList::asBool() const {
    if (const auto* boolean = std::get_if<bool>(&value))
        return *boolean;
    const auto whole = wholeNumber(value);
    if (whole == 0)
        return false;
    if (whole == 1)
        return true;
    return std::nullopt;
}

std::optional<std::int32_t> PropertyList::asInt32() const {
    return wholeNumberIn<std::int32_t>(value);
}

std::optional<std::uint32_t> PropertyList::asUInt32() const {
    return wholeNumberIn<std::uint32_t>(value);
}

std::optional<double> PropertyList::asDouble() const {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*integer);
    const auto* real = std::get_if<double>(&value);
    if (!real || !std::isfinite(*real))
        return std::nullopt;
    return *real;
}

} // namespace mirrolet::platform
