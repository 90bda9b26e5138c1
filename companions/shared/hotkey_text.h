#pragma once
// Hotkeys as people write them: "Ctrl+Alt+Num 2", "Ctrl+Shift+F9". Modifiers in the order
// Ctrl, Alt, Shift, Win; keys by their names on a US keyboard.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zk::companion {

struct HotKeyCombo {
    std::int16_t modifiers = 0;  // as RegisterHotKey takes them
    std::int16_t key = 0;        // virtual-key code
    friend bool operator==(const HotKeyCombo&, const HotKeyCombo&) = default;
};

std::string FormatHotKey(const HotKeyCombo& combo);
// The keys that have a name here, by virtual-key code: what a user can pick from a list.
std::vector<std::pair<std::int16_t, std::string>> NamedKeys();

// Accepts the formatted text in any case and spacing, and a few other names ("NumPad2",
// "Return", "Escape", "Del", "PageUp"). On failure `error` says why.
std::optional<HotKeyCombo> TryParseHotKey(std::string_view text, std::string& error);

}  // namespace zk::companion
