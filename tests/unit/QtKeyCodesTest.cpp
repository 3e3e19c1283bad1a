#include "platform/desktop/wayland/plasma/QtKeyCodes.h"

#include <QChar>
#include <QKeyCombination>
#include <QMetaEnum>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::wayland {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(QtKeyCodesTest, KeysWithoutACharacterHaveQtsNumbers) {
    // Each word names a key symbol, and the key of Qt::Key if its name is another. Nothing after the "="
    // means that Qt has no such key.
    std::istringstream words(
        "Escape Tab KP_Tab=Tab ISO_Left_Tab=Backtab BackSpace=Backspace Return KP_Enter=Enter "
        "Insert KP_Insert=Insert Delete KP_Delete=Delete Pause Print Sys_Req=SysReq Clear "
        "KP_Begin=Clear Home KP_Home=Home End KP_End=End Left KP_Left=Left Up KP_Up=Up Right "
        "KP_Right=Right Down KP_Down=Down Prior=PageUp KP_Prior=PageUp Next=PageDown "
        "KP_Next=PageDown Caps_Lock=CapsLock Num_Lock=NumLock Scroll_Lock=ScrollLock Menu Help "
        "F1 F20 F35 KP_0=0 KP_9=9 KP_Space=Space KP_Multiply=Asterisk KP_Add=Plus "
        "KP_Separator=Comma KP_Subtract=Minus KP_Decimal=Period KP_Divide=Slash KP_Equal=Equal "
        "Muhenkan Henkan Hiragana_Katakana Zenkaku_Hankaku Eisu_toggle Hangul Hangul_Hanja "
        "XF86Back=Back XF86Forward=Forward XF86AudioLowerVolume=VolumeDown "
        "XF86AudioMute=VolumeMute XF86AudioRaiseVolume=VolumeUp XF86AudioPlay=MediaPlay "
        "XF86AudioStop=MediaStop XF86AudioPrev=MediaPrevious XF86AudioNext=MediaNext "
        "XF86AudioMicMute=MicMute XF86HomePage=HomePage XF86Search=Search "
        "XF86Calculator=Calculator XF86Mail=LaunchMail dead_grave= NoSymbol= Shift_L=");
    for (std::string symbol; words >> symbol;) {
        const auto end = symbol.find('=');
        const auto qtName = "Key_" + (end == std::string::npos ? symbol : symbol.substr(end + 1));
        const auto expected =
            qtName == "Key_" ? 0 : QMetaEnum::fromType<Qt::Key>().keyToValue(qtName.c_str());
        const auto number = xkb_keysym_from_name(symbol.substr(0, end).c_str(), XKB_KEYSYM_NO_FLAGS);
        EXPECT_EQ(qtKeyOf(number), static_cast<std::uint32_t>(expected)) << symbol;
    }
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
