// A stand-in program for tests under Wine: it appends how it was started (its file name,
// command line, desktop and window title) as one line to the file named by ZK_RECORD_FILE,
// then ends, or waits first for as many milliseconds as ZK_RECORDER_LINGER_MS says. With
// ZK_HOLD_HOTKEY="modifiers,key" it first registers that hotkey for itself.
#include <windows.h>

#include <string>

namespace {

std::string Utf8(const std::wstring& text) {
    if (text.empty()) return {};
    const int n = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                        nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(n), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), n,
                          nullptr, nullptr);
    return out;
}

std::wstring Env(const wchar_t* name) {
    wchar_t value[1024] = {};
    const DWORD n = ::GetEnvironmentVariableW(name, value, 1024);
    return n > 0 && n < 1024 ? std::wstring(value, n) : std::wstring();
}

}  // namespace

int wmain() {
    const std::wstring hold = Env(L"ZK_HOLD_HOTKEY");
    if (!hold.empty()) {
        const auto comma = hold.find(L',');
        ::RegisterHotKey(nullptr, 1, std::stoul(hold.substr(0, comma)),
                         std::stoul(hold.substr(comma + 1)));
    }
    wchar_t module[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, module, MAX_PATH);
    std::wstring name = module;
    name = name.substr(name.find_last_of(L'\\') + 1);

    wchar_t desktop[256] = {};
    ::GetUserObjectInformationW(::GetThreadDesktop(::GetCurrentThreadId()), UOI_NAME, desktop,
                                sizeof desktop - sizeof desktop[0], nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    ::GetStartupInfoW(&si);
    const std::wstring title = si.lpTitle != nullptr ? si.lpTitle : L"";

    const std::string line = Utf8(name) + "\t" + Utf8(::GetCommandLineW()) + "\t" + Utf8(desktop) +
                             "\t" + Utf8(title) + "\t" + std::to_string(si.wShowWindow) + "\n";
    const std::wstring file = Env(L"ZK_RECORD_FILE");
    if (!file.empty()) {
        const HANDLE h =
            ::CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                          nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE) {
            DWORD written = 0;
            ::WriteFile(h, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
            ::CloseHandle(h);
        }
    }
    const std::wstring linger = Env(L"ZK_RECORDER_LINGER_MS");
    if (!linger.empty()) ::Sleep(static_cast<DWORD>(std::stoul(linger)));
    return 0;
}
