#pragma once
// The six hotkeys: their registry values under HKEY_CURRENT_USER "Software\Zelkova" and their
// defaults (Ctrl+Alt with NumPad 1-4, Backspace and NumPad +).

#include <array>
#include <cstdint>

#include "support/one_based_array.h"

namespace zk {

inline constexpr char16_t kSettingsKey[] = u"Software\\Zelkova";
inline constexpr int kHotKeyCount = 6;

inline constexpr std::int16_t ModAlt = 1;
inline constexpr std::int16_t ModControl = 2;
inline constexpr std::int16_t ModShift = 4;
inline constexpr std::int16_t ModWin = 8;

struct HotKeySetting {
    const char16_t* keyValue;
    const char16_t* modifierValue;
    std::int16_t defaultKey;
    std::int16_t defaultModifiers;
};

// Indexed by hotkey id - 1: desktop 1 to 4, the previous desktop, the preview window.
inline constexpr std::array<HotKeySetting, kHotKeyCount> kHotKeyTable = {{
    {u"Desktop1Key", u"Desktop1KeyMod", 0x61, ModAlt + ModControl},
    {u"Desktop2Key", u"Desktop2KeyMod", 0x62, ModAlt + ModControl},
    {u"Desktop3Key", u"Desktop3KeyMod", 0x63, ModAlt + ModControl},
    {u"Desktop4Key", u"Desktop4KeyMod", 0x64, ModAlt + ModControl},
    {u"PrevDesktopKey", u"PrevDesktopKeyMod", 0x08, ModAlt + ModControl},
    {u"ShowPrevWinKey", u"ShowPrevWinKeyMod", 0x6B, ModAlt + ModControl},
}};

inline const HotKeySetting& HotKeySettingOf(int id) {
    return kHotKeyTable.at(static_cast<std::size_t>(id - 1));
}

// The hotkey fields of the controller's record, indexed by hotkey id 1 to 6.
struct HotKeyFields {
    OneBasedArray<std::int32_t, kHotKeyCount> HotKeyOk;    // RegisterHotKey's result; 0: not held
    OneBasedArray<std::int16_t, kHotKeyCount> HotKeyCode;  // virtual-key code in use
    OneBasedArray<std::int16_t, kHotKeyCount> HotKeyMod;   // modifier flags in use
};

}  // namespace zk
