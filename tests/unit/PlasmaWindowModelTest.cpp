#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"

#include "platform/desktop/wayland/plasma/PlasmaWindowList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

namespace {

// The bits in a window's state (org_kde_plasma_window_management.state) that these tests use.
constexpr std::uint32_t active = 1U << 0U;
constexpr std::uint32_t minimized = 1U << 1U;
constexpr std::uint32_t keepAbove = 1U << 4U;
constexpr std::uint32_t keepBelow = 1U << 5U;
constexpr std::uint32_t onAllDesktops = 1U << 6U;
constexpr std::uint32_t closeable = 1U << 8U;
constexpr std::uint32_t skipTaskBar = 1U << 12U;

PlasmaWindow window(WindowNumber number, std::uint32_t state = closeable) {
    PlasmaWindow result;
    result.number = number;
    result.uuid = "{" + std::to_string(number) + "}";
    result.state = state;
    return result;
}

std::vector<WindowNumber> numbersOf(const std::vector<PlasmaWindow>& windows) {
    std::vector<WindowNumber> numbers;
    for (const auto& each : windows)
        numbers.push_back(each.number);
    return numbers;
}

bool isSecond(const PlasmaWindow& each) {
    return each.number == 2;
}

WindowNumber activeIn(const PlasmaWindowModel& model) {
    const auto found = model.active(isSecond);
    return found ? found->number : 0;
}

} // namespace

TEST(APlasmaWindow, IsOnScreenWhereTheUserSeesIt) {
    struct Row {
        const char* description;
        std::uint32_t state;
        std::vector<std::string> desktops;
        bool plain;
        bool mirrored;
    };
    const Row rows[] = {
        {"on the current desktop", closeable, {"here"}, true, true},
        {"on two desktops", closeable, {"there", "here"}, true, true},
        {"on no desktop, which means all", closeable, {}, true, true},
        {"on all desktops, and told of one", closeable | onAllDesktops, {"there"}, true, true},
        {"on another desktop", closeable, {"there"}, false, true},
        {"minimized", closeable | minimized, {"here"}, false, true},
        {"without a task but closeable", closeable | skipTaskBar, {"here"}, true, true},
        {"a dock", skipTaskBar, {}, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        auto each = window(1, row.state);
        each.desktops = {row.desktops.begin(), row.desktops.end()};
        EXPECT_EQ(isOnScreen(each, "here", false), row.plain);
        EXPECT_EQ(isOnScreen(each, "here", true), row.mirrored);
    }
}

TEST(APlasmaWindow, HasTheLayerOfItsState) {
    EXPECT_EQ(layerOf(window(1)), 0);
    EXPECT_EQ(layerOf(window(1, keepAbove)), 1);
    EXPECT_EQ(layerOf(window(1, keepBelow)), -1);
}

TEST(APlasmaWindowModel, ListsKnownWindowsFrontToBack) {
    PlasmaWindowModel model;
    model.restack({"{3}", "{1}", "{2}", "{9}"});
    for (const WindowNumber number : {1, 2, 3})
        model.publish(window(number));
    EXPECT_THAT(numbersOf(model.frontToBack()), testing::ElementsAre(2, 1, 3));
    model.remove("{1}");
    EXPECT_THAT(numbersOf(model.frontToBack()), testing::ElementsAre(2, 3));
    EXPECT_FALSE(model.find(1));
    EXPECT_TRUE(model.find(3));
}

TEST(APlasmaWindowModel, NamesTheWindowThatWasActiveBeforeOurPanel) {
    PlasmaWindowModel model;
    EXPECT_EQ(activeIn(model), 0U);
    for (const WindowNumber number : {1, 3}) {
        model.publish(window(number, active));
        EXPECT_EQ(activeIn(model), number);
        model.publish(window(number));
    }
    EXPECT_EQ(activeIn(model), 0U) << "No window is active, so none is in front.";
    model.publish(window(2, active));
    EXPECT_EQ(activeIn(model), 3U) << "Our panel is active, and window 3 was before it.";
    model.remove("{3}");
    EXPECT_EQ(activeIn(model), 1U);
    model.publish(window(2));
    model.publish(window(1, active));
    EXPECT_EQ(activeIn(model), 1U);
}

} // namespace mirrolet::platform::desktop::wayland
