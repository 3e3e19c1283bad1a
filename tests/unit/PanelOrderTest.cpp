#include "platform/desktop/x11/panel/PanelOrder.h"

#include "platform/desktop/x11/panel/RaiseLimit.h"
#include "platform/desktop/x11/panel/SiblingsBelow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace mirrolet::platform::desktop::x11 {
namespace {

using testing::ElementsAre;

// In these tests a letter stands for a window. M is a mirror, P is a prompt, and m and p are their shadows. A
// word stands for a stacking order, from bottom to top.
constexpr int mirrorLevel = 3;
constexpr int promptLevel = 8;

PanelOrder::Windows windows(const std::string& word) {
    return {word.begin(), word.end()};
}

/// Makes the moves that `panels` requests for the windows in `order`. Returns the new order, followed by the
/// number of moves.
std::string afterMoves(const PanelOrder& panels, std::string order, WindowNumber opponent) {
    const auto moves = panels.moves(windows(order), opponent ? std::optional(opponent) : std::nullopt);
    for (const auto& [window, place, sibling] : moves) {
        std::erase(order, static_cast<char>(window));
        const auto at = order.find(static_cast<char>(sibling));
        order.insert(at + (place == PanelOrder::Place::above ? 1 : 0), 1, static_cast<char>(window));
    }
    return order + std::to_string(moves.size());
}

TEST(PanelOrderTest, PutsPanelsAboveTheOpponentByLevelWithTheFewestMoves) {
    PanelOrder panels;
    EXPECT_TRUE(panels.empty());
    panels.show('P', promptLevel);
    panels.show('M', mirrorLevel);
    struct Row {
        const char* order;
        const char* above;
        char opponent; // The window that the panels have to get above, or 0 for none.
        const char* after;
    };
    for (const Row& row : {
             Row{"abMP", "", 0, "abMP0"},
             Row{"aMPb", "b", 'b', "abMP2"},
             Row{"aMbP", "b", 'b', "abMP1"},
             Row{"MPab", "ab", 'a', "aMPb2"}, // b is a menu and may stay above.
             Row{"aPM", "", 0, "aMP1"},
             Row{"PaMb", "ab", 'b', "abMP2"},
             Row{"aPb", "b", 'b', "abP1"}, // The window M is gone.
             Row{"ab", "", 0, "ab0"},
         }) {
        EXPECT_EQ(panels.windowsAbove(windows(row.order)), windows(row.above)) << row.order;
        EXPECT_EQ(afterMoves(panels, row.order, row.opponent), row.after) << row.order;
    }
}

TEST(PanelOrderTest, FollowsLevelsAndShadows) {
    PanelOrder panels;
    panels.show('M', mirrorLevel);
    panels.show('N', mirrorLevel);
    EXPECT_EQ(afterMoves(panels, "NM", 0), "MN1") << "the last shown is in front";
    EXPECT_TRUE(panels.setLevel('M', promptLevel));
    EXPECT_EQ(afterMoves(panels, "MN", 0), "NM1");
    panels.setShadow('M', 'm');
    EXPECT_EQ(afterMoves(panels, "mNMa", 'a'), "aNmM3");
    EXPECT_EQ(afterMoves(panels, "NmM", 0), "NmM0");
    panels.setShadow('M', 0);
    EXPECT_EQ(afterMoves(panels, "mNM", 0), "mNM0");
    EXPECT_TRUE(panels.hide('M'));
    EXPECT_FALSE(panels.hide('M'));
    EXPECT_FALSE(panels.setLevel('M', mirrorLevel)) << "that would show it";
    EXPECT_EQ(afterMoves(panels, "MNa", 'a'), "MaN1");
}

TEST(PanelOrderTestOfRaises, LetsAWindowThatAnswersEveryRaiseWinUntilTheSecondIsOver) {
    RaiseLimit limit;
    const RaiseLimit::Clock::time_point start(std::chrono::hours(1));
    for (int raise = 0; raise < RaiseLimit::mostRaisesASecond; ++raise)
        EXPECT_EQ(limit.topmostAllowed({'a', 'b'}, start), 'b');
    EXPECT_EQ(limit.topmostAllowed({'a', 'b'}, start + std::chrono::seconds(1)), 'a') << "the next one below";
    EXPECT_EQ(limit.topmostAllowed({'b'}, start + std::chrono::seconds(1)), std::nullopt);
    EXPECT_EQ(limit.topmostAllowed({'b'}, start + std::chrono::milliseconds(1001)), 'b');
    EXPECT_EQ(limit.topmostAllowed({}, start), std::nullopt);
}

TEST(PanelOrderTestOfSiblings, TellsANewPlaceFromAMoveOnTheScreen) {
    SiblingsBelow siblings;
    EXPECT_TRUE(siblings.note('b', 'a'));
    EXPECT_FALSE(siblings.note('b', 'a'));
    EXPECT_TRUE(siblings.note('c', 'a')) << "between the two";
    EXPECT_TRUE(siblings.note('b', 'a')) << "c has gone up again, which nobody reported";
    siblings.forget('b');
    EXPECT_TRUE(siblings.note('b', 'a'));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
