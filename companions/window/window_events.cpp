#include "window/window_events.h"

#include <utility>

namespace zk::companion {

WindowEvents::WindowEvents(HWND shellHookWindow, std::function<void(HWND flashed)> changed)
    : window_(shellHookWindow),
      changed_(std::move(changed)),
      shellHookMessage_(::RegisterWindowMessageW(L"SHELLHOOK")) {
    self_ = this;
    shellHook_ = window_ != nullptr && ::RegisterShellHookWindow(window_) != FALSE;
    constexpr DWORD kOutOfContext = WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS;
    windows_.reset(::SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_HIDE, nullptr, WinEvent, 0,
                                     0, kOutOfContext));
    foreground_.reset(::SetWinEventHook(EVENT_SYSTEM_FOREGROUND, EVENT_SYSTEM_FOREGROUND, nullptr,
                                        WinEvent, 0, 0, kOutOfContext));
}

WindowEvents::~WindowEvents() {
    if (shellHook_) ::DeregisterShellHookWindow(window_);
    if (self_ == this) self_ = nullptr;
}

bool WindowEvents::ShellHookMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != shellHookMessage_ || shellHookMessage_ == 0) return false;
    const HWND window = reinterpret_cast<HWND>(lParam);
    if (wParam == HSHELL_FLASH) changed_(window);
    if (wParam == HSHELL_WINDOWCREATED || wParam == HSHELL_WINDOWDESTROYED) changed_(nullptr);
    return true;
}

// A window's own events only, not those of the objects inside it; a window destroyed has no
// parent to ask about.
void CALLBACK WindowEvents::WinEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object,
                                     LONG child, DWORD, DWORD) {
    if (self_ == nullptr || object != OBJID_WINDOW || child != CHILDID_SELF) return;
    if (event != EVENT_OBJECT_DESTROY && ::GetAncestor(window, GA_PARENT) != ::GetDesktopWindow())
        return;
    self_->changed_(nullptr);
}

}  // namespace zk::companion
