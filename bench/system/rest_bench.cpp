// Zelkova2 at rest, for scripts/bench-system to count from outside what wakes its processes:
// the system and ten bare windows, then "resting" for a minute with the watch of the desktops'
// windows on, then the watch off (ShowNews 0) and "resting" for another minute.
#include <cstdio>
#include <vector>

#include "system/bench_support.h"
#include "system/modes.h"

namespace zk::bench {
namespace {

constexpr DWORD kMinute = 60000;
constexpr DWORD kMargin = 5000;  // for the counting outside to begin and end within each phase
constexpr DWORD kPictureAfterStart = 40000;

void SetShowNews(DWORD value) {
    HKEY key = nullptr;
    if (::RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Zelkova", 0, nullptr, 0, KEY_SET_VALUE,
                          nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return;
    }
    ::RegSetValueExW(key, L"ShowNews", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                     sizeof value);
    ::RegCloseKey(key);
}

}  // namespace

int Rest() {
    if (StartController() == nullptr) return 1;
    std::vector<HANDLE> bare;
    for (int i = 0; i < 10; ++i)
        bare.push_back(Start(BenchProgram(), L"bare"));
    // Every window made and every companion waiting; the start's window events are followed by
    // a picture half a minute after the first: rest begins after that.
    ::Sleep(kPictureAfterStart);
    for (const DWORD news : {1u, 0u}) {
        SetShowNews(news);
        ::Sleep(news == 0 ? 2000 : 0);
        std::printf("resting, watch %s\n", news != 0 ? "on" : "off");
        std::fflush(stdout);
        ::Sleep(kMinute + 2 * kMargin);
    }
    SetShowNews(1);
    Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
    for (const HANDLE process : bare)
        ::TerminateProcess(process, 0);
    return 0;
}

}  // namespace zk::bench
