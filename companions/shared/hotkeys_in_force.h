#pragma once
// The six hotkeys as the user must be told about them: what is stored, what the running Zelkova2
// holds (the controller publishes its pairs), and whether a stored pair names a key at all. The
// controller gives stored pairs to the system unchanged, so a pair that names no key makes a dead
// hotkey that nothing else reports.

#include <array>
#include <optional>

#include "platform/os.h"
#include "settings/registry.h"
#include "shared/hotkey_text.h"
#include "vocabulary/hotkey_table.h"

namespace zk::companion {

using HotKeyPairs = std::array<HotKeyCombo, kAllHotKeyCount>;  // by id, from index 0

struct HotKeyStatus {
    HotKeyCombo stored;                  // the default where no pair can be read
    bool isStored = false;               // false: the default
    std::optional<HotKeyCombo> inForce;  // what the running controller holds (its own hotkeys)
};

[[nodiscard]] HotKeyCombo DefaultHotKey(int id);
// The hotkey for a keyboard without a numeric keypad: Ctrl+Alt+1 to 4 and so on.
[[nodiscard]] HotKeyCombo LaptopHotKey(int id);
// A virtual key (1 to 254) with modifiers from Alt, Ctrl, Shift and Win only.
[[nodiscard]] bool NamesAKey(const HotKeyCombo& combo);
// The controller's published pairs; nothing while no controller runs or it has published none.
[[nodiscard]] std::optional<std::array<HotKeyCombo, kControllerHotKeyCount>> PublishedHotKeys(
    KernelApi& os);
[[nodiscard]] std::array<HotKeyStatus, kAllHotKeyCount> ReadHotKeyStatus(KernelApi& os,
                                                                         Registry& registry);
// What the user meets: the pairs in force, or where none are published the stored ones.
[[nodiscard]] HotKeyPairs HotKeysAsTheyAre(KernelApi& os, Registry& registry);
// The ids whose stored pair, or pair in force, names no key.
[[nodiscard]] std::vector<int> HotKeysNamingNoKey(KernelApi& os, Registry& registry);

// The hotkey that a log entry about a failed (un)registration describes, among `pairs`; 0 when
// the entry is about none of them.
[[nodiscard]] int HotKeyIdInLogEntry(TextApi& os, const std::string& entry,
                                     const HotKeyPairs& pairs);
// The entry as the readers show it: where it is about a hotkey, that hotkey is named as the user
// knows it, e.g. "... — desktop 3 (Ctrl+Alt+Num 3)".
[[nodiscard]] Text ExplainLogEntry(TextApi& os, const std::string& entry, const HotKeyPairs& pairs);

}  // namespace zk::companion
