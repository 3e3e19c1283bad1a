#include "platform/foundation/PropertyList.h"

#include <cmath>
#include <limits>

namespace mirrolet::platform {

namespace {

/// Returns the value as a 64-bit integer. Returns none if the value is not a whole number or is too large.
std::optional<std::int64_t> wholeNumber(const PropertyList::Storage& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return *integer;
    const auto* real = std::get_if<double>(&value);
    // A double up to this limit fits into a 64-bit integer, so the cast below is defined. NaN is refused,
    // because comparing with NaN is false.
    constexpr double limit = 9.0e18;
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
