#include "platform/sim/code_page_1252.h"

#include <array>

namespace zk::sim {
namespace {

// 0x80..0x9F; the five bytes that the code page leaves undefined map to the same code point.
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

Text DecodeCp1252(std::string_view ansi) {
    Text text;
    text.reserve(ansi.size());
    for (const char c : ansi) {
        const auto b = static_cast<unsigned char>(c);
        text.push_back(b >= 0x80 && b < 0xA0 ? kHigh[b - 0x80] : static_cast<char16_t>(b));
    }
    return text;
}

Ansi EncodeCp1252(std::u16string_view text) {
    Ansi ansi;
    ansi.reserve(text.size());
    for (const char16_t c : text) {
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
            ansi.push_back(static_cast<char>(c));
            continue;
        }
        char out = '?';
        for (std::size_t i = 0; i < kHigh.size(); ++i) {
            if (kHigh[i] == c) out = static_cast<char>(0x80 + i);
        }
        ansi.push_back(out);
    }
    return ansi;
}

std::string Utf8(std::u16string_view text) {
    return Utf8Text(Text(text));
}

Text Utf16(std::string_view utf8) {
    Text out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        char32_t c = b;
        int more = 0;
        if (b >= 0xF0) {
            c = b & 0x07;
            more = 3;
        } else if (b >= 0xE0) {
            c = b & 0x0F;
            more = 2;
        } else if (b >= 0xC0) {
            c = b & 0x1F;
            more = 1;
        }
        ++i;
        for (; more > 0 && i < utf8.size(); --more, ++i) {
            c = (c << 6) | (static_cast<unsigned char>(utf8[i]) & 0x3F);
        }
        if (c >= 0x10000) {
            c -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(c));
        }
    }
    return out;
}

}  // namespace zk::sim
