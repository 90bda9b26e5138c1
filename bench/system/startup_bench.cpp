// The command round trip and the start, each against a bare window.
#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "system/bench_support.h"
#include "system/modes.h"

namespace zk::bench {
namespace {

// Microseconds per send, the best of many rounds; the two windows take turns, so that the
// machine's moods fall on both alike.
std::pair<double, double> PerSend(HWND first, HWND second) {
    const std::string text = kPrefix + "SwitchToDesktop9";  // no command, as long as one
    COPYDATASTRUCT data{0, static_cast<DWORD>(text.size()), const_cast<char*>(text.data())};
    const auto round = [&](HWND window) {
        constexpr int kSends = 1000;
        const double start = Now();
        for (int i = 0; i < kSends; ++i)
            ::SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
        return (Now() - start) * 1000.0 / kSends;
    };
    double bestFirst = 1e300, bestSecond = 1e300;
    for (int i = 0; i < 20; ++i) {
        bestFirst = std::min(bestFirst, round(first));
        bestSecond = std::min(bestSecond, round(second));
    }
    return {bestFirst, bestSecond};
}

// From the start of the process until its window answers a sent message: for the controller
// that is after its whole startup, as its message loop runs only then.
double StartToAnswer(const std::wstring& program, const std::wstring& arguments,
                     const wchar_t* caption, HANDLE& process) {
    const double start = Now();
    process = Start(program, arguments);
    const HWND window = WaitForWindow(caption, process);
    DWORD_PTR result = 0;
    ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_BLOCK, 60000, &result);
    return Now() - start;
}

}  // namespace

int RoundTrip() {
    const HANDLE bareProcess = Start(BenchProgram(), L"bare");
    const HWND bare = WaitForWindow(kBareCaption, bareProcess);
    const HWND controller = StartController();
    if (controller == nullptr) return 1;
    const auto [toBare, toController] = PerSend(bare, controller);
    Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
    ::TerminateProcess(bareProcess, 0);
    std::printf(
        "WM_COPYDATA round trip: controller %.1f us, bare window %.1f us: %.2fx "
        "(goal <= 1.40x under Wine 8)\n",
        toController, toBare, toController / toBare);
    return 0;
}

int StartTime() {
    std::vector<double> bare, zelkova;
    for (int i = 0; i < 5; ++i) {
        HANDLE process = nullptr;
        bare.push_back(StartToAnswer(BenchProgram(), L"bare", kBareCaption, process));
        ::TerminateProcess(process, 0);
        ::CloseHandle(process);
        zelkova.push_back(
            StartToAnswer(Programs() + L"\\Zelkova2.exe", L"", L"Zelkova 2", process));
        Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
        ::CloseHandle(process);
    }
    const Stats b = Summary(bare), z = Summary(zelkova);
    std::printf(
        "start -> answering (median of 5): controller %.1f ms, bare window %.1f ms: "
        "%.1fx (the controller makes 3 desktops and starts 9 companions first)\n",
        z.median, b.median, z.median / b.median);
    return 0;
}

}  // namespace zk::bench
