// ZelkovaError.exe: shows the newest entries of the error log, newest first, with buttons to
// open the log, copy the text and close. A second start refreshes the window that is open.
#include <windows.h>

#include <shellapi.h>

#include <cstring>
#include <string>
#include <vector>

#include "diagnostics/err_log.h"
#include "platform/win32/win32_os.h"

namespace {

constexpr wchar_t kClass[] = L"Zelkova2ErrorReporter";
constexpr wchar_t kCaption[] = L"Zelkova2 errors";
constexpr wchar_t kNothing[] = L"Nothing has been logged.";
constexpr UINT kRefresh = WM_APP + 1;
constexpr int kOpenLog = 1, kCopy = 2, kClose = 3, kText = 4;
constexpr std::size_t kNewest = 500;

struct Reporter {
    HWND text = nullptr;
    HWND buttons[3] = {};
    HFONT font = nullptr;
};

std::wstring LogPath() {
    zk::Win32Os os;
    const zk::Text path = zk::ErrLog(os).LogFolder() + zk::kLogFileName;
    return std::wstring(path.begin(), path.end());
}

// The log's lines, newest first, as one text; the log is in the ANSI code page.
std::wstring NewestEntries() {
    const HANDLE file =
        ::CreateFileW(LogPath().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    std::string bytes;
    if (file != INVALID_HANDLE_VALUE) {
        char buffer[8192];
        DWORD read = 0;
        while (::ReadFile(file, buffer, sizeof buffer, &read, nullptr) && read > 0) {
            bytes.append(buffer, read);
        }
        ::CloseHandle(file);
    }
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < bytes.size();) {
        const auto end = bytes.find("\r\n", start);
        std::string line = bytes.substr(start, end == std::string::npos ? end : end - start);
        if (!line.empty()) lines.push_back(std::move(line));
        start = end == std::string::npos ? bytes.size() : end + 2;
    }
    if (lines.empty()) return kNothing;
    std::string newestFirst;
    for (std::size_t i = 0; i < lines.size() && i < kNewest; ++i) {
        newestFirst += lines[lines.size() - 1 - i] + "\r\n";
    }
    const int n = ::MultiByteToWideChar(CP_ACP, 0, newestFirst.data(),
                                        static_cast<int>(newestFirst.size()), nullptr, 0);
    std::wstring text(static_cast<std::size_t>(n), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, newestFirst.data(), static_cast<int>(newestFirst.size()),
                          text.data(), n);
    return text;
}

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

void Layout(HWND window, Reporter& r) {
    RECT client;
    ::GetClientRect(window, &client);
    constexpr int margin = 10, buttonWidth = 110, buttonHeight = 28;
    const int bottom = client.bottom - margin - buttonHeight;
    ::MoveWindow(r.text, margin, margin, client.right - 2 * margin, bottom - 2 * margin, TRUE);
    for (int i = 0; i < 3; ++i) {
        ::MoveWindow(r.buttons[i], client.right - (3 - i) * (buttonWidth + margin), bottom,
                     buttonWidth, buttonHeight, TRUE);
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* r = reinterpret_cast<Reporter*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case WM_CREATE: {
            r = static_cast<Reporter*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
            ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(r));
            const HINSTANCE instance = ::GetModuleHandleW(nullptr);
            r->font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
            r->text = ::CreateWindowExW(
                WS_EX_CLIENTEDGE, L"EDIT", NewestEntries().c_str(),
                WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0,
                0, 0, 0, window, reinterpret_cast<HMENU>(kText), instance, nullptr);
            const wchar_t* labels[] = {L"Open log file", L"Copy", L"Close"};
            for (int i = 0; i < 3; ++i) {
                r->buttons[i] = ::CreateWindowExW(
                    0, L"BUTTON", labels[i], WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 0, 0, 0, 0,
                    window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kOpenLog + i)), instance,
                    nullptr);
            }
            for (HWND child : {r->text, r->buttons[0], r->buttons[1], r->buttons[2]}) {
                ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(r->font), TRUE);
            }
            return 0;
        }
        case WM_SIZE:
            if (r != nullptr) Layout(window, *r);
            return 0;
        case kRefresh:
            ::SetWindowTextW(r->text, NewestEntries().c_str());
            ::FlashWindow(window, TRUE);
            return 0;
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case kOpenLog:
                    ::ShellExecuteW(window, L"open", LogPath().c_str(), nullptr, nullptr,
                                    SW_SHOWNORMAL);
                    return 0;
                case kCopy: {
                    const int length = ::GetWindowTextLengthW(r->text);
                    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
                    ::GetWindowTextW(r->text, text.data(), length + 1);
                    text.resize(static_cast<std::size_t>(length));
                    CopyToClipboard(window, text);
                    return 0;
                }
                case kClose:
                    ::DestroyWindow(window);
                    return 0;
                default:
                    break;
            }
            break;
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        default:
            break;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    // One reporter at a time: a later start refreshes the open one.
    const HANDLE single = ::CreateMutexW(nullptr, FALSE, L"Local\\Zelkova2ErrorReporter");
    if (::GetLastError() == ERROR_ALREADY_EXISTS) {
        for (int i = 0; i < 40; ++i) {  // the first one may still be making its window
            if (const HWND open = ::FindWindowW(kClass, nullptr)) {
                ::SendMessageW(open, kRefresh, 0, 0);
                break;
            }
            ::Sleep(50);
        }
        ::CloseHandle(single);
        return 0;
    }
    WNDCLASSW wc{};
    wc.lpfnWndProc = &Procedure;
    wc.hInstance = instance;
    wc.hIcon = ::LoadIconW(instance, L"AAA");
    wc.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kClass;
    ::RegisterClassW(&wc);
    Reporter reporter;
    const HWND window =
        ::CreateWindowExW(0, kClass, kCaption, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                          640, 400, nullptr, nullptr, instance, &reporter);
    if (window == nullptr) return 1;
    ::ShowWindow(window, show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    ::CloseHandle(single);
    return 0;
}
