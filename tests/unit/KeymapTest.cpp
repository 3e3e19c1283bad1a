#include "platform/desktop/wayland/keyboard/Keymap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::wayland {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::uint32_t placeOf1 = 2;
constexpr std::uint32_t placeOfQ = 16;
constexpr std::uint32_t placeOfP = 25;
constexpr std::uint32_t keypad1 = 79;
constexpr std::uint32_t superAndAlt = superModifier | altModifier;

/// Makes a keymap from a user's settings. The keymap passes through its text form, because compositors send
/// keymaps as text.
std::shared_ptr<const Keymap> keymapOf(const char* layouts, const char* options = "") {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES), xkb_context_unref);
    const xkb_rule_names names{"evdev", "pc105", layouts, "", options};
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS), xkb_keymap_unref);
    const std::unique_ptr<char, decltype(&std::free)> text(
        xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1), std::free);
    return Keymap::fromText(text.get());
}

TEST(KeymapTest, APlaceHasTheSymbolsOfAllLayouts) {
    const auto keymap = keymapOf("us,ru,fr");
    EXPECT_THAT(keymap->strokes(placeOfP, superAndAlt),
                UnorderedElementsAre(KeyStroke{XKB_KEY_p, superAndAlt}, KeyStroke{XKB_KEY_P, superAndAlt},
                                     KeyStroke{XKB_KEY_Cyrillic_ze, superAndAlt},
                                     KeyStroke{XKB_KEY_Cyrillic_ZE, superAndAlt}));
    EXPECT_THAT(keymap->strokes(placeOfQ, controlModifier),
                testing::IsSupersetOf({KeyStroke{XKB_KEY_q, controlModifier},
                                       KeyStroke{XKB_KEY_Cyrillic_shorti, controlModifier},
                                       KeyStroke{XKB_KEY_a, controlModifier}}));
    EXPECT_THAT(keymapOf("us")->strokes(keypad1, 0),
                UnorderedElementsAre(KeyStroke{XKB_KEY_KP_End, 0}, KeyStroke{XKB_KEY_KP_1, 0}))
        << "without and with NumLock";
}

TEST(KeymapTest, AModifierThatChoosesTheSymbolIsPartOfItUnlessItIsALettersShift) {
    EXPECT_THAT(keymapOf("us")->strokes(placeOfP, shiftModifier | superModifier),
                UnorderedElementsAre(KeyStroke{XKB_KEY_P, shiftModifier | superModifier},
                                     KeyStroke{XKB_KEY_p, shiftModifier | superModifier}));
    EXPECT_THAT(keymapOf("us")->strokes(placeOf1, shiftModifier | superModifier),
                ElementsAre(KeyStroke{XKB_KEY_exclam, superModifier}));
}

TEST(KeymapTest, ModifierKeysAreKnownByTheirPlace) {
    const struct {
        const char* options;
        std::uint32_t asked;
        std::uint32_t meant;
    } rows[] = {
        {"altwin:swap_lalt_lwin", superModifier, altModifier},
        {"altwin:swap_lalt_lwin", altModifier, superModifier},
        {"ctrl:swapcaps", controlModifier, controlModifier},
    };
    for (const auto& row : rows)
        EXPECT_THAT(keymapOf("us", row.options)->strokes(placeOf1, row.asked),
                    ElementsAre(KeyStroke{XKB_KEY_1, row.meant}))
            << row.options;
}

TEST(KeymapTest, KeysThatDoNotExistHaveNoSymbolAndNoLabel) {
    const auto keymap = keymapOf("us");
    for (const auto code : {0U, 100'000U, 0xffffffffU}) {
        EXPECT_THAT(keymap->strokes(code, superModifier), IsEmpty()) << code;
        EXPECT_EQ(keymap->label(code, 0), "") << code;
    }
    EXPECT_THAT(keymap->strokes(placeOfP, 16), IsEmpty()) << "an unknown modifier";
    EXPECT_EQ(Keymap::fromText("xkb_keymap {"), nullptr);
    EXPECT_EQ(Keymap::ofLayouts("no such layout"), nullptr);
}

TEST(KeymapTest, LabelsAreThoseOfTheLayout) {
    const auto keymap = keymapOf("us,ru");
    const struct {
        std::uint32_t code;
        std::uint32_t layout;
        const char* label;
    } rows[] = {
        {placeOfP, 0, "P"},     {placeOfP, 1, "З"},  {placeOfP, 2, "P"},   {57, 0, "Space"},
        {1, 1, "Esc"},          {104, 0, "Page Up"}, {14, 0, "Backspace"}, {60, 1, "F2"},
        {keypad1, 0, "KP End"}, {39, 0, ";"},        {43, 0, "\\"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(keymap->label(row.code, row.layout), row.label) << row.code;
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
