#include "platform/desktop/wayland/plasma/QtKeyCodes.h"

#include <QChar>
#include <QKeyCombination>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::wayland {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(QtKeyCodesTest, KeysWithoutACharacterHaveQtsNumbers) {
    const std::pair<xkb_keysym_t, Qt::Key> rows[] = {
        {XKB_KEY_Escape, Qt::Key_Escape},
        {XKB_KEY_Tab, Qt::Key_Tab},
        {XKB_KEY_KP_Tab, Qt::Key_Tab},
        {XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab},
        {XKB_KEY_BackSpace, Qt::Key_Backspace},
        {XKB_KEY_Return, Qt::Key_Return},
        {XKB_KEY_KP_Enter, Qt::Key_Enter},
        {XKB_KEY_Insert, Qt::Key_Insert},
        {XKB_KEY_KP_Insert, Qt::Key_Insert},
        {XKB_KEY_Delete, Qt::Key_Delete},
        {XKB_KEY_KP_Delete, Qt::Key_Delete},
        {XKB_KEY_Pause, Qt::Key_Pause},
        {XKB_KEY_Print, Qt::Key_Print},
        {XKB_KEY_Sys_Req, Qt::Key_SysReq},
        {XKB_KEY_Clear, Qt::Key_Clear},
        {XKB_KEY_KP_Begin, Qt::Key_Clear},
        {XKB_KEY_Home, Qt::Key_Home},
        {XKB_KEY_KP_Home, Qt::Key_Home},
        {XKB_KEY_End, Qt::Key_End},
        {XKB_KEY_KP_End, Qt::Key_End},
        {XKB_KEY_Left, Qt::Key_Left},
        {XKB_KEY_KP_Left, Qt::Key_Left},
        {XKB_KEY_Up, Qt::Key_Up},
        {XKB_KEY_KP_Up, Qt::Key_Up},
        {XKB_KEY_Right, Qt::Key_Right},
        {XKB_KEY_KP_Right, Qt::Key_Right},
        {XKB_KEY_Down, Qt::Key_Down},
        {XKB_KEY_KP_Down, Qt::Key_Down},
        {XKB_KEY_Prior, Qt::Key_PageUp},
        {XKB_KEY_KP_Prior, Qt::Key_PageUp},
        {XKB_KEY_Next, Qt::Key_PageDown},
        {XKB_KEY_KP_Next, Qt::Key_PageDown},
        {XKB_KEY_Caps_Lock, Qt::Key_CapsLock},
        {XKB_KEY_Num_Lock, Qt::Key_NumLock},
        {XKB_KEY_Scroll_Lock, Qt::Key_ScrollLock},
        {XKB_KEY_Menu, Qt::Key_Menu},
        {XKB_KEY_Help, Qt::Key_Help},
        {XKB_KEY_F1, Qt::Key_F1},
        {XKB_KEY_F20, Qt::Key_F20},
        {XKB_KEY_F35, Qt::Key_F35},
        {XKB_KEY_KP_0, Qt::Key_0},
        {XKB_KEY_KP_9, Qt::Key_9},
        {XKB_KEY_KP_Space, Qt::Key_Space},
        {XKB_KEY_KP_Multiply, Qt::Key_Asterisk},
        {XKB_KEY_KP_Add, Qt::Key_Plus},
        {XKB_KEY_KP_Separator, Qt::Key_Comma},
        {XKB_KEY_KP_Subtract, Qt::Key_Minus},
        {XKB_KEY_KP_Decimal, Qt::Key_Period},
        {XKB_KEY_KP_Divide, Qt::Key_Slash},
        {XKB_KEY_KP_Equal, Qt::Key_Equal},
        {XKB_KEY_Muhenkan, Qt::Key_Muhenkan},
        {XKB_KEY_Henkan, Qt::Key_Henkan},
        {XKB_KEY_Hiragana_Katakana, Qt::Key_Hiragana_Katakana},
        {XKB_KEY_Zenkaku_Hankaku, Qt::Key_Zenkaku_Hankaku},
        {XKB_KEY_Eisu_toggle, Qt::Key_Eisu_toggle},
        {XKB_KEY_Hangul, Qt::Key_Hangul},
        {XKB_KEY_Hangul_Hanja, Qt::Key_Hangul_Hanja},
        {XKB_KEY_XF86Back, Qt::Key_Back},
        {XKB_KEY_XF86Forward, Qt::Key_Forward},
        {XKB_KEY_XF86AudioLowerVolume, Qt::Key_VolumeDown},
        {XKB_KEY_XF86AudioMute, Qt::Key_VolumeMute},
        {XKB_KEY_XF86AudioRaiseVolume, Qt::Key_VolumeUp},
        {XKB_KEY_XF86AudioPlay, Qt::Key_MediaPlay},
        {XKB_KEY_XF86AudioStop, Qt::Key_MediaStop},
        {XKB_KEY_XF86AudioPrev, Qt::Key_MediaPrevious},
        {XKB_KEY_XF86AudioNext, Qt::Key_MediaNext},
        {XKB_KEY_XF86AudioMicMute, Qt::Key_MicMute},
        {XKB_KEY_XF86HomePage, Qt::Key_HomePage},
        {XKB_KEY_XF86Search, Qt::Key_Search},
        {XKB_KEY_XF86Calculator, Qt::Key_Calculator},
        {XKB_KEY_XF86Mail, Qt::Key_LaunchMail},
        {XKB_KEY_dead_grave, Qt::Key(0)},
        {XKB_KEY_NoSymbol, Qt::Key(0)},
        {XKB_KEY_Shift_L, Qt::Key(0)},
    };
    for (const auto& [symbol, key] : rows)
        EXPECT_EQ(qtKeyOf(symbol), static_cast<std::uint32_t>(key)) << std::hex << symbol;
}

TEST(QtKeyCodesTest, KeysWithACharacterHaveTheNumberOfTheCapital) {
    const std::pair<char32_t, char32_t> blocks[] = {{0x20, 0x7e},   {0xa0, 0xff},   {0x100, 0x130},
                                                    {0x386, 0x3ce}, {0x400, 0x45f}, {0x531, 0x556},
                                                    {0x5d0, 0x5ea}};
    for (const auto& [first, last] : blocks)
        for (auto character = first; character <= last; ++character) {
            auto capital = QChar::toUpper(character);
            if (character <= 0xff && capital > 0xff)
                capital = character; // Qt::Key_mu, Qt::Key_ydiaeresis.
            const auto symbol = xkb_utf32_to_keysym(character);
            if (symbol != XKB_KEY_NoSymbol) {
                EXPECT_EQ(qtKeyOf(symbol), capital) << std::hex << static_cast<unsigned>(character);
            }
        }
    EXPECT_EQ(qtKeyOf(XKB_KEY_ssharp), static_cast<std::uint32_t>(Qt::Key_ssharp));
    EXPECT_EQ(qtKeyOf(0x1000000 | 0x1f600), 0U) << "beyond what Qt can number";
}

TEST(QtKeyCodesTest, CombinationsCarryTheModifiersAndAreThereOnce) {
    EXPECT_THAT(qtCombinationsOf({{XKB_KEY_p, superModifier | altModifier},
                                  {XKB_KEY_Cyrillic_ze, controlModifier | shiftModifier},
                                  {XKB_KEY_P, superModifier | altModifier},
                                  {XKB_KEY_Shift_L, superModifier},
                                  {XKB_KEY_KP_1, superModifier}}),
                UnorderedElementsAre(
                    QKeyCombination(Qt::MetaModifier | Qt::AltModifier, Qt::Key_P).toCombined(),
                    QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key(0x417)).toCombined(),
                    QKeyCombination(Qt::MetaModifier, Qt::Key_1).toCombined(),
                    QKeyCombination(Qt::MetaModifier | Qt::KeypadModifier, Qt::Key_1).toCombined()));
    EXPECT_THAT(qtCombinationsOf({}), IsEmpty());
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
