// A user's day with the whole system under Wine: start and commands, a log-off, shutdown and
// restart, the control tool's answers, the reporter. (Keys and views mixed are the random walk's.)

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "e2e/system_test.h"
#include "support/recorder_file.h"

namespace zk {
namespace {

using support::DesktopsSwitch;
using support::InputDesktop;
using support::ProcessesNamed;
using support::RunResult;
using support::WindowOn;
using support::Within;

using UsersDay = e2e::SystemTest;
using e2e::CompanionCount;
using e2e::kDesks;

TEST_F(UsersDay, StartEndsOnDefaultAndCommandsShowEachDesktop) {
    EXPECT_EQ(Ctl(L"switch 2").output, "Zelkova2 is not running\r\n") << "a console line";
    ASSERT_TRUE(Start());
    EXPECT_EQ(InputDesktop(), L"Default");
    for (const int desk : {3, 1, 4, 2, 1}) {
        const RunResult switched = Ctl(L"switch " + std::to_wstring(desk));
        if (DesktopsSwitch() || desk == 1) {
            EXPECT_EQ(switched.exitCode, 0u) << switched.output;
            EXPECT_EQ(InputDesktop(), kDesks[desk - 1]);
        } else {
            EXPECT_EQ(switched.exitCode, 4u) << "Wine 8 does not switch: " << switched.output;
            EXPECT_NE(switched.output.find("still shows Default"), std::string::npos)
                << switched.output;
        }
    }
}

// At a log-off every window is asked whether the session may end: each of ours says yes, and
// desktop 1 is shown before anything ends (a question on another desktop could not be seen).
// A log-off that is cancelled leaves Zelkova2 running.
TEST_F(UsersDay, AnEndingSessionShowsDesktop1AndACancelledOneLeavesZelkovaRunning) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Arrive(3));
    for (const int desk : {3, 2, 4, 1}) {
        std::string refusals;
        EXPECT_TRUE(support::SessionMayEndOn(kDesks[desk - 1], refusals))
            << "desktop " << desk << ": " << refusals;
    }
    EXPECT_TRUE(Shown(1));
    EXPECT_EQ(CompanionCount(), 9u);
    EXPECT_TRUE(Arrive(2)) << "the controller knows that desktop 1 is shown";
}

TEST_F(UsersDay, ShutdownOnAnEmptyDesk3AndARestartFromDesk3EndOnDefault) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Arrive(3));
    const RunResult restarted = Ctl(L"restart", L"desk3");
    EXPECT_EQ(restarted.exitCode, 0u) << restarted.output;
    EXPECT_EQ(InputDesktop(), L"Default") << "desktop 1 stays within reach";
    ASSERT_TRUE(Within(30000, [] { return CompanionCount() == 9; }));
    ::Sleep(500);

    ASSERT_TRUE(Arrive(3));
    const RunResult ended = Ctl(L"shutdown", L"desk3");
    EXPECT_EQ(ended.exitCode, 0u) << ended.output;
    EXPECT_TRUE(Within(5000, [] { return CompanionCount() == 0; })) << "no companion is left";
    if (DesktopsSwitch()) {
        EXPECT_EQ(InputDesktop(), L"Default") << "an empty desktop is not left shown";
    }
}

void AppendToLog(const std::string& line) {
    const HANDLE file = ::CreateFileW(support::LogPath().c_str(), FILE_APPEND_DATA, FILE_SHARE_READ,
                                      nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    ::CloseHandle(file);
}

TEST_F(UsersDay, TheErrorReporterShowsTheNewestEntryFirstAndStaysOneADesktop) {
    AppendToLog("11/22/2026 1:00:00 PM Zelkova: an older line\r\n");
    AppendToLog("11/22/2026 1:00:01 PM Zelkova: the newest line\r\n");
    const std::wstring reporter = support::ProgramFolder() + L"\\ZelkovaError.exe";
    support::Running first(reporter);
    ASSERT_TRUE(Within(10000, [&] { return !e2e::ReporterText().empty(); }));
    const std::wstring text = e2e::ReporterText();
    EXPECT_LT(text.find(L"the newest line"), text.find(L"an older line"));

    AppendToLog("11/22/2026 1:00:02 PM Zelkova: one more line\r\n");
    EXPECT_EQ(support::RunProgram(reporter, L"").exitCode, 0u) << "the second start ends at once";
    EXPECT_EQ(ProcessesNamed({L"ZelkovaError.exe"}).size(), 1u);
    EXPECT_TRUE(Within(5000, [&] {
        const std::wstring now = e2e::ReporterText();
        return now.find(L"one more line") < now.find(L"the newest line");
    })) << "the open reporter was refreshed";

    // Asked for on another desktop, it opens there too.
    const HDESK other = ::CreateDesktopW(L"desk2", nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    ASSERT_NE(other, nullptr);
    support::Running second(reporter, L"desk2");
    EXPECT_TRUE(Within(10000, [] {
        return WindowOn(L"desk2", L"Zelkova2ErrorReporter") != nullptr;
    })) << "a reporter on desk2";
    EXPECT_FALSE(second.WaitForExit(0)) << "it stays open there (and ends with the test)";
    ::PostMessageW(::FindWindowW(L"Zelkova2ErrorReporter", nullptr), WM_CLOSE, 0, 0);
    EXPECT_TRUE(first.WaitForExit(5000));
    ::CloseDesktop(other);
}

}  // namespace
}  // namespace zk
