#include "support/windows_driver.h"

#include "support/recorder_file.h"

#include <oleacc.h>
#include <shlobj.h>
#include <tlhelp32.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace zk::support {

int WineVersion() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    using Version = const char*(CDECL*)();
    const auto version = reinterpret_cast<Version>(
        reinterpret_cast<void*>(::GetProcAddress(ntdll, "wine_get_version")));
    return version != nullptr ? std::atoi(version()) : 0;
}

std::wstring InputDesktop() {
    const HDESK input = ::OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS);
    if (input == nullptr) return {};
    wchar_t name[256] = {};
    ::GetUserObjectInformationW(input, UOI_NAME, name, sizeof name - sizeof name[0], nullptr);
    ::CloseDesktop(input);
    return name;
}

std::wstring ProgramFolder() {
    const Text tests = TestFolder();  // build/windows/tests/bin
    return std::wstring(tests.begin(), tests.end()) + L"\\..\\..\\bin";
}

// A hand presses keys again a beat after it last did, never within this (the switchers take an
// arrival sooner than the keyboard's repeat interval for a repeat).
constexpr DWORD kHandBeat = 150;

namespace {

// Sets the stand-in's settings for as long as it lives.
class Settings {
  public:
    explicit Settings(StandInSettings settings) {
        for (const auto& [name, value] : settings) {
            if (value.empty()) continue;
            ::SetEnvironmentVariableW(name, value.c_str());
            names_.push_back(name);
        }
    }
    ~Settings() {
        for (const wchar_t* name : names_)
            ::SetEnvironmentVariableW(name, nullptr);
    }

  private:
    std::vector<const wchar_t*> names_;
};

std::wstring StandIn() {
    const Text recorder = RecorderPath();
    return std::wstring(recorder.begin(), recorder.end());
}

}  // namespace

RunResult RunStandIn(const wchar_t* desktop, StandInSettings settings) {
    const Settings set(settings);
    return RunProgram(StandIn(), L"", desktop);
}

std::unique_ptr<Running> StartStandIn(const wchar_t* desktop, StandInSettings settings) {
    const Settings set(settings);
    return std::make_unique<Running>(StandIn(), desktop);
}

bool TypeOn(const wchar_t* desktop, std::initializer_list<WORD> keys, DWORD holdFor,
            const wchar_t* into) {
    static DWORD lastTyped = ::GetTickCount() - kHandBeat;
    if (const DWORD since = ::GetTickCount() - lastTyped; since < kHandBeat) {
        ::Sleep(kHandBeat - since);
    }
    std::wstring list;
    for (const WORD key : keys)
        list += std::to_wstring(key) + L" ";
    const RunResult typed =
        RunStandIn(desktop, {{L"ZK_TYPE", list},
                             {L"ZK_HOLD_MS", holdFor != 0 ? std::to_wstring(holdFor) : L""},
                             {L"ZK_TYPE_INTO", into != nullptr ? into : L""}});
    lastTyped = ::GetTickCount();
    return (typed.exitCode & 4) != 0;
}

bool WheelOverIconOn(const wchar_t* desktop, const wchar_t* trayClass, UINT trayMessage,
                     int delta) {
    return (RunStandIn(desktop, {{L"ZK_WHEEL", std::wstring(trayClass) + L" " +
                                                   std::to_wstring(trayMessage) + L" " +
                                                   std::to_wstring(delta)}})
                .exitCode &
            32) != 0;
}

bool SessionMayEndOn(const wchar_t* desktop, std::string& refusals) {
    const RunResult asked = RunStandIn(desktop, {{L"ZK_QUERY_END_SESSION", L"1"}});
    refusals = asked.output;
    return (asked.exitCode & 8) != 0;
}

RunResult RunProgram(const std::wstring& program, const std::wstring& arguments,
                     const wchar_t* desktop) {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    // A file of its own for each run: a program it starts may keep the handle (Wine 8 hands a
    // GUI child its parent's standard handles).
    static int runs = 0;
    const std::wstring outputPath = std::wstring(temp) + L"zk-output-" +
                                    std::to_wstring(::GetCurrentProcessId()) + L"-" +
                                    std::to_wstring(++runs) + L".txt";
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const HANDLE output =
        ::CreateFileW(outputPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      &inherit, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = output;
    si.hStdError = output;
    std::wstring desktopName = desktop != nullptr ? desktop : L"";
    si.lpDesktop = desktop != nullptr ? desktopName.data() : nullptr;
    PROCESS_INFORMATION pi{};
    std::wstring line = L"\"" + program + L"\" " + arguments;
    RunResult result;
    if (::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                         &si, &pi)) {
        ::WaitForSingleObject(pi.hProcess, 60000);
        ::GetExitCodeProcess(pi.hProcess, &result.exitCode);
        ::CloseHandle(pi.hProcess);
        ::CloseHandle(pi.hThread);
    }
    ::CloseHandle(output);
    {
        std::ifstream in(outputPath.c_str(), std::ios::binary);
        result.output.assign(std::istreambuf_iterator<char>(in), {});
    }
    ::DeleteFileW(outputPath.c_str());
    return result;
}

Running::Running(const std::wstring& program, const wchar_t* desktop) {
    STARTUPINFOW si{};
    si.cb = sizeof si;
    std::wstring desktopName = desktop != nullptr ? desktop : L"";
    si.lpDesktop = desktop != nullptr ? desktopName.data() : nullptr;
    if (!::CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &si, &pi_)) {
        pi_ = {};
    }
}

Running::~Running() {
    if (!started()) return;
    if (!WaitForExit(0)) ::TerminateProcess(pi_.hProcess, 99);
    ::WaitForSingleObject(pi_.hProcess, 5000);
    ::CloseHandle(pi_.hProcess);
    ::CloseHandle(pi_.hThread);
}

bool Running::WaitForExit(DWORD milliseconds) {
    return ::WaitForSingleObject(pi_.hProcess, milliseconds) == WAIT_OBJECT_0;
}

DWORD Running::ExitCode() const {
    DWORD code = STILL_ACTIVE;
    ::GetExitCodeProcess(pi_.hProcess, &code);
    return code;
}

std::unique_ptr<Running> HoldHotKey(UINT modifiers, UINT key) {
    return StartStandIn(
        nullptr, {{L"ZK_HOLD_HOTKEY", std::to_wstring(modifiers) + L"," + std::to_wstring(key)},
                  {L"ZK_RECORDER_LINGER_MS", L"60000"}});
}

namespace {

struct Search {
    const wchar_t* className;
    bool mustBeShown;
    HWND found;
};

BOOL CALLBACK MatchShown(HWND window, LPARAM lParam) {
    auto* search = reinterpret_cast<Search*>(lParam);
    wchar_t className[64] = {};
    ::GetClassNameW(window, className, 64);
    // Shown by its program: IsWindowVisible would also ask whether the desktop's own window is
    // shown, and that of a desktop other than the input desktop is not.
    if (std::wstring(className) == search->className &&
        (!search->mustBeShown || (::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

// Its client area's list, and each item's name and state.
std::vector<std::wstring> AccessibleItemsOf(HWND window) {
    IAccessible* list = nullptr;
    if (FAILED(::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                            __uuidof(IAccessible),
                                            reinterpret_cast<void**>(&list)))) {
        return {};
    }
    std::vector<std::wstring> told;
    long count = 0;
    (void)list->get_accChildCount(&count);
    for (long child = 0; child <= count; ++child) {
        VARIANT id{};
        id.vt = VT_I4;
        id.lVal = child;
        BSTR name = nullptr;
        VARIANT state{};
        if (FAILED(list->get_accName(id, &name)) || name == nullptr) break;
        std::wstring item = name;
        ::SysFreeString(name);
        if (child > 0 && SUCCEEDED(list->get_accState(id, &state)) &&
            (state.lVal & STATE_SYSTEM_SELECTED) != 0) {
            item += L" [selected]";
        }
        told.push_back(item);
    }
    list->Release();
    return told;
}

}  // namespace

std::vector<std::wstring> AccessibleItems(HWND window) {
    const HRESULT com = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    std::vector<std::wstring> told = AccessibleItemsOf(window);
    if (SUCCEEDED(com)) ::CoUninitialize();
    return told;
}

std::wstring Caption(HWND window) {
    wchar_t text[512] = {};
    ::GetWindowTextW(window, text, 512);
    return text;
}

HWND WindowOn(const wchar_t* desktop, const wchar_t* className, bool mustBeShown) {
    const HDESK handle = ::OpenDesktopW(desktop, 0, FALSE, DESKTOP_READOBJECTS | DESKTOP_ENUMERATE);
    if (handle == nullptr) return nullptr;
    Search search{className, mustBeShown, nullptr};
    ::EnumDesktopWindows(handle, &MatchShown, reinterpret_cast<LPARAM>(&search));
    ::CloseDesktop(handle);
    return search.found;
}

std::wstring ShownWindows(const wchar_t* desktop) {
    const HDESK handle = ::OpenDesktopW(desktop, 0, FALSE, DESKTOP_READOBJECTS | DESKTOP_ENUMERATE);
    if (handle == nullptr) return {};
    std::wstring list;
    ::EnumDesktopWindows(
        handle,
        [](HWND window, LPARAM lParam) -> BOOL {
            if ((::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) == 0) return TRUE;
            wchar_t className[64] = {};
            ::GetClassNameW(window, className, 64);
            RECT at{};
            ::GetWindowRect(window, &at);
            const RECT screen{
                ::GetSystemMetrics(SM_XVIRTUALSCREEN), ::GetSystemMetrics(SM_YVIRTUALSCREEN),
                ::GetSystemMetrics(SM_XVIRTUALSCREEN) + ::GetSystemMetrics(SM_CXVIRTUALSCREEN),
                ::GetSystemMetrics(SM_YVIRTUALSCREEN) + ::GetSystemMetrics(SM_CYVIRTUALSCREEN)};
            RECT both{};
            const bool inSight = ::IntersectRect(&both, &at, &screen) != FALSE;
            auto& found = *reinterpret_cast<std::wstring*>(lParam);
            found += (found.empty() ? L"" : L", ") + std::wstring(className) +
                     (inSight ? L"" : L" (out of sight)");
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&list));
    ::CloseDesktop(handle);
    return list;
}

std::wstring LogPath() {
    wchar_t folder[MAX_PATH] = {};
    ::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, folder);
    return std::wstring(folder) + L"\\ZelkovaErrors.txt";
}

std::string LogText() {
    const std::wstring path = LogPath();
    std::ifstream in(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void SetDword(const std::wstring& key, const wchar_t* name, DWORD value) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_DWORD, &value, sizeof value);
}

void SetText(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, value.c_str(),
                      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::vector<DWORD> ProcessesNamed(std::initializer_list<const wchar_t*> names) {
    std::vector<DWORD> ids;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more;
         more = ::Process32NextW(snapshot, &entry)) {
        for (const wchar_t* name : names) {
            if (_wcsicmp(entry.szExeFile, name) == 0) ids.push_back(entry.th32ProcessID);
        }
    }
    ::CloseHandle(snapshot);
    return ids;
}

}  // namespace zk::support
