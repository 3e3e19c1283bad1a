#include "platform/desktop/x11/mirror/ScalePlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

TEST(ScalePlanTest, ReadsEveryPixelInItsPlaceAtEverySize) {
    for (int from = 1; from <= 3000; from += from < 300 ? 1 : 97) {
        for (const int to : {1, 50, 100, 101, 320, 2000}) {
            double scale = 1;
            int pixels = from;
            for (const auto& step : planAxis(from, to)) {
                EXPECT_LE(step.scale, 2) << "skips pixels";
                EXPECT_LE(step.pixels * step.scale, pixels + 1) << "reads pixels that the step before lacks";
                scale *= step.scale;
                pixels = step.pixels;
            }
            ASSERT_EQ(pixels, to) << from;
            ASSERT_NEAR(scale * to, from, 1e-6) << from << " to " << to << " ends at another place";
        }
    }
}

TEST(ScalePlanTest, ChangesAtTheMeasuredRatios) {
    struct Row {
        int from, to;
        std::vector<AxisStep> steps;
    };
    const Row rows[] = {
        {100, 100, {{100, 1}}},
        {100, 200, {{200, 0.5}}},
        {150, 100, {{100, 1.5}}},
        {151, 100, {{200, 0.755}, {100, 2}}},
        {200, 100, {{100, 2}}},
        {330, 100, {{200, 1.65}, {100, 2}}},
        {331, 100, {{166, 2}, {200, 0.8275}, {100, 2}}}, // The picture covers only half of the 166th pixel.
        {400, 100, {{200, 2}, {100, 2}}},
        {650, 100, {{325, 2}, {200, 1.625}, {100, 2}}},
        {651, 100, {{400, 1.6275}, {200, 2}, {100, 2}}},
        {680, 100, {{400, 1.7}, {200, 2}, {100, 2}}},
        {681, 100, {{341, 2}, {400, 0.85125}, {200, 2}, {100, 2}}},
        {1361, 100, {{681, 2}, {341, 2}, {400, 0.850625}, {200, 2}, {100, 2}}},
        {32000, 20000, {{20000, 1.6}}}, // Twice as many pixels would be more than a pixmap holds.
    };
    for (const auto& row : rows)
        EXPECT_EQ(planAxis(row.from, row.to), row.steps) << row.from << " to " << row.to;
}

TEST(ScalePlanTest, LetsTheAxisWithFewerStepsReachItsTargetFirst) {
    const std::vector<ScaleStep> steps = planScaling({400, 150}, {100, 100});
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].x, (AxisStep{200, 2}));
    EXPECT_EQ(steps[0].y, (AxisStep{100, 1.5}));
    EXPECT_EQ(steps[1].x, (AxisStep{100, 2}));
    EXPECT_EQ(steps[1].y, (AxisStep{100, 1}));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
