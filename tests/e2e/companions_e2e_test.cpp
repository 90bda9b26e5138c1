// The whole system under Wine: the real Zelkova2.exe with its real companions and the control
// tool, as a user drives them.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "support/recorder_file.h"
#include "support/windows_driver.h"

namespace zk {
namespace {

using support::LogPath;
using support::Press;
using support::ProcessesNamed;
using support::SetDword;
using support::Within;

std::wstring BinFolder() {
    const Text tests = support::TestFolder();  // build/windows/tests/bin
    return std::wstring(tests.begin(), tests.end()) + L"\\..\\..\\bin";
}

std::size_t CompanionCount() {
    return ProcessesNamed({L"DeskPilot.exe", L"DeskHerald.exe"}).size();
}

void EndStragglers() {
    for (const DWORD id : ProcessesNamed(
             {L"DeskPilot.exe", L"DeskHerald.exe", L"Zelkova2.exe", L"ZelkovaError.exe"})) {
        const HANDLE process = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
        if (process == nullptr) continue;
        ::TerminateProcess(process, 99);
        ::WaitForSingleObject(process, 5000);
        ::CloseHandle(process);
    }
}

struct Search {
    const wchar_t* className;
    std::wstring caption;
    bool mustBeVisible;
    HWND found;
};

BOOL CALLBACK Match(HWND window, LPARAM lParam) {
    auto* search = reinterpret_cast<Search*>(lParam);
    wchar_t className[64] = {}, caption[64] = {};
    ::GetClassNameW(window, className, 64);
    ::GetWindowTextW(window, caption, 64);
    // Shown by its program: IsWindowVisible would also ask whether the desktop's own window is
    // shown, and that of a desktop other than the input desktop is not.
    const bool shown = (::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (std::wstring(className) == search->className && caption == search->caption &&
        (!search->mustBeVisible || shown)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

// A window of that class and caption on the named desktop.
HWND WindowOn(const wchar_t* desktop, const wchar_t* className, const std::wstring& caption,
              bool mustBeVisible = true) {
    const HDESK handle = ::OpenDesktopW(desktop, 0, FALSE, DESKTOP_READOBJECTS | DESKTOP_ENUMERATE);
    if (handle == nullptr) return nullptr;
    Search search{className, caption, mustBeVisible, nullptr};
    ::EnumDesktopWindows(handle, &Match, reinterpret_cast<LPARAM>(&search));
    ::CloseDesktop(handle);
    return search.found;
}

// Desktop N's herald shows that its desktop is shown.
bool IndicatorVisible(int desktop) {
    static const wchar_t* names[] = {L"Default", L"desk2", L"desk3", L"desk4"};
    return WindowOn(names[desktop - 1], L"Zelkova2Banner",
                    L"Desktop " + std::to_wstring(desktop)) != nullptr;
}

bool IndicatorShown(int desktop) {
    return Within(5000, [&] { return IndicatorVisible(desktop); });
}

// Presses until desktop N's herald answers: after a reload, which reaches the controller
// through the bridge, the new hotkey holds from some moment on.
bool PressUntilShown(std::initializer_list<WORD> keys, int desktop) {
    for (int attempt = 0; attempt < 20; ++attempt) {
        Press(keys);
        if (Within(500, [&] { return IndicatorVisible(desktop); })) return true;
    }
    return false;
}

struct Result {
    DWORD exitCode = STILL_ACTIVE;
    std::string output;
};

// Runs a program of the system with the arguments and takes what it writes.
Result RunProgram(const std::wstring& program, const std::wstring& arguments) {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    const std::wstring outputPath = std::wstring(temp) + L"zk-ctl-output.txt";
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const HANDLE output = ::CreateFileW(outputPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                        &inherit, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = output;
    si.hStdError = output;
    PROCESS_INFORMATION pi{};
    std::wstring line = L"\"" + program + L"\" " + arguments;
    Result result;
    if (::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                         &si, &pi)) {
        ::WaitForSingleObject(pi.hProcess, 20000);
        ::GetExitCodeProcess(pi.hProcess, &result.exitCode);
        ::CloseHandle(pi.hProcess);
        ::CloseHandle(pi.hThread);
    }
    ::CloseHandle(output);
    const HANDLE read = ::CreateFileW(outputPath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    char buffer[4096];
    DWORD n = 0;
    while (read != INVALID_HANDLE_VALUE && ::ReadFile(read, buffer, sizeof buffer, &n, nullptr) &&
           n > 0) {
        result.output.append(buffer, n);
    }
    if (read != INVALID_HANDLE_VALUE) ::CloseHandle(read);
    return result;
}

Result Ctl(const std::wstring& arguments) {
    return RunProgram(BinFolder() + L"\\zelkovactl.exe", arguments);
}

class SystemUnderWine : public ::testing::Test {
  protected:
    SystemUnderWine() {
        EndStragglers();
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
        // No shell on the made desktops during tests.
        for (int d = 2; d <= 4; ++d) {
            SetDword(L"Software\\Zelkova\\Desktop" + std::to_wstring(d), L"StartPrograms", 0);
        }
    }
    ~SystemUnderWine() override {
        if (zelkova_.hProcess != nullptr) {
            ::TerminateProcess(zelkova_.hProcess, 99);
            ::CloseHandle(zelkova_.hProcess);
            ::CloseHandle(zelkova_.hThread);
        }
        EndStragglers();
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
    }
    // Starts Zelkova2 with its companions and waits until all nine wait for their signals.
    ::testing::AssertionResult Start() {
        const std::wstring exe = BinFolder() + L"\\Zelkova2.exe";
        STARTUPINFOW si{};
        si.cb = sizeof si;
        if (!::CreateProcessW(exe.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                              BinFolder().c_str(), &si, &zelkova_)) {
            return ::testing::AssertionFailure() << "Zelkova2.exe did not start";
        }
        if (!Within(60000, [] { return CompanionCount() == 9; })) {
            DWORD code = 0;
            ::GetExitCodeProcess(zelkova_.hProcess, &code);
            return ::testing::AssertionFailure()
                   << CompanionCount() << " companions; Zelkova2 "
                   << (code == STILL_ACTIVE ? "runs" : "ended with " + std::to_string(code));
        }
        ::Sleep(500);  // the companions open their events and begin to wait
        return ::testing::AssertionSuccess();
    }
    DWORD WaitForExit() {
        DWORD code = STILL_ACTIVE;
        if (::WaitForSingleObject(zelkova_.hProcess, 10000) == WAIT_OBJECT_0) {
            ::GetExitCodeProcess(zelkova_.hProcess, &code);
        }
        return code;
    }

    PROCESS_INFORMATION zelkova_{};
};

TEST_F(SystemUnderWine, AHotKeyTravelsThroughPilotHeraldAndControllerToTheNewDesktop) {
    ASSERT_TRUE(Start());
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD2});
    EXPECT_TRUE(IndicatorShown(2)) << "desktop 2's herald heard that its desktop is shown";
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD1});
    EXPECT_TRUE(IndicatorShown(1)) << "the controller was on desktop 2: its switcher answered";
}

TEST_F(SystemUnderWine, TheControlToolSwitchesReloadsAndShutsDown) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Ctl(L"switch 3").exitCode, 0u);
    EXPECT_TRUE(IndicatorShown(3));

    const Result set = Ctl(L"hotkey set 2 Ctrl+Shift+F9");
    EXPECT_EQ(set.exitCode, 0u) << set.output;
    EXPECT_NE(set.output.find("Ctrl+Shift+F9"), std::string::npos) << set.output;
    EXPECT_TRUE(PressUntilShown({VK_CONTROL, VK_SHIFT, VK_F9}, 2))
        << "the new hotkey works without a restart";

    EXPECT_EQ(Ctl(L"hotkey reset all").exitCode, 0u);
    EXPECT_NE(Ctl(L"hotkeys").output.find("2  desktop 2         Ctrl+Alt+Num 2"),
              std::string::npos);
    EXPECT_TRUE(PressUntilShown({VK_CONTROL, VK_MENU, VK_NUMPAD4}, 4));

    const Result status = Ctl(L"status");
    EXPECT_NE(status.output.find("Zelkova2 is running"), std::string::npos) << status.output;
    EXPECT_NE(status.output.find("desk4"), std::string::npos) << status.output;

    EXPECT_EQ(Ctl(L"shutdown").exitCode, 0u);
    EXPECT_EQ(WaitForExit(), 0u);
    EXPECT_TRUE(Within(5000, [] { return CompanionCount() == 0; })) << "no companion is left";
}

TEST_F(SystemUnderWine, TheControlToolSaysClearlyWhenNothingRunsOrTheInputIsBad) {
    const Result switched = Ctl(L"switch 2");
    EXPECT_EQ(switched.exitCode, 1u);
    EXPECT_EQ(switched.output, "Zelkova2 is not running\r\n") << "a console line on Windows";
    const Result bad = Ctl(L"hotkey set 2 Ctrl+Alt+Banana");
    EXPECT_EQ(bad.exitCode, 2u);
    EXPECT_NE(bad.output.find("unknown key 'Banana'"), std::string::npos) << bad.output;
}

TEST_F(SystemUnderWine, ThePreviewAppearsOnItsDesktopAndAKeyInItSwitches) {
    ASSERT_TRUE(Start());
    Press({VK_CONTROL, VK_MENU, VK_ADD});
    HWND preview = nullptr;
    ASSERT_TRUE(Within(5000, [&] {
        preview = WindowOn(L"Default", L"Zelkova2Preview", L"Zelkova2 Preview");
        return preview != nullptr;
    }));
    ASSERT_TRUE(Within(5000, [&] { return ::GetForegroundWindow() == preview; }))
        << "the preview takes the keyboard";
    Press({'3'});
    EXPECT_TRUE(IndicatorShown(3));
    EXPECT_TRUE(Within(2000, [&] { return !::IsWindowVisible(preview); }));
}

TEST_F(SystemUnderWine, CompanionsEndWithTheControllerHoweverItEnds) {
    ASSERT_TRUE(Start());
    ::TerminateProcess(zelkova_.hProcess, 7);
    EXPECT_TRUE(Within(5000, [] { return CompanionCount() == 0; })) << "after a kill";
}

void AppendToLog(const std::string& line) {
    const HANDLE file = ::CreateFileW(LogPath().c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                                      OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    ::CloseHandle(file);
}

std::wstring ReporterText(HWND reporter) {
    const HWND edit = ::FindWindowExW(reporter, nullptr, L"EDIT", nullptr);
    wchar_t text[8192] = {};
    ::SendMessageW(edit, WM_GETTEXT, 8192, reinterpret_cast<LPARAM>(text));
    return text;
}

TEST_F(SystemUnderWine, TheErrorReporterShowsTheNewestLineFirstAndStaysOne) {
    AppendToLog("11/22/2026 1:00:00 PM Zelkova: an older line\r\n");
    AppendToLog("11/22/2026 1:00:01 PM Zelkova: the newest line\r\n");
    const std::wstring reporter = BinFolder() + L"\\ZelkovaError.exe";
    STARTUPINFOW si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION first{};
    ASSERT_TRUE(::CreateProcessW(reporter.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                 nullptr, &si, &first));
    HWND window = nullptr;
    ASSERT_TRUE(Within(10000, [&] {
        window = ::FindWindowW(L"Zelkova2ErrorReporter", nullptr);
        return window != nullptr && !ReporterText(window).empty();
    }));
    const std::wstring text = ReporterText(window);
    EXPECT_LT(text.find(L"the newest line"), text.find(L"an older line"));

    AppendToLog("11/22/2026 1:00:02 PM Zelkova: one more line\r\n");
    const Result second = RunProgram(reporter, L"");
    EXPECT_EQ(second.exitCode, 0u) << "the second start ends at once";
    EXPECT_EQ(ProcessesNamed({L"ZelkovaError.exe"}).size(), 1u);
    EXPECT_TRUE(Within(5000, [&] {
        const std::wstring now = ReporterText(window);
        return now.find(L"one more line") < now.find(L"the newest line");
    })) << "the open reporter was refreshed";
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(::WaitForSingleObject(first.hProcess, 5000), WAIT_OBJECT_0);
    ::CloseHandle(first.hProcess);
    ::CloseHandle(first.hThread);
}

}  // namespace
}  // namespace zk
