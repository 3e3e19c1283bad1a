#include "platform/desktop/x11/windows/WindowDescription.h"

#include "platform/desktop/x11/windows/OwnerRequest.h"
#include "platform/desktop/x11/windows/WindowText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

Atoms atomsOfNoServer() {
    Atoms atoms{};
    xcb_atom_t next = 1000;
    for (auto* atom :
         {&atoms.UTF8_STRING, &atoms.COMPOUND_TEXT, &atoms._NET_WM_STATE_HIDDEN, &atoms._NET_WM_STATE_ABOVE,
          &atoms._NET_WM_STATE_BELOW, &atoms._NET_WM_WINDOW_TYPE_DOCK, &atoms._NET_WM_WINDOW_TYPE_DESKTOP,
          &atoms._NET_WM_WINDOW_TYPE_NORMAL, &atoms._NET_WM_WINDOW_TYPE_NOTIFICATION})
        *atom = next++;
    return atoms;
}
const Atoms atoms = atomsOfNoServer();

Property numbers(xcb_atom_t type, const std::vector<std::uint32_t>& values) {
    return {type, 32, {reinterpret_cast<const char*>(values.data()), values.size() * 4}, false};
}

struct Title {
    const char* what;
    Property netName;
    Property name;
    const char* expected; ///< The title that is found, or nullptr for none.
};

TEST(WindowDescriptionTest, ReadsTitlesInEveryEncoding) {
    const Property none;
    const auto utf8 = atoms.UTF8_STRING;
    const std::vector<Title> titles = {
        {"UTF-8 goes before the older name", {utf8, 8, "Grüße"}, {XCB_ATOM_STRING, 8, "old"}, "Grüße"},
        {"Latin-1", none, {XCB_ATOM_STRING, 8, "Gr\xFC\xDF"}, "Grüß"},
        {"UTF-8 in the older name", none, {utf8, 8, "Привет"}, "Привет"},
        {"broken bytes, one mark each",
         {utf8, 8, "a\xFF\xC3(\xE2\x82z"},
         none,
         "a\uFFFD\uFFFD(\uFFFD\uFFFDz"},
        {"surrogates and overlong forms",
         {utf8, 8, "\xED\xA0\x80\xC0\xAF"},
         none,
         "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"ends at the first NUL", {utf8, 8, "one\0two"sv}, none, "one"},
        {"cut within a character", {utf8, 8, "ab\xE2\x82", true}, none, "ab"},
        {"wrong type", {XCB_ATOM_CARDINAL, 8, "x"}, {XCB_ATOM_STRING, 8, "right"}, "right"},
        {"wrong format", {utf8, 32, "xxxx"}, {XCB_ATOM_STRING, 16, "xx"}, nullptr},
        {"empty", {utf8, 8, ""}, {XCB_ATOM_STRING, 8, ""}, nullptr},
        {"compound text: Latin-1, then UTF-8, then a set that is not read",
         none,
         {atoms.COMPOUND_TEXT, 8, "\xE9 \x1b%Gж\x1b%@ \x1b$(B\x30\x6c\x1b(B!"},
         "é ж \uFFFD!"},
        {"compound text that breaks off", none, {atoms.COMPOUND_TEXT, 8, "a\x1b%/1\x81"}, "a\uFFFD"},
    };
    for (const auto& [what, netName, name, expected] : titles) {
        const auto window = describe({0, 0, 10, 10}, {netName, name, {}, {}, {}}, atoms);
        ASSERT_TRUE(window) << what;
        EXPECT_EQ(window->title, expected ? std::optional<std::string>(expected) : std::nullopt) << what;
    }
}

TEST(WindowDescriptionTest, CropsOnlyAShadowThatLeavesAWindow) {
    const auto cropped = [](const std::vector<std::uint32_t>& extents) {
        return describe({100, 50, 200, 120}, {{}, {}, {}, {}, numbers(XCB_ATOM_CARDINAL, extents)}, atoms)
            ->bounds;
    };
    const PixelRect whole{100, 50, 200, 120};
    EXPECT_EQ(cropped({10, 12, 8, 20}), (PixelRect{110, 58, 178, 92}));
    for (const auto& lie : std::vector<std::vector<std::uint32_t>>{
             {100, 100, 0, 0}, {0, 0, 120, 0}, {0xFFFFFFFF, 0xFFFFFFFF, 0, 0}, {1, 2, 3}, {}})
        EXPECT_EQ(cropped(lie), whole);
}

TEST(WindowDescriptionTest, SortsWindowsIntoLayersAndLeavesOutWhatIsNoWindow) {
    struct Case {
        std::vector<std::uint32_t> states;
        std::vector<std::uint32_t> types;
        std::optional<int> layer;
    };
    const std::vector<Case> cases = {
        {{}, {}, 0},
        {{}, {9999, atoms._NET_WM_WINDOW_TYPE_NORMAL, atoms._NET_WM_WINDOW_TYPE_DOCK}, 0},
        {{atoms._NET_WM_STATE_ABOVE}, {atoms._NET_WM_WINDOW_TYPE_NORMAL}, 1},
        {{atoms._NET_WM_STATE_BELOW}, {}, -1},
        {{}, {atoms._NET_WM_WINDOW_TYPE_NOTIFICATION}, 1},
        {{}, {atoms._NET_WM_WINDOW_TYPE_DOCK}, std::nullopt},
        {{}, {atoms._NET_WM_WINDOW_TYPE_DESKTOP}, std::nullopt},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto window = describe(
            {0, 0, 10, 10},
            {{}, {}, numbers(XCB_ATOM_ATOM, cases[i].states), numbers(XCB_ATOM_ATOM, cases[i].types), {}},
            atoms);
        EXPECT_EQ(window ? std::optional(window->layer) : std::nullopt, cases[i].layer) << "case " << i;
    }
}

TEST(WindowDescriptionTest, TellsThisMachineFromOthersWithOrWithoutTheirDomain) {
    EXPECT_TRUE(isSameMachine("desk", "desk"));
    EXPECT_TRUE(isSameMachine("desk", "desk.example.org"));
    EXPECT_TRUE(isSameMachine("desk.example.org", "desk"));
    EXPECT_FALSE(isSameMachine("desk.example.org", "desk.example.com"));
    EXPECT_FALSE(isSameMachine("desk", "des"));
    EXPECT_FALSE(isSameMachine("", ""));
}

TEST(WindowDescriptionTest, ReadsClassAndClaimedProcessOnlyFromSoundProperties) {
    const auto classOf = [](Property wmClass) { return windowClass(wmClass, {}, atoms); };
    EXPECT_EQ(classOf({XCB_ATOM_STRING, 8, "navigator\0Fox\0"sv}), (WindowClass{"navigator", "Fox", ""}));
    EXPECT_EQ(classOf({XCB_ATOM_STRING, 8, "alone"}), (WindowClass{"alone", "", ""}));
    EXPECT_EQ(classOf({XCB_ATOM_CARDINAL, 8, "a\0b\0"sv}), WindowClass{});
    EXPECT_EQ(claimedPid(numbers(XCB_ATOM_CARDINAL, {42})), 42);
    EXPECT_EQ(claimedPid(numbers(XCB_ATOM_CARDINAL, {0x80000000})), 0);
    EXPECT_EQ(claimedPid(numbers(XCB_ATOM_CARDINAL, {42, 43})), 0);
    EXPECT_EQ(claimedPid(numbers(XCB_ATOM_WINDOW, {42})), 0);
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
