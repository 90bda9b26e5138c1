#pragma once
// Small conversions the modules share.

#include <cstdint>
#include <string>

#include "platform/os.h"

namespace zk {

// A number's decimal digits, with a leading "-" when negative ("920", "-2147478988").
[[nodiscard]] Text DecimalText(std::int64_t value);
// Text for a narrow message: characters outside ASCII become '?'.
[[nodiscard]] std::string AsciiText(const Text& text);

}  // namespace zk
