#include "platform/foundation/PropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace mirrolet::platform {
namespace {

struct Row {
    const char* what;
    PropertyList value;
    std::optional<bool> asBool;
    std::optional<std::int32_t> asInt32;
    std::optional<std::uint32_t> asUInt32;
    std::optional<double> asDouble;
};

TEST(PropertyListTest, GivesAValueOnlyWhereItFits) {
    const auto none = std::nullopt;
    const Row rows[] = {
        {"null", {}, none, none, none, none},
        {"true", true, true, none, none, none},
        {"one", 1, true, 1, 1, 1.0},
        {"zero as a double", 0.0, false, 0, 0, 0.0},
        {"two", 2, none, 2, 2, 2.0},
        {"minus one", -1, none, -1, none, -1.0},
        {"a fraction", 0.5, none, none, none, 0.5},
        {"highest unsigned", 4294967295u, none, none, 4294967295u, 4294967295.0},
        {"beyond unsigned", std::int64_t{4294967296}, none, none, none, 4294967296.0},
        {"beyond any integer", 1e300, none, none, none, 1e300},
        {"no number", std::nan(""), none, none, none, none},
        {"infinite", std::numeric_limits<double>::infinity(), none, none, none, none},
        {"a number in a string", "1", none, none, none, none},
        {"an array", PropertyList::Array{1}, none, none, none, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(row.value.asBool(), row.asBool);
        EXPECT_EQ(row.value.asInt32(), row.asInt32);
        EXPECT_EQ(row.value.asUInt32(), row.asUInt32);
        EXPECT_EQ(row.value.asDouble(), row.asDouble);
    }
}

} // namespace
} // namespace mirrolet::platform
