#include "shared/hotkey_text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>

#include "vocabulary/hotkey_table.h"

namespace zk::companion {
namespace {

const std::map<int, std::string>& KeyNames() {
    static const std::map<int, std::string> names = [] {
        std::map<int, std::string> n = {
            {0x08, "Backspace"},   {0x09, "Tab"},    {0x0D, "Enter"}, {0x13, "Pause"},
            {0x14, "Caps Lock"},   {0x1B, "Esc"},    {0x20, "Space"}, {0x21, "Page Up"},
            {0x22, "Page Down"},   {0x23, "End"},    {0x24, "Home"},  {0x25, "Left"},
            {0x26, "Up"},          {0x27, "Right"},  {0x28, "Down"},  {0x2C, "Print Screen"},
            {0x2D, "Insert"},      {0x2E, "Delete"}, {0x6A, "Num *"}, {0x6B, "Num +"},
            {0x6D, "Num -"},       {0x6E, "Num ."},  {0x6F, "Num /"}, {0x90, "Num Lock"},
            {0x91, "Scroll Lock"}, {0xBA, ";"},      {0xBB, "="},     {0xBC, ","},
            {0xBD, "-"},           {0xBE, "."},      {0xBF, "/"},     {0xC0, "`"},
            {0xDB, "["},           {0xDC, "\\"},     {0xDD, "]"},     {0xDE, "'"}};
        for (int c = '0'; c <= '9'; ++c)
            n[c] = std::string(1, static_cast<char>(c));
        for (int c = 'A'; c <= 'Z'; ++c)
            n[c] = std::string(1, static_cast<char>(c));
        for (int d = 0; d <= 9; ++d)
            n[0x60 + d] = "Num " + std::to_string(d);
        for (int f = 1; f <= 24; ++f)
            n[0x6F + f] = "F" + std::to_string(f);
        return n;
    }();
    return names;
}

// Lower case without blanks: the form in which names are compared.
std::string Folded(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c != ' ') out.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    }
    return out;
}

std::optional<int> KeyByName(std::string_view name) {
    std::string folded = Folded(name);
    static const std::map<std::string, std::string> aliases = {
        {"return", "enter"},      {"escape", "esc"},    {"del", "delete"},
        {"ins", "insert"},        {"pageup", "pageup"}, {"pgup", "pageup"},
        {"pagedown", "pagedown"}, {"pgdn", "pagedown"}, {"back", "backspace"},
        {"add", "num+"},          {"subtract", "num-"}, {"multiply", "num*"},
        {"divide", "num/"},       {"decimal", "num."},  {"plus", "num+"},
        {"prtsc", "printscreen"}};
    if (folded.rfind("numpad", 0) == 0) folded = "num" + folded.substr(6);
    if (const auto alias = aliases.find(folded); alias != aliases.end()) folded = alias->second;
    for (const auto& [key, keyName] : KeyNames()) {
        if (Folded(keyName) == folded) return key;
    }
    return std::nullopt;
}

}  // namespace

std::vector<std::pair<std::int16_t, std::string>> NamedKeys() {
    std::vector<std::pair<std::int16_t, std::string>> keys;
    for (const auto& [key, name] : KeyNames())
        keys.emplace_back(static_cast<std::int16_t>(key), name);
    return keys;
}

std::string FormatHotKey(const HotKeyCombo& combo) {
    std::string text;
    if (combo.modifiers & ModControl) text += "Ctrl+";
    if (combo.modifiers & ModAlt) text += "Alt+";
    if (combo.modifiers & ModShift) text += "Shift+";
    if (combo.modifiers & ModWin) text += "Win+";
    const auto name = KeyNames().find(combo.key);
    if (name != KeyNames().end()) return text + name->second;
    char code[16];
    std::snprintf(code, sizeof code, "key %d", combo.key);
    return text + code;
}

std::optional<HotKeyCombo> TryParseHotKey(std::string_view text, std::string& error) {
    static const std::pair<const char*, std::int16_t> modifiers[] = {
        {"ctrl", ModControl}, {"control", ModControl}, {"alt", ModAlt},
        {"shift", ModShift},  {"win", ModWin},         {"windows", ModWin}};
    HotKeyCombo combo;
    std::string rest(text);
    for (bool more = true; more;) {
        more = false;
        const auto plus = rest.find('+');
        if (plus == std::string::npos || plus + 1 >= rest.size()) break;  // "Num +" ends in one
        const std::string word = Folded(rest.substr(0, plus));
        for (const auto& [name, flag] : modifiers) {
            if (word != name) continue;
            combo.modifiers = static_cast<std::int16_t>(combo.modifiers | flag);
            rest.erase(0, plus + 1);
            more = true;
        }
    }
    if (Folded(rest).empty()) {
        error = "no key in '" + std::string(text) + "'";
        return std::nullopt;
    }
    const auto key = KeyByName(rest);
    if (!key) {
        error = "unknown key '" + rest + "' in '" + std::string(text) + "'";
        return std::nullopt;
    }
    combo.key = static_cast<std::int16_t>(*key);
    return combo;
}

}  // namespace zk::companion
