#include "system/bench_support.h"

#include <algorithm>
#include <cstdio>

namespace zk::bench {

double Now() {
    static LARGE_INTEGER frequency = [] {
        LARGE_INTEGER f;
        ::QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER t;
    ::QueryPerformanceCounter(&t);
    return static_cast<double>(t.QuadPart) * 1000.0 / static_cast<double>(frequency.QuadPart);
}

std::wstring Folder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    return folder.substr(0, folder.find_last_of(L'\\'));
}

std::wstring Programs() {
    return Folder() + L"\\..\\bin";
}

std::wstring BenchProgram() {
    return Folder() + L"\\zk_system_bench.exe";
}

HANDLE Start(const std::wstring& program, const std::wstring& arguments) {
    STARTUPINFOW si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    std::wstring line = L"\"" + program + L"\" " + arguments;
    if (!::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                          nullptr, &si, &pi)) {
        return nullptr;
    }
    ::CloseHandle(pi.hThread);
    return pi.hProcess;
}

void Run(const std::wstring& program, const std::wstring& arguments) {
    const HANDLE process = Start(program, arguments);
    if (process == nullptr) return;
    ::WaitForSingleObject(process, 60000);
    ::CloseHandle(process);
}

HWND WaitForWindow(const wchar_t* caption, HANDLE process) {
    for (int i = 0; i < 30000; ++i) {
        if (const HWND w = ::FindWindowW(nullptr, caption)) return w;
        if (::WaitForSingleObject(process, 1) != WAIT_TIMEOUT) return nullptr;
    }
    return nullptr;
}

HWND StartController() {
    Run(Programs() + L"\\zelkovactl.exe", L"start");
    for (int i = 0; i < 300; ++i) {
        if (const HWND window = ::FindWindowW(nullptr, L"Zelkova 2")) {
            ::Sleep(1000);  // its companions settled
            return window;
        }
        ::Sleep(100);
    }
    std::fprintf(stderr, "Zelkova2 did not start\n");
    return nullptr;
}

void KeepFocusStill(bool still) {
    const auto set = [still](const std::wstring& key, const wchar_t* value) {
        if (still) {
            const DWORD off = 0;
            ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), value, REG_DWORD, &off, sizeof off);
        } else {
            ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key.c_str(), value);
        }
    };
    set(L"Software\\Zelkova", L"ShowBanner");
    for (int desk = 2; desk <= 4; ++desk)
        set(L"Software\\Zelkova\\Desktop" + std::to_wstring(desk), L"StartPrograms");
}

std::wstring InputDesktop() {
    const HDESK input = ::OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS);
    if (input == nullptr) return {};
    wchar_t name[64] = {};
    ::GetUserObjectInformationW(input, UOI_NAME, name, sizeof name - sizeof name[0], nullptr);
    ::CloseDesktop(input);
    return name;
}

void Nap() {
    using Delay = LONG(WINAPI*)(BOOLEAN, LARGE_INTEGER*);
    static const auto delay = reinterpret_cast<Delay>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtDelayExecution")));
    LARGE_INTEGER interval;
    interval.QuadPart = -1000;  // 100 us, relative
    delay(FALSE, &interval);
}

bool WaitForInput(const wchar_t* desk, double withinMs) {
    const double until = Now() + withinMs;
    while (Now() < until) {
        if (InputDesktop() == desk) return true;
        Nap();
    }
    return false;
}

void Show(const wchar_t* desk) {
    const HDESK handle = ::OpenDesktopW(desk, 0, FALSE, DESKTOP_SWITCHDESKTOP);
    ::SwitchDesktop(handle);
    ::CloseDesktop(handle);
}

void PressCtrlAlt(WORD key) {
    INPUT inputs[6] = {};
    const WORD keys[] = {VK_CONTROL, VK_MENU, key};
    for (int i = 0; i < 3; ++i) {
        inputs[i].type = inputs[5 - i].type = INPUT_KEYBOARD;
        inputs[i].ki.wVk = inputs[5 - i].ki.wVk = keys[i];
        inputs[5 - i].ki.dwFlags = KEYEVENTF_KEYUP;
    }
    ::SendInput(6, inputs, sizeof(INPUT));
}

void CtrlAlt(WORD key, bool up) {
    INPUT inputs[3] = {};
    const WORD keys[] = {VK_CONTROL, VK_MENU, key};
    for (int i = 0; i < 3; ++i) {
        inputs[i].type = INPUT_KEYBOARD;
        inputs[i].ki.wVk = keys[up ? 2 - i : i];
        inputs[i].ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    }
    ::SendInput(3, inputs, sizeof(INPUT));
}

void SetSignal(const std::string& name) {
    const HANDLE event = ::OpenEventA(EVENT_MODIFY_STATE, FALSE, (kPrefix + name).c_str());
    ::SetEvent(event);
    ::CloseHandle(event);
}

Stats Summary(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    if (samples.empty()) return {0, 0};
    return {samples[samples.size() / 2], samples[samples.size() * 9 / 10]};
}

}  // namespace zk::bench
