#pragma once
// What the system benchmarks share: the clock, starting programs, the input desktop, keys.

#include <windows.h>

#include <string>
#include <vector>

namespace zk::bench {

inline constexpr wchar_t kBareClass[] = L"ZkBareWindow";
inline constexpr wchar_t kBareCaption[] = L"bare window";
inline const std::string kPrefix = "Local\\larchmont_";
inline constexpr int kPresses = 50;

// Milliseconds, from the performance counter.
double Now();
// The bench's own folder, and the programs as built beside it.
std::wstring Folder();
std::wstring Programs();
std::wstring BenchProgram();

HANDLE Start(const std::wstring& program, const std::wstring& arguments);
void Run(const std::wstring& program, const std::wstring& arguments);
HWND WaitForWindow(const wchar_t* caption, HANDLE process);
// Starts Zelkova2 as a user does and waits for its window.
HWND StartController();
// No banner and no start-up programs on the made desktops, for as long as the bench runs: under
// Wine 10 a window shown on a desktop just left takes the input back, which Windows does not.
void KeepFocusStill(bool still);

std::wstring InputDesktop();
// Sleeps a tenth of a millisecond: a poll must not take the processor, nor the wineserver, from
// the programs it watches.
void Nap();
bool WaitForInput(const wchar_t* desk, double withinMs);
void Show(const wchar_t* desk);
// Ctrl+Alt and a key, pressed and released, on the desktop of the calling thread.
void PressCtrlAlt(WORD key);
// Ctrl+Alt and a key, pressed down (and released afterwards with `up`), as a hand holds them for a
// moment while the hotkey is carried out.
void CtrlAlt(WORD key, bool up);
void SetSignal(const std::string& name);

struct Stats {
    double median, p90;
};
Stats Summary(std::vector<double> samples);

}  // namespace zk::bench
