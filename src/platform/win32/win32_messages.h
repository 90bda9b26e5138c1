#pragma once
#include "platform/api/message_api.h"

namespace zk::win32 {

class Win32Messages : public virtual MessageApi {
  public:
    bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    int GetMessageW(Msg& message) override;
    bool PeekMessageW(Msg& message) override;
    bool TranslateMessage(const Msg& message) override;
    Lresult DispatchMessageW(const Msg& message) override;
    void PostQuitMessage(int exitCode) override;
    std::uint32_t MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                            std::uint32_t milliseconds,
                                            std::uint32_t wakeMask) override;
    std::uintptr_t SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) override;
    bool KillTimer(Hwnd window, std::uintptr_t id) override;
};

}  // namespace zk::win32
