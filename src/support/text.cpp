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

std::string Utf8Text(const Text& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = 0xFFFD;
        }
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (c >> 18)));
            out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

Text TextFromUtf8(const std::string& utf8) {
    Text out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const int more = lead < 0x80    ? 0
                         : lead >= 0xF0 ? 3
                         : lead >= 0xE0 ? 2
                         : lead >= 0xC0 ? 1
                                        : -1;
        std::uint32_t c = more == 0   ? lead
                          : more == 1 ? lead & 0x1F
                          : more == 2 ? lead & 0x0F
                                      : lead & 0x07;
        bool valid =
            more >= 0 && i + static_cast<std::size_t>(more) < utf8.size() + (more == 0 ? 1 : 0);
        for (int k = 1; valid && k <= more; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]);
            valid = (next & 0xC0) == 0x80;
            c = (c << 6) | (next & 0x3F);
        }
        if (!valid || c > 0x10FFFF) {
            out.push_back(0xFFFD);
            ++i;
            continue;
        }
        i += static_cast<std::size_t>(more) + 1;
        if (c >= 0x10000) {
            out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(c));
        }
    }
    return out;
}

}  // namespace zk
