#include "platform/desktop/wayland/ext/ToplevelModel.h"

#include "platform/desktop/wayland/ext/ToplevelSizes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {
namespace {

using namespace std::chrono_literals;

// The bits in a window's states that these tests use.
constexpr std::uint32_t minimized = 1U << 1U;
constexpr std::uint32_t active = 1U << 2U;

ListedToplevel listed(WindowNumber number, std::string title, std::string application = "app") {
    return {number, std::move(title), std::move(application)};
}

ManagedToplevel managed(std::uint32_t id, std::string title, std::string application = "app",
                        std::uint32_t states = 0) {
    return {id, std::move(title), std::move(application), states};
}

std::vector<WindowNumber> numbersOf(const std::vector<Toplevel>& windows) {
    std::vector<WindowNumber> numbers;
    for (const auto& each : windows)
        numbers.push_back(each.number);
    return numbers;
}

bool isOurs(const Toplevel& window) {
    return window.applicationId == "ours";
}

WindowNumber activeIn(const ToplevelModel& model) {
    const auto found = model.active(isOurs);
    return found ? found->number : 0;
}

bool isMinimizedIn(const ToplevelModel& model, WindowNumber number) {
    return isMinimized(model.find(number).value());
}

} // namespace

TEST(AToplevelModel, JoinsBothListsByTitleAndApplication) {
    struct Row {
        const char* description;
        std::vector<ListedToplevel> windows;
        std::vector<ManagedToplevel> states;
        std::vector<WindowNumber> minimizedWindows;
    };
    const Row rows[] = {
        {"in another order",
         {listed(1, "a"), listed(2, "b")},
         {managed(1, "b", "app", minimized), managed(2, "a")},
         {2}},
        {"the same title in two applications",
         {listed(1, "a", "x"), listed(2, "a", "y")},
         {managed(1, "a", "y", minimized), managed(2, "a", "x")},
         {2}},
        {"two equal windows, in the order of the lists",
         {listed(1, "a"), listed(2, "a")},
         {managed(1, "a"), managed(2, "a", "app", minimized)},
         {2}},
        {"an X11 window, whose application only one list knows",
         {listed(1, "a", ""), listed(2, "a", "x")},
         {managed(1, "a", "x"), managed(2, "a", "y", minimized)},
         {1}},
        {"a window that the other list does not have yet",
         {listed(1, "a")},
         {managed(1, "b", "app", minimized)},
         {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        ToplevelModel model;
        for (const auto& each : row.windows)
            model.publish(each);
        for (const auto& each : row.states)
            model.publish(each);
        std::vector<WindowNumber> found;
        for (const auto& each : row.windows)
            if (isMinimizedIn(model, each.number))
                found.push_back(each.number);
        EXPECT_EQ(found, row.minimizedWindows);
    }
}

TEST(AToplevelModel, TakesTheApplicationFromTheListThatKnowsIt) {
    ToplevelModel model;
    model.publish(listed(1, "call", ""));
    EXPECT_EQ(model.find(1)->applicationId, "");
    model.publish(managed(1, "call", "Chat"));
    EXPECT_EQ(model.find(1)->applicationId, "Chat");
}

TEST(AToplevelModel, KeepsAPairWhileTheListsAreOutOfStep) {
    ToplevelModel model;
    model.publish(listed(1, "a"));
    model.publish(managed(1, "a", "app", minimized));
    model.publish(listed(1, "b"));
    EXPECT_TRUE(isMinimizedIn(model, 1)) << "The other list has the old title still.";
    model.publish(managed(1, "b", "app"));
    EXPECT_FALSE(isMinimizedIn(model, 1));
    model.removeManaged(1);
    model.publish(managed(2, "b", "app", minimized));
    EXPECT_TRUE(isMinimizedIn(model, 1)) << "The window is in the other list again.";
}

TEST(AToplevelModel, MendsAWrongPairAsSoonAsTheTitlesDiffer) {
    ToplevelModel model;
    model.publish(listed(1, "a"));
    model.publish(listed(2, "a"));
    model.publish(managed(1, "a", "app", minimized)); // This is window 2, but the tie cannot be told.
    model.publish(managed(2, "a"));
    EXPECT_TRUE(isMinimizedIn(model, 1));
    model.publish(listed(2, "b"));
    model.publish(managed(1, "b", "app", minimized));
    EXPECT_FALSE(isMinimizedIn(model, 1));
    EXPECT_TRUE(isMinimizedIn(model, 2));
}

TEST(AToplevelModel, OrdersTheWindowsByTheirLastActivation) {
    ToplevelModel model;
    for (const WindowNumber number : {1, 2, 3}) {
        model.publish(listed(number, std::to_string(number)));
        model.publish(managed(number, std::to_string(number)));
    }
    EXPECT_THAT(numbersOf(model.frontToBack()), testing::ElementsAre(3, 2, 1));
    model.publish(managed(2, "2", "app", active));
    model.publish(managed(1, "1", "app", active)); // The compositor then says that window 2 is not active.
    EXPECT_EQ(activeIn(model), 1U);
    model.publish(managed(2, "2"));
    EXPECT_THAT(numbersOf(model.frontToBack()), testing::ElementsAre(1, 2, 3));
    model.remove(1);
    EXPECT_THAT(numbersOf(model.frontToBack()), testing::ElementsAre(2, 3));
    EXPECT_EQ(activeIn(model), 0U);
    EXPECT_FALSE(model.find(1));
}

TEST(AToplevelModel, NamesTheWindowThatWasActiveBeforeOurs) {
    ToplevelModel model;
    model.publish(listed(1, "never active"));
    model.publish(listed(2, "call"));
    model.publish(listed(3, "prompt", "ours"));
    model.publish(managed(3, "prompt", "ours", active));
    EXPECT_EQ(activeIn(model), 0U);
    model.publish(managed(2, "call", "app", active));
    EXPECT_EQ(activeIn(model), 2U);
    model.publish(managed(2, "call"));
    EXPECT_EQ(activeIn(model), 2U);
}

TEST(TheSizesOfToplevels, AreMeasuredWhenAWindowIsNewOrHasChangedAndOnceAMinute) {
    ToplevelSizes sizes;
    ToplevelSizes::TimePoint now;
    std::vector<Toplevel> windows{{1, "a", "app", 0}, {2, "b", "app", 0}};
    EXPECT_THAT(sizes.due(windows, now), testing::ElementsAre(1, 2));
    sizes.measured(1, PixelSize{640, 480}, now);
    EXPECT_EQ(sizes.sizeOf(1), (PixelSize{640, 480}));
    sizes.measured(2, std::nullopt, now); // The session ended without a size.
    EXPECT_EQ(sizes.sizeOf(2), std::nullopt);

    struct Row {
        const char* description;
        std::chrono::seconds passed;
        std::function<void()> change;
        std::vector<WindowNumber> due;
    };
    const auto nothing = [] {};
    const Row rows[] = {
        {"nothing changed", 2s, nothing, {}},
        {"a title changed", 0s, [&] { windows[0].title = "c"; }, {1}},
        {"it is being measured", 2s, nothing, {}},
        {"the compositor did not answer", 3s, nothing, {1}},
        {"measured, and changed again too soon",
         1s,
         [&] {
             sizes.measured(1, PixelSize{100, 100}, now);
             windows[0].states = active;
         },
         {}},
        {"changed long enough after", 1s, nothing, {1}},
        {"a failure is tried again",
         1s,
         [&] {
             sizes.measured(1, PixelSize{100, 100}, now);
         },
         {2}},
        {"nobody said that it was resized",
         59s,
         [&] {
             sizes.measured(2, PixelSize{9, 9}, now);
         },
         {1}},
        {"it went and came back", 0s, [&] { sizes.due({}, now); }, {1, 2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        row.change();
        now += row.passed;
        EXPECT_EQ(sizes.due(windows, now), row.due);
    }
}

} // namespace mirrolet::platform::desktop::wayland
