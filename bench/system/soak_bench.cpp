// The soak: commands and hotkey chains through the real companions, with each program's memory
// and handles at the start, the middle and the end.
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/win32/win32_os.h"
#include "signals/shared_state.h"
#include "system/bench_support.h"
#include "system/modes.h"

namespace zk::bench {
namespace {

struct Program {
    std::wstring name;
    DWORD id;
};

std::vector<Program> SystemProcesses() {
    std::vector<Program> found;
    for (const ProcessEntry& e : Win32Os().CreateToolhelp32Snapshot()) {
        const std::wstring name(e.exeFile.begin(), e.exeFile.end());
        if (name == L"Zelkova2.exe" || name == L"DeskPilot.exe" || name == L"DeskHerald.exe") {
            found.push_back({name, e.processId});
        }
    }
    return found;
}

// Handles per process, from the kernel's list: GetProcessHandleCount says 0 under Wine.
std::vector<std::pair<DWORD, ULONG>> HandleCounts() {
    struct Entry {
        USHORT processId, creatorBackTraceIndex;
        UCHAR objectType, flags;
        USHORT handle;
        PVOID object;
        ACCESS_MASK access;
    };
    using Query = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<char> buffer(1 << 24);
    ULONG length = 0;
    std::vector<std::pair<DWORD, ULONG>> counts;
    if (query == nullptr ||
        query(16, buffer.data(), static_cast<ULONG>(buffer.size()), &length) != 0) {
        return counts;
    }
    const ULONG n = *reinterpret_cast<ULONG*>(buffer.data());
    const auto* entries = reinterpret_cast<const Entry*>(buffer.data() + sizeof(ULONG_PTR));
    for (ULONG i = 0; i < n; ++i) {
        auto it = std::find_if(counts.begin(), counts.end(),
                               [&](const auto& c) { return c.first == entries[i].processId; });
        if (it == counts.end()) {
            counts.emplace_back(entries[i].processId, 1);
        } else {
            ++it->second;
        }
    }
    return counts;
}

void Report(const char* when) {
    const auto handles = HandleCounts();
    std::printf("  %-6s", when);
    for (const Program& p : SystemProcesses()) {
        PROCESS_MEMORY_COUNTERS counters{};
        const HANDLE process =
            ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | PROCESS_VM_READ, FALSE, p.id);
        ::GetProcessMemoryInfo(process, &counters, sizeof counters);
        ::CloseHandle(process);
        ULONG count = 0;
        for (const auto& [id, n] : handles) {
            if (id == p.id) count = n;
        }
        std::printf(" %ls %zuK/%luh;", p.name.substr(0, p.name.size() - 4).c_str(),
                    counters.WorkingSetSize / 1024, count);
    }
    std::printf("\n");
}

}  // namespace

int Soak() {
    const HWND controller = StartController();
    if (controller == nullptr) return 1;
    DWORD controllerId = 0;
    ::GetWindowThreadProcessId(controller, &controllerId);
    Win32Os os;
    SharedState state(os, controllerId);
    std::printf("soak: 100000 commands and 10000 hotkey chains (working set K / handles)\n");
    Report("start");
    const std::string junk(300, 'x');
    COPYDATASTRUCT data{0, static_cast<DWORD>(junk.size()), const_cast<char*>(junk.data())};
    int chains = 0;
    for (int i = 0; i < 100000; ++i) {
        switch (i % 3) {
            case 0:  // a switch command through the bridge
                SetSignal("SwitchToDesktop" + std::to_string(1 + (i / 3) % 4));
                break;
            case 1:  // no command, straight to the window
                ::SendMessageW(controller, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
                break;
            default:
                if (i % 30 == 2) SetSignal("ReadReg");
                break;
        }
        if (i % 10 == 9) {  // a hotkey chain: key, controller, switcher, bridge, controller
            const int before = state.Current();
            PressCtrlAlt(VK_NUMPAD2);
            for (int wait = 0; wait < 200 && state.Current() == before && before != 2; ++wait)
                ::Sleep(1);
            ++chains;
        }
        if (i == 50000) Report("middle");
    }
    ::Sleep(1000);
    Report("end");
    std::printf("  %d hotkey chains\n", chains);
    Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
    return 0;
}

}  // namespace zk::bench
