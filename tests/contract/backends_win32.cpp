#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "contract/backends.h"
#include "platform/win32/win32_os.h"
#include "support/recorder_file.h"

namespace zk::contract {

Backend SimBackend();

namespace {

// The major version of the Wine the tests run under; 0 on Windows.
int WineVersion() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    using Version = const char*(CDECL*)();
    const auto version = reinterpret_cast<Version>(
        reinterpret_cast<void*>(::GetProcAddress(ntdll, "wine_get_version")));
    return version != nullptr ? std::atoi(version()) : 0;
}

HotKeyHolder HoldHotKeyOn(Os& os, const Text& desktop, std::uint32_t modifiers, std::uint32_t key) {
    const std::wstring hold = std::to_wstring(modifiers) + L"," + std::to_wstring(key);
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", hold.c_str());
    ::SetEnvironmentVariableW(L"ZK_HOTKEY_WAIT_MS", L"2500");
    StartupInfo si;
    si.lpDesktop = desktop;
    ProcessInformation pi;
    const bool started = os.CreateProcessW(support::RecorderPath(), u" hold", false, 0, si, pi);
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", nullptr);
    ::SetEnvironmentVariableW(L"ZK_HOTKEY_WAIT_MS", nullptr);
    if (!started) return {[] { return std::pair{false, false}; }};
    ::Sleep(1000);  // it makes its window and registers
    return {[pi] {
        DWORD code = 0;
        ::WaitForSingleObject(pi.hProcess, 10000);
        ::GetExitCodeProcess(pi.hProcess, &code);
        ::CloseHandle(pi.hProcess);
        ::CloseHandle(pi.hThread);
        return std::pair{(code & 1) != 0, (code & 2) != 0};
    }};
}

Backend Win32Backend() {
    Backend b;
    b.make = [] { return std::make_unique<Win32Os>(); };
    const int wine = WineVersion();
    b.name = wine == 0 ? "Windows" : "Wine" + std::to_string(wine);
    b.switchDesktopLeavesInputDesktop = wine != 0 && wine < 10;
    b.sendInputFromAnyDesktop = wine != 0 && wine < 10;
    b.registryTerminatesText = wine != 0;
    b.keyNamesFromX = wine != 0;
    b.holdHotKeyOn = &HoldHotKeyOn;
    b.recorderPath = [](Os&) {
        support::StartRecording();
        return support::RecorderPath();
    };
    b.observe = [](Os& os, const ProcessInformation& pi) -> std::optional<Recorded> {
        if (os.WaitForSingleObject(pi.hProcess, 20000) != WaitObject0) return std::nullopt;
        const auto records = support::ReadRecords();
        if (records.empty()) return std::nullopt;
        const auto& r = records.back();
        return Recorded{r.commandLine, r.desktop, r.title};
    };
    return b;
}

}  // namespace

std::vector<Backend> Backends() {
    return {SimBackend(), Win32Backend()};
}

}  // namespace zk::contract
