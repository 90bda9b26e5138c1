#pragma once
// The monitor where the user works: the one that holds the foreground window (the primary one
// when there is none), as a rectangle of the virtual screen. The preview and the banner open
// there, not on the primary monitor alone.

#include <windows.h>

#include "window/appearance.h"

namespace zk::companion {

inline Rect WorkMonitor() {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    const HMONITOR monitor = ::MonitorFromWindow(::GetForegroundWindow(), MONITOR_DEFAULTTOPRIMARY);
    if (!::GetMonitorInfoW(monitor, &info)) {
        return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    }
    return {info.rcWork.left, info.rcWork.top, info.rcWork.right, info.rcWork.bottom};
}

// The whole virtual screen, every monitor: what a picture of the desktop shows.
inline Rect VirtualScreen() {
    const int left = ::GetSystemMetrics(SM_XVIRTUALSCREEN);
    const int top = ::GetSystemMetrics(SM_YVIRTUALSCREEN);
    return {left, top, left + ::GetSystemMetrics(SM_CXVIRTUALSCREEN),
            top + ::GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

}  // namespace zk::companion
