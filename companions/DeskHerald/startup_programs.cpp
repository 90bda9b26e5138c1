#include "DeskHerald/startup_programs.h"

#include <windows.h>

#include "common/companion.h"
#include "hotkeys/hotkey_table.h"

namespace zk::companion {
namespace {

std::wstring SettingsKey(int desktop) {
    const std::u16string settings = kSettingsKey;
    return std::wstring(settings.begin(), settings.end()) + L"\\Desktop" + std::to_wstring(desktop);
}

BOOL CALLBACK CountVisible(HWND window, LPARAM count) {
    if (::IsWindowVisible(window)) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

}  // namespace

std::vector<std::wstring> StartupPrograms(int desktop) {
    DWORD enabled = 1;
    DWORD size = sizeof enabled;
    ::RegGetValueW(HKEY_CURRENT_USER, SettingsKey(desktop).c_str(), L"StartPrograms",
                   RRF_RT_REG_DWORD, nullptr, &enabled, &size);
    if (enabled == 0) return {};

    HKEY key = nullptr;
    const std::wstring programsKey = SettingsKey(desktop) + L"\\Programs";
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, programsKey.c_str(), 0, KEY_READ, &key) != 0) {
        return {L"explorer.exe"};
    }
    std::vector<std::wstring> programs;
    for (DWORD i = 0;; ++i) {
        wchar_t name[256];
        DWORD nameLength = 256;
        wchar_t data[1024];
        DWORD dataSize = sizeof data - sizeof data[0];
        DWORD type = 0;
        const LSTATUS status = ::RegEnumValueW(key, i, name, &nameLength, nullptr, &type,
                                               reinterpret_cast<BYTE*>(data), &dataSize);
        if (status == ERROR_NO_MORE_ITEMS) break;
        if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) continue;
        data[dataSize / sizeof(wchar_t)] = L'\0';
        wchar_t expanded[2048];
        if (::ExpandEnvironmentStringsW(data, expanded, 2048) == 0) continue;
        if (expanded[0] != L'\0') programs.emplace_back(expanded);
    }
    ::RegCloseKey(key);
    return programs;
}

void StartStartupPrograms(int desktop) {
    const HDESK own = ::GetThreadDesktop(::GetCurrentThreadId());
    int visible = 0;
    ::EnumDesktopWindows(own, &CountVisible, reinterpret_cast<LPARAM>(&visible));
    if (visible > 0) return;
    std::wstring desktopName = DesktopName(own);
    for (std::wstring line : StartupPrograms(desktop)) {
        STARTUPINFOW si{};
        si.cb = sizeof si;
        si.lpDesktop = desktopName.data();
        PROCESS_INFORMATION pi{};
        if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &si, &pi)) {
            ::CloseHandle(pi.hProcess);
            ::CloseHandle(pi.hThread);
        }
    }
}

}  // namespace zk::companion
