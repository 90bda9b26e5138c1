#include "support/text.h"

namespace zk {

Text DecimalText(std::int64_t value) {
    const std::string digits = std::to_string(value);
    return Text(digits.begin(), digits.end());
}

std::string AsciiText(const Text& text) {
    std::string out;
    out.reserve(text.size());
    for (const char16_t c : text)
        out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    return out;
}

}  // namespace zk
