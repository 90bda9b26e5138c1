#include <windows.h>

#include "contract/backends.h"
#include "platform/win32/win32_os.h"
#include "support/windows_driver.h"

namespace zk::contract {

Backend SimBackend();

namespace {

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
    const int wine = support::WineVersion();
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
        return support::LastRecord();
    };
    return b;
}

}  // namespace

std::vector<Backend> Backends() {
    return {SimBackend(), Win32Backend()};
}

}  // namespace zk::contract
