// A stand-in program for tests under Wine: it appends how it was started (its command line,
// desktop and window title) as one line to the file named by ZK_RECORD_FILE,
// then ends, or waits first for as many milliseconds as ZK_RECORDER_LINGER_MS says. It can also
// play another program of the user's desktop:
//   ZK_HOLD_HOTKEY="modifiers,key"  registers that hotkey on a window of its own desktop;
//   ZK_TYPE="key key ..."           types the keys (decimal virtual keys) from its desktop;
//   ZK_TYPE_INTO="class"            types them once the foreground window is of that class, as
//                                   a user waits for a window to take the keyboard (5 s at most);
//   ZK_HOLD_MS=n                    holds them down that long, the last one repeating as the
//                                   keyboard repeats a held key (after 500 ms, every 33 ms),
//                                   into whichever desktop is the input desktop then;
//   ZK_HOTKEY_WAIT_MS=n             waits that long for its hotkey to be pressed;
//   ZK_WHEEL="class message delta"  points at the tray icon of its desktop's window of that class
//                                   as the notification area does (the icon's message with
//                                   WM_MOUSEMOVE, the pointer where the area says the icon
//                                   is), then turns the mouse wheel by delta;
//   ZK_QUERY_END_SESSION=1          asks every window of its desktop, as the system does at a
//                                   log-off, whether the session may end (WM_QUERYENDSESSION),
//                                   and prints each window that says no or does not answer;
//   ZK_WINDOW="title"               shows a window with that title, minimised, and waits up to
//                                   ZK_FOREGROUND_WAIT_MS for it to be restored in front
//                                   (ZK_WINDOW_STAYS=1: stays that long whatever happens).
// Its exit code adds 1 when it holds the hotkey, 2 when the hotkey came, 4 when it could type
// (the keys went down on its desktop), 8 when every window it asked said yes, 16 when its window
// came to the front, 32 when the wheel turned.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::wstring Env(const wchar_t* name) {
    wchar_t value[1024] = {};
    const DWORD n = ::GetEnvironmentVariableW(name, value, 1024);
    return n > 0 && n < 1024 ? std::wstring(value, n) : std::wstring();
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProcW(window, message, wParam, lParam);
}

bool ForegroundIs(const std::wstring& className) {
    for (DWORD waited = 0; waited < 5000; waited += 20) {
        wchar_t name[64] = {};
        const HWND front = ::GetForegroundWindow();
        if (front != nullptr && ::GetClassNameW(front, name, 64) > 0 && className == name) {
            return true;
        }
        ::Sleep(20);
    }
    return false;
}

bool Type(const std::wstring& keys) {
    const std::wstring into = Env(L"ZK_TYPE_INTO");
    if (!into.empty() && !ForegroundIs(into)) return false;
    std::vector<WORD> codes;
    for (std::size_t at = 0; at < keys.size();) {
        std::size_t used = 0;
        codes.push_back(static_cast<WORD>(std::stoul(keys.substr(at), &used)));
        at += used;
        while (at < keys.size() && keys[at] == L' ')
            ++at;
    }
    // Under Wine 10 each desktop keeps its own key state, and the keys that went up after a
    // hotkey showed another desktop went up there: a modifier is still down here. A keyboard
    // would have let it go; so does the stand-in, before it types.
    std::vector<INPUT> inputs;
    for (const WORD modifier : {VK_SHIFT, VK_CONTROL, VK_MENU, VK_LWIN})
        inputs.push_back(INPUT{INPUT_KEYBOARD, {.ki = {modifier, 0, KEYEVENTF_KEYUP, 0, 0}}});
    (void)::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    inputs.clear();
    for (const WORD code : codes)
        inputs.push_back(INPUT{INPUT_KEYBOARD, {.ki = {code, 0, 0, 0, 0}}});
    bool typed = ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) ==
                 inputs.size();
    const std::wstring hold = Env(L"ZK_HOLD_MS");
    if (!hold.empty() && !codes.empty()) {
        // The keyboard goes on repeating when the desktop changes under the held keys: the
        // repeats, and the keys still held, come from the desktop shown then.
        INPUT again{INPUT_KEYBOARD, {.ki = {codes.back(), 0, 0, 0, 0}}};
        for (DWORD held = 500; held < std::stoul(hold); held += 33) {
            ::Sleep(held == 500 ? 500 : 33);
            if (::SendInput(1, &again, sizeof(INPUT)) == 1) continue;
            ::SetThreadDesktop(::OpenInputDesktop(0, FALSE, GENERIC_ALL));
            ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
        }
    }
    // The keys go up on whichever desktop is the input desktop then, as a keyboard's do: the
    // hotkey may have shown another desktop before they went up.
    inputs.clear();
    for (auto it = codes.rbegin(); it != codes.rend(); ++it)
        inputs.push_back(INPUT{INPUT_KEYBOARD, {.ki = {*it, 0, KEYEVENTF_KEYUP, 0, 0}}});
    const auto up = [&] {
        return ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) ==
               inputs.size();
    };
    if (!up()) {
        ::SetThreadDesktop(::OpenInputDesktop(0, FALSE, GENERIC_ALL));
        (void)up();
    }
    return typed;
}

bool TurnWheelOverIcon(const std::wstring& wheel) {
    const auto space = wheel.find(L' ');
    const auto last = wheel.rfind(L' ');
    const HWND tray = ::FindWindowW(wheel.substr(0, space).c_str(), nullptr);
    if (tray == nullptr) return false;
    NOTIFYICONIDENTIFIER icon{sizeof icon, tray, 1, {}};
    RECT area{};
    if (SUCCEEDED(::Shell_NotifyIconGetRect(&icon, &area))) {
        ::SetCursorPos((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    }
    ::PostMessageW(tray, static_cast<UINT>(std::stoul(wheel.substr(space + 1))), 0, WM_MOUSEMOVE);
    ::Sleep(300);
    INPUT turn{INPUT_MOUSE, {.mi = {0, 0, 0, MOUSEEVENTF_WHEEL, 0, 0}}};
    turn.mi.mouseData = static_cast<DWORD>(std::stol(wheel.substr(last + 1)));
    return ::SendInput(1, &turn, sizeof turn) == 1;
}

// A window that is gone by the time it is asked (a program ending meanwhile) has no say, nor have
// the message-only windows and their parent (of class "Message"), which Wine lists among a
// desktop's windows: Windows neither lists them nor sends them broadcast messages ("Message-Only
// Windows").
BOOL CALLBACK AskToEnd(HWND window, LPARAM lParam) {
    wchar_t name[64] = {};
    ::GetClassNameW(window, name, 64);
    if (std::wstring(name) == L"Message" ||
        ::GetAncestor(window, GA_PARENT) != ::GetDesktopWindow()) {
        return TRUE;
    }
    DWORD_PTR answer = 0;
    const bool asked = ::SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF,
                                             SMTO_NORMAL, 5000, &answer) != 0;
    if (asked ? answer == 0 : ::IsWindow(window) != FALSE) {
        std::printf("%ls %s\n", name, asked ? "said no" : "did not answer");
        *reinterpret_cast<bool*>(lParam) = false;
    }
    return TRUE;
}

bool SessionMayEnd() {
    bool yes = true;
    ::EnumDesktopWindows(::GetThreadDesktop(::GetCurrentThreadId()), &AskToEnd,
                         reinterpret_cast<LPARAM>(&yes));
    return yes;
}

bool CameToTheFront(const std::wstring& title, DWORD within) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = &Procedure;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = L"ZkStandInWindow";
    ::RegisterClassW(&wc);
    const HWND window =
        ::CreateWindowExW(0, wc.lpszClassName, title.c_str(), WS_OVERLAPPEDWINDOW, 40, 40, 320, 200,
                          nullptr, nullptr, wc.hInstance, nullptr);
    ::ShowWindow(window, SW_SHOWMINNOACTIVE);
    const DWORD until = ::GetTickCount() + within;
    const bool stay = !Env(L"ZK_WINDOW_STAYS").empty();
    bool came = false;
    MSG message;
    while (static_cast<LONG>(until - ::GetTickCount()) > 0) {
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
        came = came || (::GetForegroundWindow() == window && !::IsIconic(window));
        if (came && !stay) return true;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return came;
}

bool HotKeyCame(DWORD within) {
    const DWORD until = ::GetTickCount() + within;
    MSG message;
    while (static_cast<LONG>(until - ::GetTickCount()) > 0) {
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_HOTKEY) return true;
            ::DispatchMessageW(&message);
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return false;
}

}  // namespace

int wmain() {
    int exitCode = 0;
    const std::wstring hold = Env(L"ZK_HOLD_HOTKEY");
    if (!hold.empty()) {
        WNDCLASSW wc{};
        wc.lpfnWndProc = &Procedure;
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.lpszClassName = L"ZkStandIn";
        ::RegisterClassW(&wc);
        const HWND window = ::CreateWindowExW(0, wc.lpszClassName, L"stand-in", WS_POPUP, 0, 0, 1,
                                              1, nullptr, nullptr, wc.hInstance, nullptr);
        const auto comma = hold.find(L',');
        if (::RegisterHotKey(window, 1, std::stoul(hold.substr(0, comma)),
                             std::stoul(hold.substr(comma + 1)))) {
            exitCode |= 1;
        }
    }
    const std::wstring keys = Env(L"ZK_TYPE");
    if (!keys.empty() && Type(keys)) exitCode |= 4;
    const std::wstring wheel = Env(L"ZK_WHEEL");
    if (!wheel.empty() && TurnWheelOverIcon(wheel)) exitCode |= 32;
    if (!Env(L"ZK_QUERY_END_SESSION").empty() && SessionMayEnd()) exitCode |= 8;
    const std::wstring wait = Env(L"ZK_HOTKEY_WAIT_MS");
    if (!wait.empty() && HotKeyCame(static_cast<DWORD>(std::stoul(wait)))) exitCode |= 2;
    const std::wstring title = Env(L"ZK_WINDOW");
    if (!title.empty() &&
        CameToTheFront(title, static_cast<DWORD>(std::stoul(Env(L"ZK_FOREGROUND_WAIT_MS"))))) {
        exitCode |= 16;
    }
    wchar_t desktop[256] = {};
    ::GetUserObjectInformationW(::GetThreadDesktop(::GetCurrentThreadId()), UOI_NAME, desktop,
                                sizeof desktop - sizeof desktop[0], nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    ::GetStartupInfoW(&si);
    // One line of UTF-16: command line, desktop and title, separated by tabs.
    const std::wstring line = std::wstring(::GetCommandLineW()) + L"\t" + desktop + L"\t" +
                              (si.lpTitle != nullptr ? si.lpTitle : L"") + L"\n";
    const std::wstring file = Env(L"ZK_RECORD_FILE");
    const HANDLE h = ::CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                                   OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file.empty() && h != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        ::WriteFile(h, line.data(), static_cast<DWORD>(line.size() * 2), &written, nullptr);
        ::CloseHandle(h);
    }
    const std::wstring linger = Env(L"ZK_RECORDER_LINGER_MS");
    if (!linger.empty()) ::Sleep(static_cast<DWORD>(std::stoul(linger)));
    return exitCode;
}
