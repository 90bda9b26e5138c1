#pragma once
// user32: hotkeys, and the keyboard: input typed as the user would, keys held, its settings.

#include "platform/api/system_api.h"

namespace zk {

class HotKeyApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                                      std::uint32_t virtualKey) = 0;
    [[nodiscard]] virtual bool UnregisterHotKey(Hwnd window, int id) = 0;
    // Types keys as the user would; the number of inputs inserted (0 on failure).
    [[nodiscard]] virtual std::uint32_t SendInput(std::span<const KeyInput> keys) = 0;
    // Whether a key is down now (the high bit); 0 for a thread not of the input desktop.
    [[nodiscard]] virtual std::int16_t GetAsyncKeyState(int virtualKey) = 0;
    // SystemParametersInfoW for a setting that is a number (SPI_GETKEYBOARDDELAY, ...).
    [[nodiscard]] virtual bool SystemParametersInfoW(std::uint32_t action,
                                                     std::uint32_t& value) = 0;
};

}  // namespace zk
