#include "DeskHerald/indicator_window.h"

#include <string>

namespace zk::companion {
namespace {

constexpr UINT_PTR kHideTimer = 1;
constexpr UINT kShownFor = 1000;
constexpr int kWidth = 280, kHeight = 90;

}  // namespace

IndicatorWindow::IndicatorWindow(int desktop) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = &IndicatorWindow::Procedure;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hbrBackground = ::CreateSolidBrush(RGB(32, 36, 44));
    wc.lpszClassName = kIndicatorClass;
    ::RegisterClassW(&wc);
    const std::wstring caption = L"Desktop " + std::to_wstring(desktop);
    window_ =
        ::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kIndicatorClass,
                          caption.c_str(), WS_POPUP, (::GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2,
                          (::GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2, kWidth, kHeight, nullptr,
                          nullptr, wc.hInstance, nullptr);
    font_ = ::CreateFontW(-36, 0, 0, 0, FW_SEMIBOLD, 0, 0, 0, DEFAULT_CHARSET, 0, 0,
                          CLEARTYPE_QUALITY, 0, L"Segoe UI");
    ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(font_));
}

IndicatorWindow::~IndicatorWindow() {
    if (window_ != nullptr) ::DestroyWindow(window_);
    if (font_ != nullptr) ::DeleteObject(font_);
}

void IndicatorWindow::Show() {
    ::ShowWindow(window_, SW_SHOWNOACTIVATE);
    ::InvalidateRect(window_, nullptr, TRUE);
    ::SetTimer(window_, kHideTimer, kShownFor, nullptr);
}

LRESULT CALLBACK IndicatorWindow::Procedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
    switch (message) {
        case WM_TIMER:
            ::KillTimer(window, kHideTimer);
            ::ShowWindow(window, SW_HIDE);
            return 0;
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            const HDC dc = ::BeginPaint(window, &ps);
            wchar_t caption[32] = {};
            ::GetWindowTextW(window, caption, 32);
            RECT client;
            ::GetClientRect(window, &client);
            const auto font = reinterpret_cast<HFONT>(::GetWindowLongPtrW(window, GWLP_USERDATA));
            const HGDIOBJ old = ::SelectObject(dc, font);
            ::SetBkMode(dc, TRANSPARENT);
            ::SetTextColor(dc, RGB(235, 238, 242));
            ::DrawTextW(dc, caption, -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
            ::SelectObject(dc, old);
            ::EndPaint(window, &ps);
            return 0;
        }
        default:
            return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace zk::companion
