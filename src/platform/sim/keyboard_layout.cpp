#include "platform/sim/keyboard_layout.h"

#include <map>

namespace zk::sim {

std::uint32_t UsScanCodeOf(std::uint32_t vk) {
    static const std::map<std::uint32_t, std::uint32_t> table = [] {
        std::map<std::uint32_t, std::uint32_t> t = {
            {0x08, 0x0E}, {0x09, 0x0F}, {0x0D, 0x1C}, {0x10, 0x2A}, {0x11, 0x1D}, {0x12, 0x38},
            {0x13, 0x45}, {0x14, 0x3A}, {0x1B, 0x01}, {0x20, 0x39}, {0x21, 0x49}, {0x22, 0x51},
            {0x23, 0x4F}, {0x24, 0x47}, {0x25, 0x4B}, {0x26, 0x48}, {0x27, 0x4D}, {0x28, 0x50},
            {0x2C, 0x54}, {0x2D, 0x52}, {0x2E, 0x53}, {0x5B, 0x5B}, {0x5C, 0x5C}, {0x5D, 0x5D},
            {0x6A, 0x37}, {0x6B, 0x4E}, {0x6D, 0x4A}, {0x6E, 0x53}, {0x6F, 0x35}, {0x7A, 0x57},
            {0x7B, 0x58}, {0x90, 0x45}, {0x91, 0x46}, {0xBA, 0x27}, {0xBB, 0x0D}, {0xBC, 0x33},
            {0xBD, 0x0C}, {0xBE, 0x34}, {0xBF, 0x35}, {0xC0, 0x29}, {0xDB, 0x1A}, {0xDC, 0x2B},
            {0xDD, 0x1B}, {0xDE, 0x28}};
        const char* letters = "QWERTYUIOP";
        for (int i = 0; letters[i]; ++i)
            t[static_cast<std::uint32_t>(letters[i])] = 0x10 + i;
        const char* middle = "ASDFGHJKL";
        for (int i = 0; middle[i]; ++i)
            t[static_cast<std::uint32_t>(middle[i])] = 0x1E + i;
        const char* bottom = "ZXCVBNM";
        for (int i = 0; bottom[i]; ++i)
            t[static_cast<std::uint32_t>(bottom[i])] = 0x2C + i;
        for (std::uint32_t d = 1; d <= 9; ++d)
            t['0' + d] = 0x01 + d;
        t['0'] = 0x0B;
        const std::uint32_t numpad[] = {0x52, 0x4F, 0x50, 0x51, 0x4B, 0x4C, 0x4D, 0x47, 0x48, 0x49};
        for (std::uint32_t n = 0; n < 10; ++n)
            t[0x60 + n] = numpad[n];
        for (std::uint32_t f = 0; f < 10; ++f)
            t[0x70 + f] = 0x3B + f;
        return t;
    }();
    const auto it = table.find(vk);
    return it == table.end() ? 0 : it->second;
}

std::string UsKeyNameOf(std::uint32_t scanCode, bool extended) {
    static const std::map<std::uint32_t, std::string> plain = [] {
        std::map<std::uint32_t, std::string> t = {
            {0x01, "Esc"},     {0x0C, "-"},           {0x0D, "="},     {0x0E, "Backspace"},
            {0x0F, "Tab"},     {0x1A, "["},           {0x1B, "]"},     {0x1C, "Enter"},
            {0x1D, "Ctrl"},    {0x27, ";"},           {0x28, "'"},     {0x29, "`"},
            {0x2A, "Shift"},   {0x2B, "\\"},          {0x33, ","},     {0x34, "."},
            {0x35, "/"},       {0x36, "Right Shift"}, {0x37, "Num *"}, {0x38, "Alt"},
            {0x39, "Space"},   {0x3A, "Caps Lock"},   {0x45, "Pause"}, {0x46, "Scroll Lock"},
            {0x47, "Num 7"},   {0x48, "Num 8"},       {0x49, "Num 9"}, {0x4A, "Num -"},
            {0x4B, "Num 4"},   {0x4C, "Num 5"},       {0x4D, "Num 6"}, {0x4E, "Num +"},
            {0x4F, "Num 1"},   {0x50, "Num 2"},       {0x51, "Num 3"}, {0x52, "Num 0"},
            {0x53, "Num Del"}, {0x54, "Sys Req"},     {0x57, "F11"},   {0x58, "F12"}};
        const char* rows[] = {"1234567890", "QWERTYUIOP", "ASDFGHJKL", "ZXCVBNM"};
        const std::uint32_t starts[] = {0x02, 0x10, 0x1E, 0x2C};
        for (int r = 0; r < 4; ++r) {
            for (int i = 0; rows[r][i]; ++i)
                t[starts[r] + i] = std::string(1, rows[r][i]);
        }
        for (int f = 0; f < 10; ++f)
            t[0x3B + f] = "F" + std::to_string(f + 1);
        return t;
    }();
    static const std::map<std::uint32_t, std::string> extendedKeys = {
        {0x1C, "Num Enter"},     {0x1D, "Right Ctrl"}, {0x35, "Num /"},
        {0x37, "Prnt Scrn"},     {0x38, "Right Alt"},  {0x45, "Num Lock"},
        {0x46, "Break"},         {0x47, "Home"},       {0x48, "Up"},
        {0x49, "Page Up"},       {0x4B, "Left"},       {0x4D, "Right"},
        {0x4F, "End"},           {0x50, "Down"},       {0x51, "Page Down"},
        {0x52, "Insert"},        {0x53, "Delete"},     {0x5B, "Left Windows"},
        {0x5C, "Right Windows"}, {0x5D, "Application"}};
    const auto& table = extended ? extendedKeys : plain;
    const auto it = table.find(scanCode & 0xFF);
    return it == table.end() ? std::string() : it->second;
}

}  // namespace zk::sim
