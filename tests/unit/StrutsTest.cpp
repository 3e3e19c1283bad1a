#include "platform/desktop/x11/windows/Struts.h"

#include <gtest/gtest.h>

#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

TEST(StrutsTest, TakeFromTheMonitorsThatTheyReachIntoAndFromNoOther) {
    // The small monitor is at the left of the large one, and lower.
    const PixelSize root{1800, 800};
    const PixelRect small{0, 200, 800, 600};
    const PixelRect large{800, 0, 1000, 700};
    constexpr std::uint32_t huge = 0xffffffff;
    struct Row {
        const char* what;
        std::vector<std::uint32_t> strut;
        ReservedEdges ofSmall;
        ReservedEdges ofLarge;
    };
    for (const Row& row : {
             Row{"a bar above the large one", {0, 0, 30, 0, 0, 0, 0, 0, 800, 1799, 0, 0}, {}, {0, 30, 0, 0}},
             Row{"a bar above the small one", {0, 0, 230, 0, 0, 0, 0, 0, 0, 799, 0, 0}, {0, 30, 0, 0}, {}},
             Row{"a bar below both", {0, 0, 0, 140}, {0, 0, 0, 140}, {0, 0, 0, 40}},
             Row{"a dock at the right", {0, 50, 0, 0, 0, 0, 0, 700, 0, 0, 0, 0}, {}, {0, 0, 50, 0}},
             Row{"a dock where they meet", {850, 0, 0, 0, 0, 699, 0, 0, 0, 0, 0, 0}, {}, {50, 0, 0, 0}},
             Row{"one that takes all", {huge, huge, huge, huge}, {}, {}},
             Row{"one that ends before it begins", {0, 0, 30, 0, 0, 0, 0, 0, 900, 100, 0, 0}, {}, {}},
             Row{"one that ends nowhere", {0, 0, 0, 150, 0, 0, 0, 0, 0, 0, 800, huge}, {}, {0, 0, 0, 50}},
             Row{"too few values", {0, 0, 30}, {}, {}},
         }) {
        EXPECT_EQ(reservedBy(row.strut, small, root), row.ofSmall) << row.what;
        EXPECT_EQ(reservedBy(row.strut, large, root), row.ofLarge) << row.what;
    }
    EXPECT_EQ(reservedBy(std::vector<std::uint32_t>{0, 0, 30, 0}, {}, root), ReservedEdges{});
}

TEST(StrutsTest, YieldToTheWorkAreaOfTheOnlyMonitor) {
    const PixelSize root{1280, 800};
    const PixelRect only{0, 0, 1280, 800};
    using Area = std::vector<std::uint32_t>;
    EXPECT_EQ(outsideOf(Area{10, 20, 1200, 740}, only, root), (ReservedEdges{10, 20, 70, 40}));
    EXPECT_EQ(outsideOf(Area{10, 20, 1200, 740, 0, 0, 1, 1}, only, root), (ReservedEdges{10, 20, 70, 40}));
    EXPECT_EQ(outsideOf(Area{10, 20, 1200, 740}, {0, 0, 640, 800}, root), ReservedEdges{}) << "two monitors";
    for (const auto& wrong : {Area{}, Area{10, 20, 1200}, Area{0, 0, 0, 800}, Area{100, 0, 1280, 800}})
        EXPECT_EQ(outsideOf(wrong, only, root), ReservedEdges{});
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
