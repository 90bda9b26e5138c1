#include "common/companion.h"

#include <tlhelp32.h>

#include "signals/event_names.h"
#include "signals/protocol.h"

namespace zk::companion {

int DesktopArgument(const wchar_t* commandLine) {
    std::wstring line = commandLine != nullptr ? commandLine : L"";
    while (!line.empty() && iswspace(line.back()))
        line.pop_back();
    const auto start = line.find_last_of(L" \t");
    const std::wstring last = start == std::wstring::npos ? line : line.substr(start + 1);
    if (last.size() != 1 || last[0] < L'1' || last[0] > L'5') return 0;
    return last[0] - L'0';
}

const wchar_t* Wide(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

std::string SignalName(std::int16_t index) {
    static const EventNames names = [] {
        EventNames table;
        table.InitEventNames();
        return table;
    }();
    const Text name = names.EventName(index);
    return std::string(name.begin(), name.end());  // the names are plain ASCII
}

HANDLE OpenSignal(std::int16_t index) {
    return ::CreateEventA(nullptr, FALSE, FALSE, SignalName(index).c_str());
}

bool RaiseSignal(std::int16_t index) {
    const HANDLE event = OpenSignal(index);
    if (event == nullptr) return false;
    const bool set = ::SetEvent(event) != 0;
    ::CloseHandle(event);
    return set;
}

bool ControllerRunning() {
    const HANDLE event = ::OpenEventA(SYNCHRONIZE, FALSE, SignalName(kSignalCount).c_str());
    if (event == nullptr) return false;
    ::CloseHandle(event);
    return true;
}

namespace {

BOOL CALLBACK MatchController(HWND window, LPARAM found) {
    wchar_t caption[16] = {};
    ::GetWindowTextW(window, caption, 16);
    if (std::wstring(caption) == Wide(kControllerCaption) &&
        ::GetPropW(window, Wide(kWindowMark)) == reinterpret_cast<HANDLE>(1)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

HWND FindControllerWindow() {
    HWND found = nullptr;
    ::EnumWindows(&MatchController, reinterpret_cast<LPARAM>(&found));
    return found;
}

HANDLE OpenParentProcess() {
    const DWORD self = ::GetCurrentProcessId();
    DWORD parent = 0;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return nullptr;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more;
         more = ::Process32NextW(snapshot, &entry)) {
        if (entry.th32ProcessID == self) parent = entry.th32ParentProcessID;
    }
    ::CloseHandle(snapshot);
    if (parent == 0) return nullptr;
    const HANDLE process =
        ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, parent);
    if (process == nullptr) return nullptr;
    // A process id can be reused: the parent must have started before this process.
    FILETIME parentStart{}, ownStart{}, unused{};
    ::GetProcessTimes(process, &parentStart, &unused, &unused, &unused);
    ::GetProcessTimes(::GetCurrentProcess(), &ownStart, &unused, &unused, &unused);
    if (::CompareFileTime(&parentStart, &ownStart) > 0) {
        ::CloseHandle(process);
        return nullptr;
    }
    return process;
}

void WaitLoop(const std::vector<HANDLE>& handles,
              const std::function<bool(std::size_t)>& signalled) {
    const auto count = static_cast<DWORD>(handles.size());
    for (;;) {
        const DWORD result = ::MsgWaitForMultipleObjectsEx(count, handles.data(), INFINITE,
                                                           QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (result == WAIT_OBJECT_0 + count) {
            MSG message;
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (message.message == WM_QUIT) return;
                ::TranslateMessage(&message);
                ::DispatchMessageW(&message);
            }
            continue;
        }
        if (result >= WAIT_OBJECT_0 + count || result < WAIT_OBJECT_0) return;  // failed
        const std::size_t position = result - WAIT_OBJECT_0;
        if (position == handles.size() - 1) return;  // the controller ended
        if (!signalled(position)) return;
    }
}

std::wstring DesktopName(HDESK desktop) {
    wchar_t name[256] = {};
    ::GetUserObjectInformationW(desktop, UOI_NAME, name, sizeof name - sizeof name[0], nullptr);
    return name;
}

}  // namespace zk::companion
