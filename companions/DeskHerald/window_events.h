#pragma once
// What the system tells the herald of its desktop's windows: a window that comes, goes, or is
// shown or hidden (out-of-context WinEvents, which a thread gets for the windows of its own
// desktop), and one that asks for attention (the shell hook's HSHELL_FLASH, where the system
// lets a window register for it: RegisterShellHookWindow; Wine 8 and 10 refuse it, so there
// only a window's coming is seen). This process's own windows are left out.

#include <windows.h>

#include <functional>

#include "window/win32_handles.h"

namespace zk::companion {

class WindowEvents {
  public:
    // `changed` gets the window that asks for attention, or nothing when windows changed.
    WindowEvents(HWND shellHookWindow, std::function<void(HWND flashed)> changed);
    ~WindowEvents();
    WindowEvents(const WindowEvents&) = delete;
    WindowEvents& operator=(const WindowEvents&) = delete;

    // A message of the shell hook's window: whether it was the shell hook's.
    bool ShellHookMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    static void CALLBACK WinEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child,
                                  DWORD, DWORD);

    HWND window_;
    std::function<void(HWND)> changed_;
    UINT shellHookMessage_;
    bool shellHook_ = false;
    UniqueWinEventHook hook_;
    // The callback's way back: a herald has one.
    static inline WindowEvents* self_ = nullptr;
};

}  // namespace zk::companion
