#pragma once
// The notification-area icon of desktop N: its number drawn at the system's small-icon size for
// the screen's DPI, its tooltip, and its menu. It is added again when the taskbar comes back.

#include <windows.h>

#include "DeskHerald/herald.h"
#include "window/win32_handles.h"
#include "window/window_base.h"

namespace zk::companion {

inline constexpr wchar_t kTrayClass[] = L"Zelkova2Tray";
inline constexpr UINT kTrayMessage = WM_APP + 1;

class TrayIcon final : public WindowBase<TrayIcon> {
  public:
    explicit TrayIcon(int desk);
    ~TrayIcon();
    void Attach(Herald& herald);
    // Adds the icon, or brings its tooltip up to date.
    void Update();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void ShowMenu();
    [[nodiscard]] UniqueIcon Render(int size);

    int desk_;
    Herald* herald_ = nullptr;
    UINT taskbarCreated_;
    UniqueIcon icon_;
    bool added_ = false;
};

}  // namespace zk::companion
