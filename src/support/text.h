#pragma once
// Small conversions the modules share.

#include <cstdint>
#include <string>

namespace zk {

// Text is UTF-16 on both platforms; Ansi is text in the system's default ANSI code page.
using Text = std::u16string;
using Ansi = std::string;

// A number's decimal digits, with a leading "-" when negative ("920", "-2147478988").
[[nodiscard]] Text DecimalText(std::int64_t value);
// Text for a narrow message: characters outside ASCII become '?'.
[[nodiscard]] std::string AsciiText(const Text& text);
// The text in UTF-8 (an unpaired surrogate becomes U+FFFD).
[[nodiscard]] std::string Utf8Text(const Text& text);
// UTF-8 as text (a byte that begins no character, or a sequence cut short, becomes U+FFFD).
[[nodiscard]] Text TextFromUtf8(const std::string& utf8);

}  // namespace zk
