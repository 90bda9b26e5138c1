#include "DeskHerald/tray_icon.h"

#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/win32/wide_text.h"
#include "window/appearance.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr UINT kIconId = 1;

NOTIFYICONDATAW IconData(HWND window) {
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = window;
    data.uID = kIconId;
    return data;
}

}  // namespace

TrayIcon::TrayIcon(int desk)
    : desk_(desk), taskbarCreated_(::RegisterWindowMessageW(L"TaskbarCreated")) {
    CreateWindowOf(kTrayClass, WS_EX_TOOLWINDOW, L"Zelkova2 tray", WS_POPUP, RECT{0, 0, 0, 0});
    // Windows of other privileges may tell it that the taskbar is back.
    ::ChangeWindowMessageFilterEx(Window(), taskbarCreated_, MSGFLT_ALLOW, nullptr);
}

TrayIcon::~TrayIcon() {
    if (watching_ == this) watching_ = nullptr;
    if (!added_) return;
    NOTIFYICONDATAW data = IconData(Window());
    ::Shell_NotifyIconW(NIM_DELETE, &data);
}

void TrayIcon::Attach(Herald& herald) {
    herald_ = &herald;
    Update();
}

// The number, in the desktop's colour, drawn for this screen's DPI: never a stretched bitmap.
UniqueIcon TrayIcon::Render(int size) {
    const int big = size * kSupersample;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), big, -big, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const UniqueBitmap glyphBitmap(
        ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const UniqueMemoryDc dc(::CreateCompatibleDC(nullptr));
    if (!glyphBitmap || !dc) return {};
    std::vector<std::uint8_t> glyph(static_cast<std::size_t>(big) * big);
    {
        const Selection canvas(dc.get(), glyphBitmap.get());
        const UniqueFont font(::CreateFontW(-big * 3 / 4, 0, 0, 0, FW_BOLD, 0, 0, 0,
                                            DEFAULT_CHARSET, 0, 0, ANTIALIASED_QUALITY, 0,
                                            L"Segoe UI"));
        const Selection text(dc.get(), font.get());
        ::SetBkColor(dc.get(), RGB(0, 0, 0));
        ::SetTextColor(dc.get(), RGB(255, 255, 255));
        RECT all{0, 0, big, big};
        const wchar_t digit[2] = {static_cast<wchar_t>(L'0' + desk_), 0};
        ::ExtTextOutW(dc.get(), 0, 0, ETO_OPAQUE, &all, L"", 0, nullptr);
        ::DrawTextW(dc.get(), digit, 1, &all, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        ::GdiFlush();
        const auto* pixels = static_cast<const std::uint32_t*>(bits);
        for (std::size_t i = 0; i < glyph.size(); ++i)
            glyph[i] = static_cast<std::uint8_t>((pixels[i] >> 8) & 0xFF);
    }
    const std::vector<std::uint32_t> image = TrayIconPixels(size, desk_, glyph, herald_->HasNews());
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size;
    void* colourBits = nullptr;
    const UniqueBitmap colour(
        ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &colourBits, nullptr, 0));
    const UniqueBitmap mask(::CreateBitmap(size, size, 1, 1, nullptr));
    if (!colour || !mask) return {};
    std::memcpy(colourBits, image.data(), image.size() * sizeof image[0]);
    ICONINFO icon{TRUE, 0, 0, mask.get(), colour.get()};
    return UniqueIcon(::CreateIconIndirect(&icon));
}

void TrayIcon::Update() {
    if (herald_ == nullptr) return;
    const UINT dpi = ::GetDpiForWindow(Window());
    icon_ = Render(::GetSystemMetricsForDpi(SM_CXSMICON, dpi));
    NOTIFYICONDATAW data = IconData(Window());
    data.uFlags = NIF_ICON | NIF_TIP | NIF_MESSAGE | NIF_SHOWTIP;
    data.uCallbackMessage = kTrayMessage;
    data.hIcon = icon_.get();
    const Text tip = herald_->Tooltip();
    // The tray window carries the tooltip as its caption too: what a screen reader, or a test,
    // can ask the window for.
    ::SetWindowTextW(Window(), W(tip));
    const std::size_t n = std::min(tip.size(), std::size(data.szTip) - 1);
    std::memcpy(data.szTip, tip.data(), n * sizeof(wchar_t));
    if (added_ && ::Shell_NotifyIconW(NIM_MODIFY, &data)) return;
    added_ = ::Shell_NotifyIconW(NIM_ADD, &data) != FALSE;
    if (!added_) return;  // no taskbar yet: TaskbarCreated adds it
    // Version 4: a click or Enter and Space (Win+B, then the arrows) are NIN_SELECT and
    // NIN_KEYSELECT, the right button, Shift+F10 and the menu key WM_CONTEXTMENU with the icon's
    // anchor in wParam; the event is lParam's low word.
    data.uVersion = NOTIFYICON_VERSION_4;
    ::Shell_NotifyIconW(NIM_SETVERSION, &data);
}

void TrayIcon::WatchWindows(bool on) {
    if (!on) {
        events_.reset();
    } else if (!events_) {
        events_.emplace(Window(), [this](HWND flashed) {
            if (herald_ != nullptr) herald_->WindowsChanged(reinterpret_cast<Hwnd>(flashed));
        });
    }
}

void TrayIcon::ShowMenu(POINT at) {
    const UniqueMenu menu(::CreatePopupMenu());
    for (const TrayMenuItem& item : herald_->Menu()) {
        if (item.separatorBefore) ::AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(menu.get(), MF_STRING | (item.checked ? MF_CHECKED : 0),
                      static_cast<UINT_PTR>(item.command), W(item.label));
    }
    ::SetMenuDefaultItem(menu.get(), static_cast<UINT>(TrayCommand::Preview), FALSE);
    ::SetForegroundWindow(Window());  // so that the menu closes when the user clicks elsewhere
    const UINT chosen = static_cast<UINT>(::TrackPopupMenuEx(
        menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, at.x, at.y, Window(), nullptr));
    ::PostMessageW(Window(), WM_NULL, 0, 0);
    if (chosen != 0) herald_->Command(static_cast<TrayCommand>(chosen));
}

// Where the icon is, when the notification area says (it may not); else it lies within its size
// of the point where the pointer was seen over it.
void TrayIcon::WatchWheel(bool pointerSeenOverIcon) {
    POINT at{};
    if (!::GetCursorPos(&at)) return;
    NOTIFYICONIDENTIFIER icon{sizeof icon, Window(), kIconId, {}};
    RECT area{};
    if (SUCCEEDED(::Shell_NotifyIconGetRect(&icon, &area))) {
        if (!::PtInRect(&area, at)) return;
        wheel_.PointerOver({(area.left + area.right) / 2, (area.top + area.bottom) / 2},
                           std::max(area.right - area.left, area.bottom - area.top) / 2);
    } else if (pointerSeenOverIcon) {
        wheel_.PointerOver({at.x, at.y},
                           ::GetSystemMetricsForDpi(SM_CXSMICON, ::GetDpiForWindow(Window())));
    } else {
        return;
    }
    watching_ = this;
    if (!hook_) {
        hook_.reset(::SetWindowsHookExW(WH_MOUSE_LL, MouseHook, ::GetModuleHandleW(nullptr), 0));
    }
}

void TrayIcon::WatchIfPointerOver() {
    WatchWheel(false);
}

// Called on this thread, between its messages, for every move and turn of the mouse on this
// desktop: it decides at once and leaves the rest to the window, for a hook that keeps the
// mouse waiting is skipped by the system (LowLevelMouseProc, Remarks).
LRESULT CALLBACK TrayIcon::MouseHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && watching_ != nullptr && watching_->wheel_.Watching()) {
        const auto& mouse = *reinterpret_cast<const MSLLHOOKSTRUCT*>(lParam);
        const MousePoint at{mouse.pt.x, mouse.pt.y};
        TrayWheel::Turn turn = TrayWheel::Turn::None;
        if (wParam == WM_MOUSEWHEEL) {
            turn = watching_->wheel_.Wheel(at, static_cast<short>(HIWORD(mouse.mouseData)));
            // The icon of the desktop shown next watches from here on.
            if (turn != TrayWheel::Turn::None) watching_->wheel_.Stop();
        } else if (wParam == WM_MOUSEMOVE) {
            (void)watching_->wheel_.Moved(at);
        }
        if (turn != TrayWheel::Turn::None || !watching_->wheel_.Watching()) {
            ::PostMessageW(watching_->Window(), kWheelMessage, static_cast<WPARAM>(turn), 0);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void TrayIcon::Wheel(TrayWheel::Turn turn) {
    if (turn != TrayWheel::Turn::None) herald_->ShowInOrder(turn == TrayWheel::Turn::Next);
    if (!wheel_.Watching()) hook_.reset();
}

LRESULT TrayIcon::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == taskbarCreated_) {
        added_ = false;
        Update();
        return 0;
    }
    if (events_ && events_->ShellHookMessage(message, wParam, lParam)) return 0;
    if (message == WM_DPICHANGED || message == WM_DISPLAYCHANGE) {
        Update();
        return 0;
    }
    if (message == WM_HOTKEY && herald_ != nullptr) {
        herald_->HotKey(static_cast<int>(wParam));
        return 0;
    }
    if (message == kWheelMessage && herald_ != nullptr) {
        Wheel(static_cast<TrayWheel::Turn>(wParam));
        return 0;
    }
    if (message != kTrayMessage || herald_ == nullptr) return Default(message, wParam, lParam);
    switch (LOWORD(lParam)) {
        case WM_MOUSEMOVE:
            if (!wheel_.Watching()) WatchWheel(true);
            break;
        case NIN_SELECT:
        case NIN_KEYSELECT:
            herald_->Preview();
            break;
        case WM_CONTEXTMENU:
            ShowMenu(POINT{GET_X_LPARAM(wParam), GET_Y_LPARAM(wParam)});
            break;
        default:
            break;
    }
    return 0;
}

}  // namespace zk::companion
