#include "e2e/system_test.h"

namespace zk::e2e {

using support::DesktopsSwitch;
using support::InputDesktop;
using support::ProcessesNamed;
using support::RunResult;
using support::WindowOn;
using support::Within;

std::size_t CompanionCount() {
    return ProcessesNamed({L"DeskPilot.exe", L"DeskHerald.exe"}).size();
}

void Kill(DWORD id) {
    const HANDLE process = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
    if (process == nullptr) return;
    ::TerminateProcess(process, 99);
    ::WaitForSingleObject(process, 5000);
    ::CloseHandle(process);
}

void EndStragglers() {
    for (const DWORD id :
         ProcessesNamed({L"DeskPilot.exe", L"DeskHerald.exe", L"Zelkova2.exe", L"ZelkovaError.exe",
                         L"ZelkovaSettings.exe", L"StartZelkova2.exe"})) {
        Kill(id);
    }
}

void ShowDesktop(int desk) {
    const HDESK shown = ::OpenDesktopW(kDesks[desk - 1], 0, FALSE, DESKTOP_SWITCHDESKTOP);
    ::SwitchDesktop(shown);
    ::CloseDesktop(shown);
}

std::wstring ReporterText() {
    const HWND reporter = ::FindWindowW(L"Zelkova2ErrorReporter", nullptr);
    const HWND edit = ::FindWindowExW(reporter, nullptr, L"EDIT", nullptr);
    wchar_t text[8192] = {};
    if (edit != nullptr) ::SendMessageW(edit, WM_GETTEXT, 8192, reinterpret_cast<LPARAM>(text));
    return text;
}

SystemTest::SystemTest() {
    EndStragglers();
    ShowDesktop(1);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
    for (int d = 2; d <= 4; ++d) {  // no shell on the made desktops during tests
        support::SetDword(L"Software\\Zelkova\\Desktop" + std::to_wstring(d), L"StartPrograms", 0);
    }
}

SystemTest::~SystemTest() {
    EndStragglers();
    ShowDesktop(1);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
}

RunResult SystemTest::Ctl(const std::wstring& arguments, const wchar_t* desktop) {
    return support::RunProgram(support::ProgramFolder() + L"\\zelkovactl.exe", arguments, desktop);
}

::testing::AssertionResult SystemTest::Start(const wchar_t* from) {
    const RunResult started = Ctl(L"start", from);
    if (started.exitCode != 0) {
        return ::testing::AssertionFailure() << "zelkovactl start: " << started.output;
    }
    if (!Within(30000, [] { return CompanionCount() == 9; })) {
        return ::testing::AssertionFailure() << CompanionCount() << " companions";
    }
    ::Sleep(500);  // the companions open their events and begin to wait
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult SystemTest::Shown(int desk) {
    const bool shown =
        DesktopsSwitch()
            ? Within(5000, [&] { return InputDesktop() == kDesks[desk - 1]; })
            : Within(5000, [&] { return WindowOn(kDesks[desk - 1], L"Zelkova2Banner"); });
    if (!DesktopsSwitch()) {  // the banner must be gone before it can tell the next time
        (void)Within(3000, [&] { return !WindowOn(kDesks[desk - 1], L"Zelkova2Banner"); });
    }
    if (shown) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "desktop " << desk << " not shown; " << WhereInputIs();
}

std::string SystemTest::WhereInputIs() {
    const std::wstring input = InputDesktop();
    const std::wstring there = support::ShownWindows(input.c_str());
    return "the input desktop is " + std::string(input.begin(), input.end()) + ", showing " +
           std::string(there.begin(), there.end());
}

::testing::AssertionResult SystemTest::Greeted(int desk) {
    if (auto shown = Shown(desk); !shown) return shown;
    if (DesktopsSwitch() &&
        !Within(5000, [&] { return WindowOn(kDesks[desk - 1], L"Zelkova2Banner"); })) {
        return ::testing::AssertionFailure() << "no banner on desktop " << desk;
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult SystemTest::Arrive(int desk) {
    if (!Type(1, {VK_CONTROL, VK_MENU, kNumPad[desk]})) {
        return ::testing::AssertionFailure() << "the key could not be typed on Default";
    }
    return Greeted(desk);
}

::testing::AssertionResult SystemTest::Type(int desk, std::initializer_list<WORD> keys,
                                            DWORD holdFor) {
    return TypeInto(desk, nullptr, keys, holdFor);
}

::testing::AssertionResult SystemTest::TypeInto(int desk, const wchar_t* windowClass,
                                                std::initializer_list<WORD> keys, DWORD holdFor) {
    if (support::TypeOn(kDesks[desk - 1], keys, holdFor, windowClass)) {
        return ::testing::AssertionSuccess();
    }
    const std::wstring into = windowClass != nullptr ? L" into " + std::wstring(windowClass) : L"";
    return ::testing::AssertionFailure()
           << "the keys could not be typed" << std::string(into.begin(), into.end())
           << " on desktop " << desk << "; " << WhereInputIs();
}

}  // namespace zk::e2e
