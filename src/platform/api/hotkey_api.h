#pragma once
// user32: hotkeys, and keyboard input typed as the user would.

#include "platform/api/system_api.h"

namespace zk {

class HotKeyApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                                      std::uint32_t virtualKey) = 0;
    [[nodiscard]] virtual bool UnregisterHotKey(Hwnd window, int id) = 0;
    // Types keys as the user would; the number of inputs inserted (0 on failure).
    [[nodiscard]] virtual std::uint32_t SendInput(std::span<const KeyInput> keys) = 0;
};

}  // namespace zk
