#pragma once
// What the system tells a companion of its desktop's windows: a window that comes, goes, is
// shown or hidden, or comes to the front (out-of-context WinEvents, which a thread gets for the
// windows of its own desktop), and, to a window registered for the shell hook, one that asks for
// attention (HSHELL_FLASH, where the system lets a window register: RegisterShellHookWindow;
// Wine 8 and 10 refuse it). This process's own windows are left out. Nothing comes while the
// desktop rests.

#include <windows.h>

#include <functional>

#include "window/win32_handles.h"

namespace zk::companion {

class WindowEvents {
  public:
    // `changed` gets the window that asks for attention, or nothing when windows changed;
    // `shellHookWindow` (if any) is registered for the shell hook's messages.
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
    UniqueWinEventHook windows_;
    UniqueWinEventHook foreground_;
    // The callback's way back: a herald has one.
    static inline WindowEvents* self_ = nullptr;
};

}  // namespace zk::companion
