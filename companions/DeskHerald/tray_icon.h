#pragma once
// The notification-area icon of desktop N: its number drawn at the system's small-icon size for
// the screen's DPI, its tooltip, and its menu. It is added again when the taskbar comes back.
// The wheel over it shows the next desktop or the one before (tray_wheel.h).

#include <windows.h>

#include <optional>

#include "DeskHerald/herald.h"
#include "DeskHerald/tray_wheel.h"
#include "window/win32_handles.h"
#include "window/window_base.h"
#include "window/window_events.h"

namespace zk::companion {

inline constexpr wchar_t kTrayClass[] = L"Zelkova2Tray";
inline constexpr UINT kTrayMessage = WM_APP + 1;
// From the mouse hook: wParam is the wheel's turn, TrayWheel::Turn::None once the pointer left.
inline constexpr UINT kWheelMessage = WM_APP + 2;

class TrayIcon final : public WindowBase<TrayIcon> {
  public:
    explicit TrayIcon(int desk);
    ~TrayIcon();
    void Attach(Herald& herald);
    // Adds the icon, or brings its tooltip up to date.
    void Update();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    // The desktop was just shown: the wheel is watched if the pointer is over the icon already.
    void WatchIfPointerOver();
    // Has the system report the desktop's windows to the herald, or stops it.
    void WatchWindows(bool on);

  private:
    // At the icon's anchor, where the mouse or the keyboard opened it.
    void ShowMenu(POINT at);
    void WatchWheel(bool pointerSeenOverIcon);
    void Wheel(TrayWheel::Turn turn);
    static LRESULT CALLBACK MouseHook(int code, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] UniqueIcon Render(int size);

    int desk_;
    Herald* herald_ = nullptr;
    UINT taskbarCreated_;
    UniqueIcon icon_;
    bool added_ = false;
    TrayWheel wheel_;
    UniqueHook hook_;
    std::optional<WindowEvents> events_;
    // The hook's way back to the icon: a herald has one.
    static inline TrayIcon* watching_ = nullptr;
};

}  // namespace zk::companion
