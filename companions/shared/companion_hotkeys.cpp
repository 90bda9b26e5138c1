#include "shared/companion_hotkeys.h"

#include "hotkeys/hotkeys.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

CompanionHotKeys::CompanionHotKeys(HotKeyApi& os, Registry& registry, Hwnd window)
    : os_(os), registry_(registry), window_(window) {}

CompanionHotKeys::~CompanionHotKeys() {
    for (int id = kFirstCompanionHotKey; id <= kAllHotKeyCount; ++id) {
        if (pairs_[id - kFirstCompanionHotKey].held) (void)os_.UnregisterHotKey(window_, id);
    }
}

CompanionHotKeys::Pair CompanionHotKeys::Read(int id) {
    Pair pair;
    if (!ReadHotKeyPair(registry_, id, pair.key, pair.modifiers)) {
        pair.key = HotKeySettingOf(id).defaultKey;
        pair.modifiers = HotKeySettingOf(id).defaultModifiers;
    }
    return pair;
}

void CompanionHotKeys::Register() {
    for (int id = kFirstCompanionHotKey; id <= kAllHotKeyCount; ++id) {
        Pair& pair = pairs_[id - kFirstCompanionHotKey];
        pair = Read(id);
        pair.held = os_.RegisterHotKey(window_, id,
                                       static_cast<std::uint32_t>(pair.modifiers) | ModNoRepeat,
                                       static_cast<std::uint32_t>(pair.key)) != 0;
    }
}

void CompanionHotKeys::Reload() {
    for (int id = kFirstCompanionHotKey; id <= kAllHotKeyCount; ++id) {
        Pair& pair = pairs_[id - kFirstCompanionHotKey];
        const Pair stored = Read(id);
        if (stored.key == pair.key && stored.modifiers == pair.modifiers && pair.held) continue;
        if (pair.held) (void)os_.UnregisterHotKey(window_, id);
        pair = stored;
        pair.held = os_.RegisterHotKey(window_, id,
                                       static_cast<std::uint32_t>(pair.modifiers) | ModNoRepeat,
                                       static_cast<std::uint32_t>(pair.key)) != 0;
    }
}

std::int16_t CompanionHotKeys::HeldKey(int id) const {
    if (!IsCompanionHotKeyId(id)) return 0;
    const Pair& pair = pairs_[id - kFirstCompanionHotKey];
    return pair.held ? pair.key : 0;
}

int DesktopInOrder(int id, int current) {
    if (!IsCompanionHotKeyId(id)) return 0;
    switch (HotKeySettingOf(id).action) {
        case HotKeyAction::ShowNextDesktop:
            return current % kDesktopCount + 1;
        case HotKeyAction::ShowPriorDesktop:
            return (current + kDesktopCount - 2) % kDesktopCount + 1;
        default:
            return 0;
    }
}

}  // namespace zk::companion
