#include "resident/companion_args.h"

#include <vector>

#include "vocabulary/desktops.h"
#include "vocabulary/event_names.h"

namespace zk::companion {
namespace {

// A desktop's number, or the controller's block, which the bridge serves.
bool ServedBlock(std::uint32_t number) {
    return number == static_cast<std::uint32_t>(kControllerBlock) ||
           (number >= 1 && number <= static_cast<std::uint32_t>(kDesktopCount));
}

std::vector<std::u16string_view> Words(std::u16string_view line) {
    std::vector<std::u16string_view> words;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == u' ' || line[i] == u'\t'))
            ++i;
        const std::size_t start = i;
        while (i < line.size() && line[i] != u' ' && line[i] != u'\t')
            ++i;
        if (i > start) words.push_back(line.substr(start, i - start));
    }
    return words;
}

// A decimal number of at most nine digits, or nothing.
bool Number(std::u16string_view word, std::uint32_t& value) {
    if (word.empty() || word.size() > 9) return false;
    value = 0;
    for (const char16_t c : word) {
        if (c < u'0' || c > u'9') return false;
        value = value * 10 + static_cast<std::uint32_t>(c - u'0');
    }
    return true;
}

}  // namespace

// The program's own path may come first (when a shell started it); the numbers come last.
CompanionArgs ParseCompanionArgs(std::u16string_view commandLine) {
    const auto words = Words(commandLine);
    CompanionArgs args;
    std::uint32_t desk = 0, controller = 0;
    const std::size_t n = words.size();
    if (n >= 2 && Number(words[n - 2], desk) && ServedBlock(desk) &&
        Number(words[n - 1], controller) && controller != 0) {
        args.desk = static_cast<int>(desk);
        args.controllerId = controller;
    } else if (n >= 1 && Number(words[n - 1], desk) && ServedBlock(desk)) {
        args.desk = static_cast<int>(desk);
    }
    return args;
}

Text CompanionCommandLine(int desk, std::uint32_t controllerId) {
    return u" " + DecimalText(desk) + u" " + DecimalText(controllerId);
}

}  // namespace zk::companion
