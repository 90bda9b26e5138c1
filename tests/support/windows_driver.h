#pragma once
// What the tests under Wine do as a user or another program would: type keys, wait for a
// condition, start programs, read the error log, set hotkey values, find processes.

#include <windows.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zk::support {

// Asks `condition` every 20 ms until it holds or the time is up.
template <class Condition>
bool Within(DWORD milliseconds, Condition condition) {
    for (DWORD waited = 0; waited <= milliseconds; waited += 20) {
        if (condition()) return true;
        ::Sleep(20);
    }
    return condition();
}

// The major version of the Wine the tests run under (0 on Windows). Wine 8 does not switch
// desktops: its SwitchDesktop leaves the input desktop where it was.
int WineVersion();
[[nodiscard]] inline bool DesktopsSwitch() {
    const int wine = WineVersion();
    return wine == 0 || wine >= 10;
}
std::wstring InputDesktop();
// Types the keys as a program on that desktop would: input comes only from a thread of the
// input desktop. True when the system took them. Held for `holdFor` milliseconds, the last key
// repeats as a held key does. With `into`, they are typed once a window of that class has the
// keyboard there, as a user waits for it.
bool TypeOn(const wchar_t* desktop, std::initializer_list<WORD> keys, DWORD holdFor = 0,
            const wchar_t* into = nullptr);
// Points at the tray icon of that desktop's window of class `trayClass`, as the notification
// area does, and turns the mouse wheel by `delta` there; true when the system took the turn.
bool WheelOverIconOn(const wchar_t* desktop, const wchar_t* trayClass, UINT trayMessage, int delta);
// Asks every window of the desktop whether the session may end, as the system does at a log-off;
// true when each said yes; `refusals` names those that did not.
bool SessionMayEndOn(const wchar_t* desktop, std::string& refusals);

struct RunResult {
    DWORD exitCode = STILL_ACTIVE;
    std::string output;
};
// Runs a program (on a desktop, if named) with the arguments and takes what it writes.
RunResult RunProgram(const std::wstring& program, const std::wstring& arguments,
                     const wchar_t* desktop = nullptr);
// A program started and left running; ended, if it still runs, when this goes.
class Running {
  public:
    // On the named desktop, or on the caller's.
    explicit Running(const std::wstring& program, const wchar_t* desktop = nullptr);
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running();
    [[nodiscard]] bool started() const { return pi_.hProcess != nullptr; }
    [[nodiscard]] DWORD id() const { return pi_.dwProcessId; }
    // True when it ended within the time.
    bool WaitForExit(DWORD milliseconds);
    [[nodiscard]] DWORD ExitCode() const;

  private:
    PROCESS_INFORMATION pi_{};
};
// What the recorder stand-in is told to do (tests/standins/recorder.cpp), in the environment that
// the programs started meanwhile inherit.
using StandInSettings = std::initializer_list<std::pair<const wchar_t*, std::wstring>>;
// The stand-in run to its end on `desktop`, or left running there.
RunResult RunStandIn(const wchar_t* desktop, StandInSettings settings);
std::unique_ptr<Running> StartStandIn(const wchar_t* desktop, StandInSettings settings);
// Another program of the user's that holds a hotkey, through the recorder stand-in.
std::unique_ptr<Running> HoldHotKey(UINT modifiers, UINT key);
// The folder of the programs as built (build/windows/bin).
std::wstring ProgramFolder();
// A window of that class on the named desktop, shown by its program (or hidden, if allowed).
HWND WindowOn(const wchar_t* desktop, const wchar_t* className, bool mustBeShown = true);
// The classes of the windows shown on a desktop, for a failure to name what may hold the input.
std::wstring ShownWindows(const wchar_t* desktop);
std::wstring Caption(HWND window);
// What a screen reader is told of a window's client area (AccessibleObjectFromWindow): its name,
// then each item's name, with " [selected]" after the selected one; empty when it tells nothing.
std::vector<std::wstring> AccessibleItems(HWND window);

std::wstring LogPath();
std::string LogText();
// Writes a value under HKEY_CURRENT_USER, making its key where it is missing.
void SetDword(const std::wstring& key, const wchar_t* name, DWORD value);
void SetText(const std::wstring& key, const wchar_t* name, const std::wstring& value);
std::vector<DWORD> ProcessesNamed(std::initializer_list<const wchar_t*> names);

}  // namespace zk::support
