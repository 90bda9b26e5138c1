// The finder lists every desktop's windows when it opens: from its hotkey to the finder shown,
// with 50 windows on each desktop (goal: within 100 ms).
#include <cstdio>
#include <string>
#include <vector>

#include "system/bench_support.h"
#include "system/modes.h"

namespace zk::bench {
namespace {

// A thread of one desktop that makes windows there and answers their messages until told to end.
struct WindowMaker {
    const wchar_t* desk;
    int count;
    HANDLE stop;
};

DWORD WINAPI MakeWindows(void* parameter) {
    const auto* maker = static_cast<const WindowMaker*>(parameter);
    ::SetThreadDesktop(::OpenDesktopW(maker->desk, 0, FALSE, GENERIC_ALL));
    for (int i = 0; i < maker->count; ++i) {
        const std::wstring title = L"Report " + std::to_wstring(i) + L" on " + maker->desk;
        ::CreateWindowExW(0, kBareClass, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20 + i,
                          20 + i, 300, 200, nullptr, nullptr, nullptr, nullptr);
    }
    MSG message;
    while (::MsgWaitForMultipleObjects(1, &maker->stop, FALSE, INFINITE, QS_ALLINPUT) !=
           WAIT_OBJECT_0) {
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
    }
    return 0;
}

}  // namespace

int Finder() {
    KeepFocusStill(true);
    const HWND controller = StartController();
    WNDCLASSW wc{};
    wc.lpfnWndProc = &::DefWindowProcW;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = kBareClass;
    ::RegisterClassW(&wc);
    const HANDLE stop = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    WindowMaker makers[] = {
        {L"Default", 50, stop}, {L"desk2", 50, stop}, {L"desk3", 50, stop}, {L"desk4", 50, stop}};
    std::vector<HANDLE> threads;
    for (WindowMaker& maker : makers)
        threads.push_back(::CreateThread(nullptr, 0, &MakeWindows, &maker, 0, nullptr));
    ::Sleep(3000);
    std::vector<double> samples;
    for (int i = 0; i < kPresses + 3 && controller != nullptr; ++i) {
        Show(L"Default");  // a made window may have taken the input (Wine 10)
        if (!WaitForInput(L"Default", 5000)) continue;
        ::Sleep(100);
        const double start = Now();
        PressCtrlAlt(VK_SPACE);
        HWND finder = nullptr;
        while (Now() - start < 5000) {
            finder = ::FindWindowW(L"Zelkova2Finder", nullptr);
            if (finder != nullptr && ::IsWindowVisible(finder)) break;
            finder = nullptr;
            Nap();
        }
        if (finder == nullptr) continue;
        if (i >= 3) samples.push_back(Now() - start);
        ::PostMessageW(finder, WM_KEYDOWN, VK_ESCAPE, 0);
        for (int wait = 0; wait < 100 && ::IsWindowVisible(finder); ++wait)
            ::Sleep(10);
    }
    ::SetEvent(stop);
    ::WaitForMultipleObjects(static_cast<DWORD>(threads.size()), threads.data(), TRUE, 5000);
    Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
    KeepFocusStill(false);
    if (samples.empty()) {
        std::printf("finder hotkey -> finder shown: it never opened\n");
        return 1;
    }
    const Stats f = Summary(samples);
    std::printf(
        "finder hotkey -> finder shown, 200 windows on 4 desktops (%zu turns):\n"
        "  median %.1f ms  p90 %.1f ms  (goal <= 100 ms)\n",
        samples.size(), f.median, f.p90);
    return 0;
}

}  // namespace zk::bench
