#pragma once
#include "platform/api/hotkey_api.h"

namespace zk::win32 {

class Win32HotKeys : public virtual HotKeyApi {
  public:
    std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                std::uint32_t virtualKey) override;
    bool UnregisterHotKey(Hwnd window, int id) override;
    std::uint32_t SendInput(std::span<const KeyInput> keys) override;
    std::int16_t GetAsyncKeyState(int virtualKey) override;
    bool SystemParametersInfoW(std::uint32_t action, std::uint32_t& value) override;
};

}  // namespace zk::win32
