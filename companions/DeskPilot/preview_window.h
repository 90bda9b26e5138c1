#pragma once
// The preview of the four desktops: a row of tiles with number, name and picture, the desktop
// shown now marked. Choosing one asks the controller to show it.

#include <windows.h>

#include <array>
#include <functional>
#include <memory>

#include "common/thumbnails.h"

namespace zk::companion {

inline constexpr wchar_t kPreviewClass[] = L"Zelkova2Preview";
inline constexpr wchar_t kPreviewCaption[] = L"Zelkova2 Preview";

class PreviewWindow {
  public:
    // `shown` is the desktop this switcher runs on; `choose` is called with the chosen one.
    PreviewWindow(int shown, std::function<void(int)> choose);
    ~PreviewWindow();
    void Show();
    void Hide();

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint();
    RECT TileRect(int desktop) const;
    void Choose(int desktop);

    int shown_;
    int selected_;
    std::function<void(int)> choose_;
    std::array<std::unique_ptr<SharedThumbnail>, 4> thumbnails_;
    HWND window_ = nullptr;
    HFONT font_ = nullptr;
};

}  // namespace zk::companion
