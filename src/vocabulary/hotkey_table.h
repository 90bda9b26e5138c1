#pragma once
// The hotkeys, one row each: the id the system reports, the registry values under
// HKEY_CURRENT_USER "Software\Zelkova", the default pair, what the hotkey does and how the user
// sees it named. Every program that registers, lists, edits or explains a hotkey reads this table.
// Each row says whose the hotkey is: the controller's come first (its twelve values), the
// companions' follow, stored beside them under names of their own.

#include <array>
#include <cstdint>
#include <optional>

#include "support/one_based_array.h"

namespace zk {

inline constexpr char16_t kSettingsKey[] = u"Software\\Zelkova";

inline constexpr std::int16_t ModAlt = 1;
inline constexpr std::int16_t ModControl = 2;
inline constexpr std::int16_t ModShift = 4;
inline constexpr std::int16_t ModWin = 8;

enum class HotKeyAction {
    ShowDesktop,
    ShowPreviousDesktop,
    ShowPreview,
    // The companions' own:
    FindWindow,        // the window finder, on the desktop shown
    ShowNextDesktop,   // the next desktop in order, from the last to the first
    ShowPriorDesktop,  // the one before in order, from the first to the last
};

enum class HotKeyOwner { Controller, Companions };

struct HotKeySetting {
    int id;
    HotKeyOwner owner;
    const char16_t* keyValue;
    const char16_t* modifierValue;
    std::int16_t defaultKey;
    std::int16_t defaultModifiers;
    HotKeyAction action;
    std::int16_t desk;      // the desktop that ShowDesktop shows
    const char* name;       // in the control tool's lists: "desktop 1"
    const char16_t* label;  // in the settings window's list: "Show desktop 1"
    // For a keyboard without a numeric keypad (most laptops), with the default modifiers: the
    // number row's digits, and "=" (the "+" key) for the preview.
    std::int16_t laptopKey;
};

// In id order, from 1.
inline constexpr auto kHotKeyTable = std::to_array<HotKeySetting>({
    {1, HotKeyOwner::Controller, u"Desktop1Key", u"Desktop1KeyMod", 0x61, ModAlt + ModControl,
     HotKeyAction::ShowDesktop, 1, "desktop 1", u"Show desktop 1", '1'},
    {2, HotKeyOwner::Controller, u"Desktop2Key", u"Desktop2KeyMod", 0x62, ModAlt + ModControl,
     HotKeyAction::ShowDesktop, 2, "desktop 2", u"Show desktop 2", '2'},
    {3, HotKeyOwner::Controller, u"Desktop3Key", u"Desktop3KeyMod", 0x63, ModAlt + ModControl,
     HotKeyAction::ShowDesktop, 3, "desktop 3", u"Show desktop 3", '3'},
    {4, HotKeyOwner::Controller, u"Desktop4Key", u"Desktop4KeyMod", 0x64, ModAlt + ModControl,
     HotKeyAction::ShowDesktop, 4, "desktop 4", u"Show desktop 4", '4'},
    {5, HotKeyOwner::Controller, u"PrevDesktopKey", u"PrevDesktopKeyMod", 0x08, ModAlt + ModControl,
     HotKeyAction::ShowPreviousDesktop, 0, "previous desktop", u"Back to the last", 0x08},
    {6, HotKeyOwner::Controller, u"ShowPrevWinKey", u"ShowPrevWinKeyMod", 0x6B, ModAlt + ModControl,
     HotKeyAction::ShowPreview, 0, "preview", u"Preview", 0xBB},
    {7, HotKeyOwner::Companions, u"FindWindowKey", u"FindWindowKeyMod", 0x20, ModAlt + ModControl,
     HotKeyAction::FindWindow, 0, "find a window", u"Find a window", 0x20},
    {8, HotKeyOwner::Companions, u"NextDesktopKey", u"NextDesktopKeyMod", 0x27, ModAlt + ModControl,
     HotKeyAction::ShowNextDesktop, 0, "next desktop", u"Next in order", 0x27},
    {9, HotKeyOwner::Companions, u"PriorDesktopKey", u"PriorDesktopKeyMod", 0x25,
     ModAlt + ModControl, HotKeyAction::ShowPriorDesktop, 0, "desktop before", u"Before in order",
     0x25},
});
// Every hotkey; the controller's are ids 1 to kControllerHotKeyCount, the companions' the ones
// after (kFirstCompanionHotKey on).
inline constexpr int kAllHotKeyCount = static_cast<int>(kHotKeyTable.size());
inline constexpr int kControllerHotKeyCount = [] {
    int count = 0;
    for (const HotKeySetting& hotkey : kHotKeyTable) {
        if (hotkey.owner != HotKeyOwner::Controller) break;
        ++count;
    }
    return count;
}();
inline constexpr int kFirstCompanionHotKey = kControllerHotKeyCount + 1;
static_assert(
    [] {
        for (int i = 0; i < kAllHotKeyCount; ++i) {
            if (kHotKeyTable[i].id != i + 1) return false;
            if ((kHotKeyTable[i].owner == HotKeyOwner::Controller) != (i < kControllerHotKeyCount))
                return false;
        }
        return true;
    }(),
    "in id order from 1, the controller's first");

// One of the controller's hotkeys.
[[nodiscard]] constexpr bool IsControllerHotKeyId(int id) {
    return id >= 1 && id <= kControllerHotKeyCount;
}
[[nodiscard]] constexpr bool IsCompanionHotKeyId(int id) {
    return id >= kFirstCompanionHotKey && id <= kAllHotKeyCount;
}
// Of any hotkey, the companions' too.
inline const HotKeySetting& HotKeySettingOf(int id) {
    return kHotKeyTable.at(static_cast<std::size_t>(id - 1));
}
// The id of the hotkey that does `action` (for ShowDesktop, shows `desk`); 0 when none does.
[[nodiscard]] constexpr int HotKeyIdOf(HotKeyAction action, int desk = 0) {
    for (const HotKeySetting& hotkey : kHotKeyTable) {
        if (hotkey.action == action && (action != HotKeyAction::ShowDesktop || hotkey.desk == desk))
            return hotkey.id;
    }
    return 0;
}

// What a press of the controller's hotkey `id` asks of the shown desktop's switcher: a signal
// kind with its target desktop. Nothing for another id, or for "previous" while `previousDesk`
// names no desktop.
struct HotKeyRequest {
    std::int32_t kind;
    std::int16_t target;
};
[[nodiscard]] std::optional<HotKeyRequest> HotKeyRequestOf(int id, std::int16_t previousDesk);

// The hotkey fields of the controller's record, indexed by hotkey id 1 to 6.
struct HotKeyFields {
    OneBasedArray<std::int32_t, kControllerHotKeyCount>
        HotKeyOk;  // RegisterHotKey's result; 0: not held
    OneBasedArray<std::int16_t, kControllerHotKeyCount> HotKeyCode;  // virtual-key code in use
    OneBasedArray<std::int16_t, kControllerHotKeyCount> HotKeyMod;   // modifier flags in use
};

}  // namespace zk
