#include "hotkeys/hotkeys.h"

#include "support/text.h"

#include <array>

namespace zk {
namespace {

constexpr std::uint32_t kMapVkToScanCode = 0;

// Keys whose scan code the layout would give wrongly for a name (or not at all).
std::optional<std::uint32_t> FixedScanCode(std::int16_t virtualKey) {
    switch (virtualKey) {
        case 19:  // VK_PAUSE
            return 0x45;
        case 144:  // VK_NUMLOCK
            return 0x145;
        case 44:  // VK_SNAPSHOT
            return 0x101;
        case 111:  // VK_DIVIDE
            return 0x135;
        default:
            return std::nullopt;
    }
}

}  // namespace

Text KeyDisplayName(TextApi& os, std::int16_t virtualKey) {
    std::uint32_t scanCode = 0;
    if (const auto fixed = FixedScanCode(virtualKey)) {
        scanCode = *fixed;
    } else {
        scanCode = os.MapVirtualKeyExA(static_cast<std::uint32_t>(virtualKey), kMapVkToScanCode,
                                       os.GetKeyboardLayout(0));
    }
    std::array<char, 255> buffer{};
    const int n = os.GetKeyNameTextA(static_cast<std::int32_t>(scanCode << 16), buffer);
    if (n <= 0) return {};
    return os.MultiByteToWideChar(std::string_view(buffer.data(), static_cast<std::size_t>(n)));
}

namespace {

// A stored number that does not fit the 16-bit field counts as a value that cannot be read.
bool ReadNumber(Registry& registry, const char16_t* valueName, std::int16_t& destination) {
    RegData value;
    if (!registry.ReadValue(HkeyCurrentUser(), kSettingsKey, valueName, RegDword, value)) {
        return false;
    }
    const std::int32_t number = std::get<std::int32_t>(value);
    if (number < INT16_MIN || number > INT16_MAX) return false;
    destination = static_cast<std::int16_t>(number);
    return true;
}

}  // namespace

bool ReadHotKeyPair(Registry& registry, int id, std::int16_t& key, std::int16_t& modifiers) {
    const HotKeySetting& setting = HotKeySettingOf(id);
    return ReadNumber(registry, setting.keyValue, key) &&
           ReadNumber(registry, setting.modifierValue, modifiers);
}

Text HotKeys::FailureText(const char16_t* what, int id) {
    return LogMessage(what + DecimalText(fields_.HotKeyMod[id]) + u" + " +
                      KeyDisplayName(text_, fields_.HotKeyCode[id]));
}

bool HotKeys::Register(int id) {
    fields_.HotKeyOk[id] = os_.RegisterHotKey(
        window_, id, static_cast<std::uint32_t>(fields_.HotKeyMod[id]) | extraModifiers_,
        static_cast<std::uint32_t>(fields_.HotKeyCode[id]));
    if (fields_.HotKeyOk[id] != 0) return true;
    if (log_ != nullptr) log_->LogError(FailureText(kRegisterFailed, id));
    return false;
}

bool HotKeys::Unregister(int id) {
    if (os_.UnregisterHotKey(window_, id)) return true;
    if (log_ != nullptr) log_->LogError(FailureText(kUnregisterFailed, id));
    return false;
}

void HotKeys::LoadHotKeys() {
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (!ReadHotKeyPair(registry_, id, fields_.HotKeyCode[id], fields_.HotKeyMod[id])) {
            fields_.HotKeyCode[id] = HotKeySettingOf(id).defaultKey;
            fields_.HotKeyMod[id] = HotKeySettingOf(id).defaultModifiers;
        }
    }
}

void HotKeys::RegisterHotKeys() {
    bool allRegistered = true;
    for (int id = 1; id <= kControllerHotKeyCount; ++id)
        allRegistered = Register(id) && allRegistered;
    if (!allRegistered && log_ != nullptr) log_->StartErrorReporter();
}

void HotKeys::UnregisterHotKeys() {
    bool allUnregistered = true;
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (fields_.HotKeyOk[id] != 0) allUnregistered = Unregister(id) && allUnregistered;
    }
    if (!allUnregistered && log_ != nullptr) log_->StartErrorReporter();
}

void HotKeys::ReloadHotKeys() {
    OneBasedArray<bool, kControllerHotKeyCount> changed;
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        std::int16_t key = 0;
        std::int16_t modifiers = 0;
        if (!ReadHotKeyPair(registry_, id, key, modifiers)) continue;
        if (key != fields_.HotKeyCode[id] || modifiers != fields_.HotKeyMod[id]) {
            changed[id] = true;
            fields_.HotKeyCode[id] = key;
            fields_.HotKeyMod[id] = modifiers;
        }
    }
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (changed[id] && fields_.HotKeyOk[id] != 0 && Unregister(id)) fields_.HotKeyOk[id] = 0;
    }
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (changed[id] && fields_.HotKeyOk[id] == 0) (void)Register(id);
    }
}

}  // namespace zk
