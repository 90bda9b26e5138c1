#include "DeskPilot/preview_window.h"

#include <string>

#include "DeskPilot/preview_keys.h"
#include "desktop/companions.h"

namespace zk::companion {
namespace {

constexpr int kTileWidth = 192, kTileHeight = 120, kMargin = 16, kLabel = 28;
constexpr COLORREF kBackground = RGB(32, 36, 44), kText = RGB(235, 238, 242),
                   kMarked = RGB(70, 168, 79), kSelected = RGB(63, 111, 181),
                   kEmpty = RGB(56, 62, 74);

}  // namespace

PreviewWindow::PreviewWindow(int shown, std::function<void(int)> choose)
    : shown_(shown), selected_(shown), choose_(std::move(choose)) {
    for (int d = 1; d <= 4; ++d)
        thumbnails_[d - 1] = std::make_unique<SharedThumbnail>(d);
    WNDCLASSW wc{};
    wc.lpfnWndProc = &PreviewWindow::Procedure;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.lpszClassName = kPreviewClass;
    ::RegisterClassW(&wc);
    const int width = 4 * kTileWidth + 5 * kMargin;
    const int height = kTileHeight + kLabel + 2 * kMargin;
    const int x = (::GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const int y = (::GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    window_ = ::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kPreviewClass, kPreviewCaption,
                                WS_POPUP | WS_BORDER, x, y, width, height, nullptr, nullptr,
                                wc.hInstance, this);
    font_ = ::CreateFontW(-16, 0, 0, 0, FW_SEMIBOLD, 0, 0, 0, DEFAULT_CHARSET, 0, 0,
                          CLEARTYPE_QUALITY, 0, L"Segoe UI");
}

PreviewWindow::~PreviewWindow() {
    if (window_ != nullptr) ::DestroyWindow(window_);
    if (font_ != nullptr) ::DeleteObject(font_);
}

void PreviewWindow::Show() {
    selected_ = shown_;
    ::ShowWindow(window_, SW_SHOW);
    ::SetForegroundWindow(window_);
    ::SetFocus(window_);
    ::InvalidateRect(window_, nullptr, FALSE);
}

void PreviewWindow::Hide() {
    ::ShowWindow(window_, SW_HIDE);
}

void PreviewWindow::Choose(int desktop) {
    Hide();
    choose_(desktop);
}

RECT PreviewWindow::TileRect(int desktop) const {
    const int left = kMargin + (desktop - 1) * (kTileWidth + kMargin);
    return RECT{left, kMargin, left + kTileWidth, kMargin + kTileHeight};
}

LRESULT CALLBACK PreviewWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        ::SetWindowLongPtrW(window, GWLP_USERDATA,
                            reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<PreviewWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || self->window_ != window) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    return self->Handle(message, wParam, lParam);
}

LRESULT PreviewWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN: {
            const PreviewAction action = PreviewKey(static_cast<std::uint32_t>(wParam), selected_);
            if (action.kind == PreviewAction::Select) {
                selected_ = action.desktop;
                ::InvalidateRect(window_, nullptr, FALSE);
            } else if (action.kind == PreviewAction::Choose) {
                Choose(action.desktop);
            } else if (action.kind == PreviewAction::Cancel) {
                Hide();
            }
            return 0;
        }
        case WM_LBUTTONUP: {
            const POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
            for (int d = 1; d <= 4; ++d) {
                const RECT tile = TileRect(d);
                if (::PtInRect(&tile, at)) Choose(d);
            }
            return 0;
        }
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) Hide();  // clicked elsewhere
            return 0;
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return ::DefWindowProcW(window_, message, wParam, lParam);
    }
}

void PreviewWindow::Paint() {
    PAINTSTRUCT ps;
    const HDC dc = ::BeginPaint(window_, &ps);
    RECT client;
    ::GetClientRect(window_, &client);
    const HBRUSH background = ::CreateSolidBrush(kBackground);
    ::FillRect(dc, &client, background);
    ::DeleteObject(background);
    const HGDIOBJ oldFont = ::SelectObject(dc, font_);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, kText);
    for (int d = 1; d <= 4; ++d) {
        RECT tile = TileRect(d);
        const COLORREF frame = d == selected_ ? kSelected : (d == shown_ ? kMarked : kEmpty);
        const HBRUSH frameBrush = ::CreateSolidBrush(frame);
        RECT outer{tile.left - 4, tile.top - 4, tile.right + 4, tile.bottom + 4};
        ::FillRect(dc, &outer, frameBrush);
        ::DeleteObject(frameBrush);
        if (!thumbnails_[d - 1]->Draw(dc, tile)) {
            const HBRUSH empty = ::CreateSolidBrush(kEmpty);
            ::FillRect(dc, &tile, empty);
            ::DeleteObject(empty);
        }
        const std::u16string name = kDesktopNames[d - 1];
        std::wstring label = std::to_wstring(d) + L"  " + std::wstring(name.begin(), name.end());
        if (d == shown_) label += L"  (shown)";
        RECT text{tile.left, tile.bottom + 6, tile.right, tile.bottom + kLabel + 6};
        ::DrawTextW(dc, label.c_str(), -1, &text, DT_CENTER | DT_SINGLELINE | DT_VCENTER);
    }
    ::SelectObject(dc, oldFont);
    ::EndPaint(window_, &ps);
}

}  // namespace zk::companion
