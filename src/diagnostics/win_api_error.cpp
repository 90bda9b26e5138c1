#include "diagnostics/win_api_error.h"

#include <array>

namespace zk {

namespace {
constexpr std::uint32_t kFromSystemIgnoreInserts = 0x1200;
constexpr std::size_t kBufferChars = 256;
}  // namespace

Text ApiErrorText(TextApi& os, std::uint32_t code) {
    std::array<char16_t, kBufferChars> buffer{};
    const std::uint32_t n = os.FormatMessageW(kFromSystemIgnoreInserts, code, 0, buffer);
    return n > 0 ? Text(buffer.data(), n) : Text();
}

}  // namespace zk
