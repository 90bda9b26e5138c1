#pragma once
// user32: the thread's message queue, its waits and its timers.

#include "platform/api/system_api.h"

namespace zk {

class MessageApi : public virtual SystemApi {
  public:
    virtual bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) = 0;
    [[nodiscard]] virtual int GetMessageW(Msg& message) = 0;
    // PeekMessageW with PM_REMOVE.
    [[nodiscard]] virtual bool PeekMessageW(Msg& message) = 0;
    virtual bool TranslateMessage(const Msg& message) = 0;
    virtual Lresult DispatchMessageW(const Msg& message) = 0;
    virtual void PostQuitMessage(int exitCode) = 0;
    // Waits until a handle is signalled (its position, from WaitObject0 or WaitAbandoned0) or
    // input of `wakeMask` is queued (WaitObject0 + the number of handles).
    [[nodiscard]] virtual std::uint32_t MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                                                  std::uint32_t milliseconds,
                                                                  std::uint32_t wakeMask) = 0;
    virtual std::uintptr_t SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) = 0;
    virtual bool KillTimer(Hwnd window, std::uintptr_t id) = 0;
};

}  // namespace zk
