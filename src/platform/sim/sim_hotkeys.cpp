#include "platform/sim/sim_hotkeys.h"

#include <algorithm>

namespace zk::sim {
namespace {

constexpr std::uint32_t kModifierMask = 0x0F;  // Alt, Ctrl, Shift, Win; not MOD_NOREPEAT

// The modifier flag of a modifier key, or 0.
std::uint32_t ModifierOf(std::uint16_t virtualKey) {
    switch (virtualKey) {
        case 0x12:  // VK_MENU
        case 0xA4:
        case 0xA5:
            return 1;
        case 0x11:  // VK_CONTROL
        case 0xA2:
        case 0xA3:
            return 2;
        case 0x10:  // VK_SHIFT
        case 0xA0:
        case 0xA1:
            return 4;
        case 0x5B:  // VK_LWIN, VK_RWIN
        case 0x5C:
            return 8;
        default:
            return 0;
    }
}

}  // namespace

SimHotKeys::SimHotKeys(Session& session, SimWindows& windows, SimMessages& messages)
    : session_(session), windows_(windows), messages_(messages) {
    session_.onWindowDestroyed.push_back([this](Hwnd window) {
        std::erase_if(hotkeys_, [&](const HotKey& h) { return h.window == window; });
    });
    session_.onProcessEnd.push_back([this] {
        std::erase_if(hotkeys_, [&](const HotKey& h) { return h.processId == session_.processId; });
    });
}

bool SimHotKeys::Conflicts(std::uint32_t modifiers, std::uint32_t virtualKey, int desktop) const {
    return std::any_of(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return (h.modifiers & kModifierMask) == (modifiers & kModifierMask) &&
               h.virtualKey == virtualKey &&
               (scope_ == HotKeyScope::Session || h.desktop == desktop);
    });
}

std::int32_t SimHotKeys::RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                        std::uint32_t virtualKey) {
    if (session_.Enter("RegisterHotKey", Hex(window) + " id " + std::to_string(id) + " mod " +
                                             std::to_string(modifiers) + " vk " +
                                             std::to_string(virtualKey))) {
        return 0;
    }
    const SimWindow* w = windows_.Find(window);
    if (window != nullptr && w == nullptr) {
        session_.last = ErrorInvalidWindowHandle;
        return 0;
    }
    const int desktop = w != nullptr ? w->desktop : session_.threadDesktop;
    const bool sameId = std::any_of(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return h.window == window && h.id == id && h.processId == session_.processId;
    });
    if (sameId || Conflicts(modifiers, virtualKey, desktop)) {
        session_.last = ErrorHotkeyAlreadyRegistered;
        return 0;
    }
    hotkeys_.push_back({window, id, modifiers, virtualKey, session_.processId, desktop});
    return 1;
}

bool SimHotKeys::UnregisterHotKey(Hwnd window, int id) {
    if (session_.Enter("UnregisterHotKey", Hex(window) + " id " + std::to_string(id))) return false;
    const auto it = std::find_if(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return h.window == window && h.id == id && h.processId == session_.processId;
    });
    if (it == hotkeys_.end()) {
        session_.last = ErrorHotkeyNotRegistered;
        return false;
    }
    hotkeys_.erase(it);
    return true;
}

std::uint32_t SimHotKeys::SendInput(std::span<const KeyInput> keys) {
    if (session_.Enter("SendInput", std::to_string(keys.size()) + " keys")) return 0;
    if (session_.threadDesktop != session_.inputDesktop) {
        session_.last = ErrorAccessDenied;
        return 0;
    }
    for (const KeyInput& key : keys) {
        const std::uint32_t modifier = ModifierOf(key.virtualKey);
        if (modifier != 0) {
            heldModifiers_ = key.up ? heldModifiers_ & ~modifier : heldModifiers_ | modifier;
        } else if (key.up) {
            heldKeys_.erase(key.virtualKey);
        } else {
            heldKeys_.insert(key.virtualKey);
            (void)PressHotKey(heldModifiers_, key.virtualKey);
        }
    }
    return static_cast<std::uint32_t>(keys.size());
}

std::int16_t SimHotKeys::GetAsyncKeyState(int virtualKey) {
    (void)session_.Enter("GetAsyncKeyState", std::to_string(virtualKey));
    if (session_.threadDesktop != session_.inputDesktop) return 0;
    const auto key = static_cast<std::uint16_t>(virtualKey);
    const bool down = (ModifierOf(key) & heldModifiers_) != 0 || heldKeys_.count(key) != 0;
    return down ? static_cast<std::int16_t>(0x8000) : std::int16_t{0};
}

bool SimHotKeys::SystemParametersInfoW(std::uint32_t action, std::uint32_t& value) {
    if (session_.Enter("SystemParametersInfoW", std::to_string(action))) return false;
    if (action == SpiGetKeyboardDelay) {
        value = 1;
    } else if (action == SpiGetKeyboardSpeed) {
        value = 31;
    } else {
        session_.last = ErrorInvalidParameter;
        return false;
    }
    return true;
}

bool SimHotKeys::HoldHotKey(std::uint32_t modifiers, std::uint32_t virtualKey) {
    heldModifiers_ = modifiers;
    heldKeys_ = {virtualKey};
    return PressHotKey(modifiers, virtualKey);
}

void SimHotKeys::RepeatHeldKey(std::uint64_t milliseconds) {
    messages_.AdvanceTime(milliseconds);
    for (const std::uint32_t key : heldKeys_) {
        const HotKey* h = Holder(heldModifiers_, key);
        if (h != nullptr && h->processId == session_.processId &&
            (h->modifiers & ModNoRepeat) == 0) {
            Deliver(*h, heldModifiers_);
        }
    }
}

void SimHotKeys::ReleaseKeys() {
    heldModifiers_ = 0;
    heldKeys_.clear();
}

bool SimHotKeys::HoldHotKeyInOtherProcess(std::uint32_t modifiers, std::uint32_t virtualKey,
                                          std::optional<Text> desktop) {
    const int on = desktop ? session_.DesktopByName(*desktop) : session_.inputDesktop;
    if (Conflicts(modifiers, virtualKey, on)) return false;
    hotkeys_.push_back({nullptr, 1, modifiers, virtualKey, kOtherProcessId, on});
    return true;
}

bool SimHotKeys::IsHotKeyRegistered(std::uint32_t modifiers, std::uint32_t virtualKey) const {
    return std::any_of(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return (h.modifiers & kModifierMask) == (modifiers & kModifierMask) &&
               h.virtualKey == virtualKey;
    });
}

const SimHotKeys::HotKey* SimHotKeys::Holder(std::uint32_t modifiers,
                                             std::uint32_t virtualKey) const {
    for (const auto& h : hotkeys_) {
        if ((h.modifiers & kModifierMask) == (modifiers & kModifierMask) &&
            h.virtualKey == virtualKey &&
            (scope_ == HotKeyScope::Session || h.desktop == session_.inputDesktop)) {
            return &h;
        }
    }
    return nullptr;
}

void SimHotKeys::Deliver(const HotKey& h, std::uint32_t modifiers) {
    const auto lParam = static_cast<Lparam>((h.virtualKey << 16) | (modifiers & 0xFFFF));
    messages_.Post(Msg{h.window, WmHotKey, static_cast<Wparam>(h.id), lParam});
}

bool SimHotKeys::PressHotKey(std::uint32_t modifiers, std::uint32_t virtualKey) {
    const HotKey* h = Holder(modifiers, virtualKey);
    if (h == nullptr) return false;
    session_.hasLastInput = h->processId == session_.processId;
    if (h->processId == session_.processId) Deliver(*h, modifiers);
    return true;
}

}  // namespace zk::sim
