// ZelkovaError.exe: shows the newest entries of the error log, newest first (reporter_view.h),
// with buttons to open the log, copy the text and close. A second start refreshes the window
// that is open instead of opening another.
#include <windows.h>

#include <shellapi.h>

#include <cstring>

#include "ZelkovaError/reporter_view.h"
#include "launch/entry_points.h"
#include "platform/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_os.h"
#include "window/appearance.h"
#include "window/win32_handles.h"
#include "window/window_base.h"

using zk::win32::W;

using namespace zk;
using namespace zk::companion;

namespace {

constexpr wchar_t kClass[] = L"Zelkova2ErrorReporter";
constexpr wchar_t kCaption[] = L"Zelkova2 errors";
constexpr UINT kRefresh = WM_APP + 1;
constexpr int kOpenLog = 101, kCopy = 102, kClose = IDCANCEL, kText = 104;

void CopyToClipboard(HWND owner, const std::wstring& text) {
    if (!::OpenClipboard(owner)) return;
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (memory != nullptr) {
        std::memcpy(::GlobalLock(memory), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
        ::GlobalUnlock(memory);
        if (::SetClipboardData(CF_UNICODETEXT, memory) == nullptr) ::GlobalFree(memory);
    }
    ::CloseClipboard();
}

class ReporterWindow final : public WindowBase<ReporterWindow> {
  public:
    explicit ReporterWindow(Os& os) : os_(os) {
        const int dpi = static_cast<int>(::GetDpiForSystem());
        CreateWindowOf(kClass, 0, kCaption, WS_OVERLAPPEDWINDOW,
                       RECT{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + Scale(640, dpi),
                            CW_USEDEFAULT + Scale(400, dpi)},
                       nullptr, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    }

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
            case WM_CREATE:
                Build();
                return 0;
            case WM_SIZE:
                LayOut();
                return 0;
            case WM_DPICHANGED: {
                const auto* r = reinterpret_cast<const RECT*>(lParam);
                ::SetWindowPos(Window(), nullptr, r->left, r->top, r->right - r->left,
                               r->bottom - r->top, SWP_NOZORDER | SWP_NOACTIVATE);
                SetFonts();
                return 0;
            }
            case kRefresh:
                Refresh();
                BringForward(static_cast<int>(wParam));
                return 0;
            case WM_COMMAND:
                return Command(LOWORD(wParam)) ? 0 : Default(message, wParam, lParam);
            case WM_DESTROY:
                ::PostQuitMessage(0);
                return 0;
            default:
                return Default(message, wParam, lParam);
        }
    }

    // The dialog manager moves the focus with Tab and presses the buttons with their keys.
    [[nodiscard]] bool IsDialogMessage(MSG& message) {
        return ::IsDialogMessageW(Window(), &message) != FALSE;
    }

  private:
    void Build() {
        const HINSTANCE instance = ::GetModuleHandleW(nullptr);
        text_ = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                                  WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE |
                                      ES_READONLY | ES_AUTOVSCROLL,
                                  0, 0, 0, 0, Window(), reinterpret_cast<HMENU>(kText), instance,
                                  nullptr);
        const wchar_t* labels[] = {L"&Open log file", L"&Copy", L"Close"};
        const int ids[] = {kOpenLog, kCopy, kClose};
        for (int i = 0; i < 3; ++i) {
            buttons_[i] = ::CreateWindowExW(
                0, L"BUTTON", labels[i],
                WS_CHILD | WS_VISIBLE | WS_TABSTOP | (i == 2 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), 0,
                0, 0, 0, Window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(ids[i])), instance,
                nullptr);
        }
        SetFonts();
        Refresh();
    }

    void SetFonts() {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                     ::GetDpiForWindow(Window()));
        font_.reset(::CreateFontIndirectW(&metrics.lfMessageFont));
        for (HWND child : {text_, buttons_[0], buttons_[1], buttons_[2]})
            ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
        LayOut();
    }

    void LayOut() {
        if (text_ == nullptr) return;
        RECT client;
        ::GetClientRect(Window(), &client);
        const int dpi = static_cast<int>(::GetDpiForWindow(Window()));
        const int margin = Scale(10, dpi), width = Scale(110, dpi), height = Scale(28, dpi);
        const int bottom = client.bottom - margin - height;
        ::MoveWindow(text_, margin, margin, client.right - 2 * margin, bottom - 2 * margin, TRUE);
        for (int i = 0; i < 3; ++i) {
            ::MoveWindow(buttons_[i], client.right - (3 - i) * (width + margin), bottom, width,
                         height, TRUE);
        }
    }

    // A second start asked for the reporter: shown as it was asked to be. The controller asks
    // for it minimised and then it only flashes; a user's request brings it to the front.
    void BringForward(int show) {
        if (show == SW_SHOWMINIMIZED || show == SW_SHOWMINNOACTIVE || show == SW_MINIMIZE) {
            ::FlashWindow(Window(), TRUE);
            return;
        }
        if (::IsIconic(Window())) ::ShowWindow(Window(), SW_RESTORE);
        if (!::SetForegroundWindow(Window())) ::FlashWindow(Window(), TRUE);
    }

    void Refresh() {
        const ReporterView view = MakeReporterView(os_);
        logPath_ = view.logPath;
        ::SetWindowTextW(text_, W(view.text));
    }

    bool Command(int id) {
        switch (id) {
            case kOpenLog:
                ::ShellExecuteW(Window(), L"open", W(logPath_), nullptr, nullptr, SW_SHOWNORMAL);
                return true;
            case kCopy: {
                const int length = ::GetWindowTextLengthW(text_);
                std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
                ::GetWindowTextW(text_, text.data(), length + 1);
                text.resize(static_cast<std::size_t>(length));
                CopyToClipboard(Window(), text);
                return true;
            }
            case kClose:
                ::DestroyWindow(Window());
                return true;
            default:
                return false;
        }
    }

    Os& os_;
    HWND text_ = nullptr;
    HWND buttons_[3] = {};
    UniqueFont font_;
    Text logPath_;
};

}  // namespace

ZK_ENTRY int ZkZelkovaError(int show) {
    Win32Os os;
    ProcessContext context(os);
    // One reporter a desktop: a later start on the same desktop refreshes the open one, which
    // is found there (a window of another desktop cannot be found, nor shown from here).
    const Text desktop = os.GetUserObjectInformationW(os.GetThreadDesktop(os.GetCurrentThreadId()));
    UniqueKernelHandle single(
        os, ::CreateMutexW(nullptr, FALSE, W(u"Local\\Zelkova2ErrorReporter." + desktop)));
    if (::GetLastError() == ERROR_ALREADY_EXISTS) {
        for (int i = 0; i < 40; ++i) {  // the first one may still be making its window
            if (const HWND open = ::FindWindowW(kClass, nullptr)) {
                DWORD owner = 0;
                ::GetWindowThreadProcessId(open, &owner);
                ::AllowSetForegroundWindow(owner);  // the right this start was given, passed on
                ::SendMessageW(open, kRefresh, static_cast<WPARAM>(show), 0);
                break;
            }
            ::Sleep(50);
        }
        return 0;
    }
    ReporterWindow reporter(os);
    if (reporter.Window() == nullptr) return 1;
    ::ShowWindow(reporter.Window(), show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (reporter.IsDialogMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}
