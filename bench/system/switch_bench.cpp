// Hotkey to shown desktop: Zelkova2 against three floors, press by press interleaved, idle or with
// both processors busy (two busy loops at normal priority). Zelkova2 is measured both ways a key
// goes: typed on Default, where the controller receives it and signals the switcher, and typed on
// desk2, where (hotkeys belonging to a desktop) desk2's switcher receives it. Its chain is also
// entered half-way, to show which hop holds the time.
#include <cstdio>
#include <functional>
#include <iterator>
#include <optional>
#include <vector>

#include "system/bench_support.h"
#include "system/floors.h"
#include "system/modes.h"

namespace zk::bench {
namespace {

struct Way {
    const char* name;
    const wchar_t* from;  // the desktop shown, and Zelkova2's, before the key
    const wchar_t* to;
    WORD key;                  // Ctrl+Alt and this key, held until the desktop is shown
    std::function<void()> go;  // or this, where no key is typed
};

void TypeFrom(const wchar_t* desk) {
    const HDESK typing = ::OpenDesktopW(desk, 0, FALSE, GENERIC_ALL);
    ::SetThreadDesktop(typing);  // input is taken from a thread of the input desktop only
    ::CloseDesktop(typing);
}

// Zelkova2 and the floors back on `from`, settled; the key typed from there.
std::optional<double> Measure(const Way& way) {
    ::Sleep(30);  // a command still on its way to the controller arrives first
    const bool onDesk2 = std::wstring(way.from) == L"desk2";
    SetSignal(onDesk2 ? "SwitchToDesktop2" : "SwitchToDesktop1");
    ::Sleep(30);
    Show(way.from);  // a floor's switch undone
    if (!WaitForInput(way.from, 5000)) return std::nullopt;
    ::Sleep(100);
    TypeFrom(way.from);
    const double start = Now();
    if (way.key != 0) {
        CtrlAlt(way.key, false);
    } else {
        way.go();
    }
    const bool shown = WaitForInput(way.to, 5000);
    const double taken = Now() - start;
    if (way.key != 0) {
        TypeFrom(InputDesktop().c_str());  // the keys go up where the user is now
        CtrlAlt(way.key, true);
    }
    TypeFrom(L"Default");
    if (!shown) return std::nullopt;
    return taken;
}

const char* Met(bool met) {
    return met ? "met" : "NOT met";
}

}  // namespace

int Switch(bool busy) {
    KeepFocusStill(true);
    const HWND controller = StartController();
    const Floors floors;
    const HANDLE signal =
        ::OpenEventA(EVENT_MODIFY_STATE, FALSE, (kPrefix + "Switcher1SwitchTo2").c_str());
    const std::string command = kPrefix + "SwitchToDesktop2";
    COPYDATASTRUCT data{0, static_cast<DWORD>(command.size()), const_cast<char*>(command.data())};
    const Way ways[] = {
        {"single window", L"Default", L"desk2", kSingleKey, {}},
        {"chain floor", L"Default", L"desk2", kChainKey, {}},
        {"chain floor + bridge hop", L"Default", L"desk2", kChainAndBridgeKey, {}},
        {"Zelkova2, key on Default", L"Default", L"desk2", VK_NUMPAD2, {}},
        {"Zelkova2, key on desk2", L"desk2", L"desk3", VK_NUMPAD3, {}},
        {"", L"Default", L"desk2", 0, [&] { ::SetEvent(signal); }},
        {"", L"Default", L"desk2", 0,
         [&] { ::SendMessageW(controller, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)); }},
        {"", L"Default", L"desk2", kSwitcherSignalKey, {}},
    };
    std::vector<HANDLE> loops;
    if (busy) {
        for (int i = 0; i < 2; ++i)
            loops.push_back(Start(BenchProgram(), L"busy"));
    }
    std::vector<double> samples[std::size(ways)];
    for (int i = 0; i < kPresses + 3 && controller != nullptr && floors.Ready(); ++i) {
        for (std::size_t way = 0; way < std::size(ways); ++way) {
            const auto shown = Measure(ways[way]);
            if (shown && i >= 3) samples[way].push_back(*shown);  // three to warm up
        }
    }
    for (const HANDLE loop : loops) {
        ::TerminateProcess(loop, 0);
        ::CloseHandle(loop);
    }
    ::CloseHandle(signal);
    Run(Programs() + L"\\zelkovactl.exe", L"shutdown");
    KeepFocusStill(false);
    for (std::size_t way = 0; way < std::size(ways); ++way) {
        if (samples[way].empty()) {
            std::printf("hotkey -> desktop shown: way %zu never showed its desktop\n", way);
            return 1;
        }
    }
    Stats s[std::size(ways)];
    for (std::size_t way = 0; way < std::size(ways); ++way)
        s[way] = Summary(samples[way]);
    const Stats &single = s[0], &chain = s[1], &bridged = s[2], &onDefault = s[3], &onDesk2 = s[4];
    std::printf("hotkey -> desktop shown (Wine 10, %s, %d presses each way, interleaved):\n",
                busy ? "both processors busy" : "idle", kPresses);
    std::printf("  %-28s %9s %9s\n", "", "median", "p90");
    for (std::size_t way = 0; way < 5; ++way)
        std::printf("  %-28s %6.3f ms %6.3f ms\n", ways[way].name, s[way].median, s[way].p90);
    const double defaultMedian = onDefault.median / chain.median;
    const double defaultP90 = onDefault.p90 / chain.p90;
    const double desk2Median = onDesk2.median / single.median;
    std::printf(
        "  key on Default: median %.2fx the chain floor (goal <= 1.0x, %s), p90 %.2fx its p90 "
        "(goal <= 1.3x, %s); %.2fx the chain with the bridge's hop, %.2fx the single window\n",
        defaultMedian, Met(defaultMedian <= 1.0), defaultP90, Met(defaultP90 <= 1.3),
        onDefault.median / bridged.median, onDefault.median / single.median);
    std::printf("  key on desk2: median %.2fx the single window (goal <= 1.5x, %s)\n", desk2Median,
                Met(desk2Median <= 1.5));
    // The controller against the floor's window in its place (each reads three properties and
    // sets the switcher's signal); the switcher's wake and switch against the chain's process
    // hop; the controller's own switch.
    std::printf(
        "  where the time goes (medians): the controller's key -> signal takes %.3f ms more than "
        "the floor's window in its place; signal -> shown by the switcher %.3f ms (the chain's hop "
        "and message %.3f ms); a command -> shown by the controller %.3f ms\n",
        onDefault.median - s[7].median, s[5].median, chain.median - single.median, s[6].median);
    return 0;
}

int Busy() {
    volatile unsigned long spin = 0;
    for (;;) {
        const unsigned long next = spin + 1;
        spin = next;
    }
}

}  // namespace zk::bench
