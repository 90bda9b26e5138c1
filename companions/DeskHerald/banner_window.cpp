#include "DeskHerald/banner_window.h"

#include "platform/win32/wide_text.h"
#include "resident/switch_guard.h"
#include "window/appearance.h"
#include "window/monitor.h"
#include "window/view_colours.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr UINT_PTR kHideTimer = 1, kLookTimer = 2;
constexpr UINT kShownFor = 1000;

}  // namespace

BannerWindow::BannerWindow(int desk, std::function<bool()> desktopShown, std::function<bool()> gone,
                           std::function<bool()> look)
    : desk_(desk),
      desktopShown_(std::move(desktopShown)),
      gone_(std::move(gone)),
      look_(std::move(look)) {
    CreateWindowOf(kBannerClass, WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE,
                   L"Zelkova2 banner", WS_POPUP, RECT{0, 0, 1, 1});
}

void BannerWindow::Show(const Text& name) {
    text_ = name;
    const UINT dpi = ::GetDpiForWindow(Window());
    const Rect r = BannerRect(static_cast<int>(dpi), WorkMonitor());
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    metrics.lfMessageFont.lfWeight = FW_SEMIBOLD;
    metrics.lfMessageFont.lfHeight = -Scale(30, static_cast<int>(dpi));
    font_.reset(::CreateFontIndirectW(&metrics.lfMessageFont));
    ::SetWindowTextW(Window(), W(text_));
    ::SetWindowPos(Window(), HWND_TOPMOST, r.left, r.top, r.Width(), r.Height(),
                   SWP_NOACTIVATE | SWP_SHOWWINDOW);
    ::InvalidateRect(Window(), nullptr, FALSE);
    ::SetTimer(Window(), kHideTimer, kShownFor, nullptr);
    shownOnInput_ = desktopShown_();
    // A screen reader says the desktop's name (the caption) without the focus moving.
    ::NotifyWinEvent(EVENT_SYSTEM_ALERT, Window(), OBJID_CLIENT, CHILDID_SELF);
}

LRESULT BannerWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_TIMER:
            if (wParam == kLookTimer) {
                if (!look_()) ::KillTimer(Window(), kLookTimer);
                return 0;
            }
            // Where desktops switch, a window hidden on a desktop that is not shown takes the
            // input there under Wine 10: the banner waits until its desktop is shown again.
            if (shownOnInput_ && !desktopShown_()) return 0;
            ::KillTimer(Window(), kHideTimer);
            ::ShowWindow(Window(), SW_HIDE);
            if (gone_()) ::SetTimer(Window(), kLookTimer, SwitchGuard::kLookEvery, nullptr);
            return 0;
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            Paint();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void BannerWindow::Paint() {
    PAINTSTRUCT ps;
    const HDC dc = ::BeginPaint(Window(), &ps);
    RECT client;
    ::GetClientRect(Window(), &client);
    {
        const ViewColours colours = CurrentViewColours();
        const UniqueBrush background(::CreateSolidBrush(Ref(colours.background)));
        ::FillRect(dc, &client, background.get());
        const UniqueBrush stripe(::CreateSolidBrush(Ref(DesktopColour(desk_))));
        RECT edge{0, 0, client.right, Scale(6, static_cast<int>(::GetDpiForWindow(Window())))};
        ::FillRect(dc, &edge, stripe.get());
        const Selection font(dc, font_.get());
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, Ref(colours.text));
        ::DrawTextW(dc, W(text_), -1, &client,
                    DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    }
    ::EndPaint(Window(), &ps);
}

}  // namespace zk::companion
