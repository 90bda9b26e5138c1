#pragma once
// What the tests under Wine do as a user or another program would: press keys, wait for a
// condition, read the error log, set hotkey values, find processes.

#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace zk::support {

// Presses the keys in order and lets them go in reverse order, through SendInput.
void Press(std::initializer_list<WORD> keys);

// Asks `condition` every 20 ms until it holds or the time is up.
template <class Condition>
bool Within(DWORD milliseconds, Condition condition) {
    for (DWORD waited = 0; waited <= milliseconds; waited += 20) {
        if (condition()) return true;
        ::Sleep(20);
    }
    return condition();
}

std::wstring LogPath();
std::string LogText();
// The system's text for an error code, as ANSI.
std::string SystemText(DWORD code);
void SetDword(const std::wstring& key, const wchar_t* name, DWORD value);
std::vector<DWORD> ProcessesNamed(std::initializer_list<const wchar_t*> names);

}  // namespace zk::support
