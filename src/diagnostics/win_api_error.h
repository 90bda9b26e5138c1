#pragma once
// WinAPIError: the system's message text for a Win32 error code.

#include <cstdint>

#include "platform/api/text_api.h"

namespace zk {

// The text exactly as the system gives it, line end included; empty when it has none or when
// it does not fit into 256 characters.
[[nodiscard]] Text ApiErrorText(TextApi& os, std::uint32_t code);

}  // namespace zk
