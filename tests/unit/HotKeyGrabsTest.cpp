#include "platform/desktop/wayland/plasma/HotKeyGrabs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace mirrolet::platform::desktop::wayland {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

using Combinations = std::vector<std::int32_t>;

/// Grants key combinations to shortcuts, as KWin does. A combination that another shortcut holds is not
/// granted, but the others of the same request are. The answers are sent by answer().
class FakeService final : public ShortcutService {
  public:
    void add(const std::string& name, const std::string& title, const Combinations& combinations,
             std::function<void(Answer)> answered) override {
        titles[name] = title;
        auto& mine = held[name];
        mine.clear();
        for (const auto one : combinations)
            if (!isHeld(one))
                mine.insert(one);
        const auto answer = mine.size() == combinations.size() ? Answer::granted : Answer::taken;
        answers.emplace_back([this, answer, answered] { answered(hangs ? Answer::none : answer); });
    }
    void remove(const std::string& name) override { held.erase(name); }

    void answer() {
        for (const auto& one : std::exchange(answers, {}))
            one();
    }
    /// Forgets all shortcuts and all answers that were not sent yet, as a restarted process does.
    void restart() {
        held.clear();
        answers.clear();
    }
    [[nodiscard]] bool isHeld(std::int32_t combination) const {
        return others.contains(combination) || std::any_of(held.begin(), held.end(), [=](const auto& one) {
                   return one.second.contains(combination);
               });
    }

    std::map<std::string, std::set<std::int32_t>> held;
    std::map<std::string, std::string> titles;
    std::set<std::int32_t> others; ///< The combinations that other programs hold.
    bool hangs = false;

  private:
    std::vector<std::function<void()>> answers;
};

class HotKeyGrabsTest : public testing::Test {
  protected:
    /// Grabs a key and returns what was reported after the service's answer.
    std::vector<GrabResult> grab(std::uint32_t number, std::uint32_t code) {
        results.clear();
        grabs.grab(number, code, superModifier, [this](GrabResult result) { results.push_back(result); });
        service.answer();
        return results;
    }
    /// Returns what is logged while the service answers.
    std::string logged() {
        testing::internal::CaptureStderr();
        service.answer();
        return testing::internal::GetCapturedStderr();
    }

    static constexpr auto first = "_k_session:1";
    static constexpr auto second = "_k_session:2";

    FakeService service;
    std::map<std::uint32_t, Combinations> keymap = {{25, {'P', 1047}}, {33, {'F', 1040}}};
    std::set<std::uint32_t> down; ///< The evdev codes of the pressed keys.
    HotKeyGrabs grabs{service, [this](auto code, auto) { return keymap[code]; },
                      [this](auto code) { return down.contains(code); }};
    std::vector<GrabResult> results;
};

TEST_F(HotKeyGrabsTest, AGrabHoldsThePlaceInEveryLayoutOrNothing) {
    grabs.setTitle(1, "Show");
    grabs.setTitle(2, "Start");
    EXPECT_THAT(grab(1, 25), IsEmpty()) << "it is not known yet whether the service runs";
    grabs.setAvailable(true);
    service.answer();
    EXPECT_THAT(results, ElementsAre(GrabResult::held));
    EXPECT_THAT(grab(2, 33), ElementsAre(GrabResult::held));
    EXPECT_THAT(service.held, ElementsAre(Pair(first, UnorderedElementsAre('P', 1047)),
                                          Pair(second, UnorderedElementsAre('F', 1040))));
    EXPECT_THAT(service.titles, ElementsAre(Pair(first, "Show"), Pair(second, "Start")));

    grabs.release(1);
    service.others = {1047};
    EXPECT_THAT(grab(1, 25), ElementsAre(GrabResult::taken)) << "in the second layout only";
    EXPECT_THAT(grab(3, 33), ElementsAre(GrabResult::taken)) << "by the program itself";
    EXPECT_THAT(grab(4, 99), ElementsAre(GrabResult::invalid)) << "no such key";
    service.hangs = true;
    service.others = {};
    EXPECT_THAT(grab(1, 25), ElementsAre(GrabResult::invalid));
    EXPECT_THAT(service.held, ElementsAre(Pair(second, testing::_)));
    EXPECT_EQ(grabs.pressed(first), std::nullopt);
    grabs.releaseAll();
    EXPECT_THAT(service.held, IsEmpty());
}

TEST_F(HotKeyGrabsTest, AReleaseOvertakesTheAnswer) {
    grabs.setAvailable(true);
    grabs.grab(1, 25, superModifier, [this](GrabResult result) { results.push_back(result); });
    grabs.release(1);
    service.answer();
    EXPECT_THAT(results, IsEmpty());
    EXPECT_THAT(service.held, IsEmpty());
}

TEST_F(HotKeyGrabsTest, WhileSuspendedNothingIsHeldAndANewGrabStillHearsItsResult) {
    grabs.setAvailable(true);
    grab(1, 25);
    grabs.suspend(true);
    EXPECT_THAT(service.held, IsEmpty());
    service.others = {'F'};
    EXPECT_THAT(grab(2, 33), ElementsAre(GrabResult::taken));
    service.others = {};
    EXPECT_THAT(grab(2, 33), ElementsAre(GrabResult::held));
    EXPECT_THAT(service.held, IsEmpty());

    service.others = {'P'};
    grabs.suspend(false);
    EXPECT_THAT(logged(), HasSubstr("hot key 1 is out of use: its combination was taken"));
    EXPECT_THAT(service.held, ElementsAre(Pair(second, testing::_)));
    service.others = {};
    grabs.suspend(true);
    grabs.suspend(false);
    EXPECT_EQ(logged(), "") << "it can be had again";
    EXPECT_THAT(service.held, ElementsAre(Pair(first, testing::_), Pair(second, testing::_)));
}

TEST_F(HotKeyGrabsTest, AServiceThatIsRestartedGetsAllGrabsAgain) {
    grabs.setAvailable(true);
    grab(1, 25);
    grabs.grab(2, 33, superModifier, [this](GrabResult result) { results.push_back(result); });
    results.clear();
    service.restart();
    grabs.setAvailable(false);
    EXPECT_THAT(results, ElementsAre(GrabResult::invalid)) << "the one without an answer";
    EXPECT_THAT(grab(3, 33), ElementsAre(GrabResult::invalid)) << "nothing can be had meanwhile";
    grabs.setAvailable(true);
    service.answer();
    EXPECT_THAT(service.held, ElementsAre(Pair(first, UnorderedElementsAre('P', 1047))));
    EXPECT_EQ(grabs.pressed(first), 1);
}

TEST_F(HotKeyGrabsTest, ANewKeymapMovesTheShortcuts) {
    grabs.setAvailable(true);
    grab(1, 25);
    grab(2, 33);
    keymap = {{25, {'F'}}, {33, {'P'}}}; // The two keys have changed places.
    grabs.keymapChanged();
    EXPECT_EQ(logged(), "");
    EXPECT_THAT(service.held, ElementsAre(Pair(first, ElementsAre('F')), Pair(second, ElementsAre('P'))));
    keymap = {{33, {'P'}}};
    grabs.keymapChanged();
    EXPECT_THAT(service.held, ElementsAre(Pair(second, ElementsAre('P'))));
    keymap = {{25, {'A'}}, {33, {'P'}}};
    grabs.keymapChanged();
    service.answer();
    EXPECT_THAT(service.held, ElementsAre(Pair(first, ElementsAre('A')), Pair(second, ElementsAre('P'))));
}

TEST_F(HotKeyGrabsTest, APressCountsOnceAndNotIfItBeganBeforeTheGrab) {
    grabs.setAvailable(true);
    grab(1, 25);
    EXPECT_EQ(grabs.pressed(first), 1);
    EXPECT_EQ(grabs.pressed(first), std::nullopt) << "auto-repeat";
    grabs.released(first);
    EXPECT_EQ(grabs.pressed(first), 1);
    EXPECT_EQ(grabs.pressed(second), std::nullopt);

    down = {25};
    for (const bool isHeard : {true, false}) {
        grabs.suspend(true);
        grabs.suspend(false);
        service.answer();
        EXPECT_EQ(grabs.pressed(first), std::nullopt) << "the repeat of a press that a recorder got";
        if (isHeard)
            grabs.released(first);
        down = {};
        EXPECT_EQ(grabs.pressed(first), 1);
        grabs.released(first);
        down = {25};
    }
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
