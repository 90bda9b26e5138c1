#include "shared/hotkeys_in_force.h"

#include "hotkeys/hotkeys.h"
#include "shared/controller_link.h"
#include "signals/shared_state.h"

namespace zk::companion {
namespace {

constexpr std::int16_t kModifierBits = ModAlt | ModControl | ModShift | ModWin;

}  // namespace

HotKeyCombo DefaultHotKey(int id) {
    return {HotKeySettingOf(id).defaultModifiers, HotKeySettingOf(id).defaultKey};
}

HotKeyCombo LaptopHotKey(int id) {
    return {HotKeySettingOf(id).defaultModifiers, HotKeySettingOf(id).laptopKey};
}

bool NamesAKey(const HotKeyCombo& combo) {
    return combo.key >= 1 && combo.key <= 254 && (combo.modifiers & ~kModifierBits) == 0;
}

std::optional<std::array<HotKeyCombo, kControllerHotKeyCount>> PublishedHotKeys(KernelApi& os) {
    for (const std::uint32_t id :
         TryControllerProcessIds(os).value_or(std::vector<std::uint32_t>{})) {
        SharedState state(os, id);
        const SharedBlock& block = state.Block();
        if (block.hotKeysPublished != 1) continue;
        std::array<HotKeyCombo, kControllerHotKeyCount> pairs;
        for (int i = 0; i < kControllerHotKeyCount; ++i)
            pairs[i] = {block.hotKeyModifiers[i], block.hotKeyCodes[i]};
        return pairs;
    }
    return std::nullopt;
}

std::array<HotKeyStatus, kAllHotKeyCount> ReadHotKeyStatus(KernelApi& os, Registry& registry) {
    std::array<HotKeyStatus, kAllHotKeyCount> status;
    const auto published = PublishedHotKeys(os);
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        HotKeyStatus& s = status[id - 1];
        s.isStored = ReadHotKeyPair(registry, id, s.stored.key, s.stored.modifiers);
        if (!s.isStored) s.stored = DefaultHotKey(id);
        if (published && IsControllerHotKeyId(id)) s.inForce = (*published)[id - 1];
    }
    return status;
}

HotKeyPairs HotKeysAsTheyAre(KernelApi& os, Registry& registry) {
    HotKeyPairs pairs;
    const auto status = ReadHotKeyStatus(os, registry);
    for (int i = 0; i < kAllHotKeyCount; ++i)
        pairs[i] = status[i].inForce.value_or(status[i].stored);
    return pairs;
}

std::vector<int> HotKeysNamingNoKey(KernelApi& os, Registry& registry) {
    std::vector<int> ids;
    const auto status = ReadHotKeyStatus(os, registry);
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const HotKeyStatus& s = status[id - 1];
        if (!NamesAKey(s.stored) || (s.inForce && !NamesAKey(*s.inForce))) ids.push_back(id);
    }
    return ids;
}

// The controller describes a hotkey as "<modifiers> + <the layout's key name>".
int HotKeyIdInLogEntry(TextApi& os, const std::string& entry, const HotKeyPairs& pairs) {
    for (const char16_t* what : {kRegisterFailed, kUnregisterFailed}) {
        const std::string marker = AsciiText(what);
        const auto at = entry.find(marker);
        if (at == std::string::npos) continue;
        const Text described = os.MultiByteToWideChar(entry.substr(at + marker.size()));
        for (int id = 1; id <= kAllHotKeyCount; ++id) {
            const HotKeyCombo& c = pairs[id - 1];
            if (described == DecimalText(c.modifiers) + u" + " + KeyDisplayName(os, c.key))
                return id;
        }
    }
    return 0;
}

Text ExplainLogEntry(TextApi& os, const std::string& entry, const HotKeyPairs& pairs) {
    Text text = os.MultiByteToWideChar(entry);
    if (const int id = HotKeyIdInLogEntry(os, entry, pairs)) {
        const std::string named =
            std::string(HotKeySettingOf(id).name) + " (" + FormatHotKey(pairs[id - 1]) + ")";
        text += u" \u2014 " + Text(named.begin(), named.end());
    }
    return text;
}

}  // namespace zk::companion
