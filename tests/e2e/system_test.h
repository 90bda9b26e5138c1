#pragma once
// The whole system under Wine, as a user starts and drives it: the real programs started by the
// control tool, keys typed on a desktop by a program of that desktop. Under Wine 10 the input
// desktop really moves; Wine 8 leaves it on "Default", so there a desktop counts as shown when
// its herald names it in its banner.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "support/windows_driver.h"

namespace zk::e2e {

inline const wchar_t* const kDesks[] = {L"Default", L"desk2", L"desk3", L"desk4"};
inline constexpr WORD kNumPad[] = {0, VK_NUMPAD1, VK_NUMPAD2, VK_NUMPAD3, VK_NUMPAD4};

std::size_t CompanionCount();
// Ends a process at once, as the Task Manager does.
void Kill(DWORD id);
// Ends what a test left running of Zelkova2's programs.
void EndStragglers();
// Shows desktop N as another program would, behind Zelkova2's back.
void ShowDesktop(int desk);
// What the open error reporter shows.
std::wstring ReporterText();

class SystemTest : public ::testing::Test {
  protected:
    SystemTest();
    ~SystemTest() override;

    static support::RunResult Ctl(const std::wstring& arguments, const wchar_t* desktop = nullptr);
    // Starts Zelkova2 as a user does, and waits until its nine companions wait for signals.
    ::testing::AssertionResult Start(const wchar_t* from = nullptr);
    // Desktop N is shown: the input desktop under Wine 10; its herald's banner under Wine 8.
    ::testing::AssertionResult Shown(int desk);
    // Where the input is and what that desktop shows, for a failure to say.
    static std::string WhereInputIs();
    // Types the keys on desktop N (holds them for `holdFor` ms, as support::TypeOn does).
    static ::testing::AssertionResult Type(int desk, std::initializer_list<WORD> keys,
                                           DWORD holdFor = 0);
    // Types the keys on desktop N once a window of that class has the keyboard there.
    static ::testing::AssertionResult TypeInto(int desk, const wchar_t* windowClass,
                                               std::initializer_list<WORD> keys, DWORD holdFor = 0);
    // Desktop N is shown and, where desktops switch, its banner has greeted the user: what a user
    // waits for before the next key (under Wine 10 a window shown on a desktop just left takes
    // the input back there).
    ::testing::AssertionResult Greeted(int desk);
    // Types desktop N's hotkey on Default and waits until it is greeted.
    ::testing::AssertionResult Arrive(int desk);
};

}  // namespace zk::e2e
