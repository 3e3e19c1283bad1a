#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace mirrolet::platform {

/// One typed value. Window-list entries, user defaults and bundle information are made of such values. Values
/// can be copied freely between threads.
class PropertyList {
  public:
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList>;

    PropertyList() = default;
    PropertyList(bool value) : value(value) {}
    PropertyList(int value) : value(std::int64_t{value}) {}
    PropertyList(std::int64_t value) : value(value) {}
    PropertyList(std::uint32_t value) : value(std::int64_t{value}) {}
    PropertyList(double value) : value(value) {}
    PropertyList(const char* value) : value(std::string(value)) {}
    PropertyList(std::string value) : value(std::move(value)) {}
    PropertyList(Array value) : value(std::move(value)) {}
    PropertyList(Dictionary value) : value(std::move(value)) {}

    // The conversions are strict. A value that does not fit gives none.
    /// Converts a boolean, or a number that is exactly 0 or 1.
    [[nodiscard]] std::optional<bool> asBool() const;
    /// Converts a whole number that fits the type. Never converts a string or a boolean.
    [[nodiscard]] std::optional<std::int32_t> asInt32() const;
    [[nodiscard]] std::optional<std::uint32_t> asUInt32() const;
    /// Converts any finite number. Never converts a string or a boolean.
    [[nodiscard]] std::optional<double> asDouble() const;
    // These functions return nullptr if the value has another type. The pointers are valid until this value
    // changes.
    [[nodiscard]] const std::string* asString() const { return std::get_if<std::string>(&value); }
    [[nodiscard]] const Array* asArray() const { return std::get_if<Array>(&value); }
    [[nodiscard]] const Dictionary* asDictionary() const { return std::get_if<Dictionary>(&value); }

    using Storage = std::variant<std::monostate, bool, std::int64_t, double, std::string, Array, Dictionary>;
    [[nodiscard]] const Storage& storage() const { return value; }

    friend bool operator==(const PropertyList&, const PropertyList&) = default;

  private:
    Storage value;
};

} // namespace mirrolet::platform
