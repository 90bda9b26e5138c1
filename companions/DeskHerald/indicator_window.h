#pragma once
// A brief "Desktop N" shown in the middle of the screen when desktop N becomes the shown one.
// It never takes the focus and goes away by itself after about a second.

#include <windows.h>

namespace zk::companion {

inline constexpr wchar_t kIndicatorClass[] = L"Zelkova2Indicator";

class IndicatorWindow {
  public:
    explicit IndicatorWindow(int desktop);
    ~IndicatorWindow();
    void Show();

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    HFONT font_ = nullptr;
};

}  // namespace zk::companion
