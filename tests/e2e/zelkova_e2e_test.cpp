// The real Zelkova2.exe under Wine, started beside stand-in companions, driven as a user (keys
// through SendInput) and a companion (WM_COPYDATA, named events, registry values) would.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "support/recorder_file.h"
#include "support/windows_driver.h"

namespace zk {
namespace {

using support::LogText;
using support::Press;
using support::SystemText;

const std::string kPrefix = "Local\\larchmont_";
constexpr DWORD kStartTimeout = 20000;

std::wstring Wide(const Text& text) {
    return std::wstring(text.begin(), text.end());
}

struct Found {
    DWORD processId;
    HWND window;
};

BOOL CALLBACK FindController(HWND window, LPARAM lParam) {
    auto* found = reinterpret_cast<Found*>(lParam);
    wchar_t caption[64] = {};
    ::GetWindowTextW(window, caption, 64);
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    if (processId == found->processId && std::wstring(caption) == L"Zelkova 2" &&
        ::GetPropW(window, L"Zelkova2_APP5") == reinterpret_cast<HANDLE>(1)) {
        found->window = window;
        return FALSE;
    }
    return TRUE;
}

// Wine 10 lets the input desktop follow the X server's focus. The switches of the startup come
// fast; when no window on "Default" takes the focus (the stand-ins show none), the focus of
// desk4's own window arrives after the last switch and takes the input back to desk4. Windows
// has no such thing: there the startup's last switch stands.
void ShowDefaultAgain() {
    if (!support::DesktopsSwitch() || support::InputDesktop() == L"Default") return;
    const HDESK first = ::OpenDesktopW(L"Default", 0, FALSE, DESKTOP_SWITCHDESKTOP);
    ::SwitchDesktop(first);
    ::CloseDesktop(first);
}

// One run of Zelkova2.exe; it is ended when the test is done with it.
class Zelkova {
  public:
    explicit Zelkova(const std::wstring& folder = Wide(support::TestFolder())) {
        std::wstring exe = folder + L"\\Zelkova2.exe";
        STARTUPINFOW si{};
        si.cb = sizeof si;
        started_ = ::CreateProcessW(exe.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                    folder.c_str(), &si, &pi_) != 0;
    }
    ~Zelkova() {
        if (!started_) return;
        if (::WaitForSingleObject(pi_.hProcess, 0) == WAIT_TIMEOUT) {
            ::TerminateProcess(pi_.hProcess, 99);
            ::WaitForSingleObject(pi_.hProcess, 5000);
        }
        ::CloseHandle(pi_.hProcess);
        ::CloseHandle(pi_.hThread);
    }
    // Waits for the window and for the companions of all four desktops.
    bool WaitUntilRunning() {
        Found found{pi_.dwProcessId, nullptr};
        for (DWORD waited = 0; waited < kStartTimeout; waited += 50) {
            if (found.window == nullptr)
                ::EnumWindows(&FindController, reinterpret_cast<LPARAM>(&found));
            if (found.window != nullptr && support::ReadRecords().size() >= 9) {
                window_ = found.window;
                ::Sleep(500);  // the last start is followed by the switch back to desktop 1
                ShowDefaultAgain();
                return true;
            }
            if (::WaitForSingleObject(pi_.hProcess, 50) == WAIT_OBJECT_0) return false;
        }
        return false;
    }
    // The exit code, or STILL_ACTIVE when the process did not end in time.
    DWORD WaitForExit(DWORD milliseconds = 10000) {
        DWORD code = STILL_ACTIVE;
        if (::WaitForSingleObject(pi_.hProcess, milliseconds) == WAIT_OBJECT_0) {
            ::GetExitCodeProcess(pi_.hProcess, &code);
        }
        return code;
    }
    LRESULT Command(const std::string& text) {
        COPYDATASTRUCT data{0, static_cast<DWORD>(text.size()), const_cast<char*>(text.data())};
        return ::SendMessageW(window_, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    }
    bool started() const { return started_; }
    HWND window() const { return window_; }

  private:
    PROCESS_INFORMATION pi_{};
    bool started_ = false;
    HWND window_ = nullptr;
};

class Signal {
  public:
    explicit Signal(const std::string& name)
        : event_(::OpenEventA(SYNCHRONIZE | EVENT_MODIFY_STATE, FALSE, (kPrefix + name).c_str())) {}
    ~Signal() {
        if (event_ != nullptr) ::CloseHandle(event_);
    }
    bool exists() const { return event_ != nullptr; }
    bool WaitFor(DWORD milliseconds = 5000) const {
        return ::WaitForSingleObject(event_, milliseconds) == WAIT_OBJECT_0;
    }

  private:
    HANDLE event_;
};

void StoreSetting(const wchar_t* name, DWORD value) {
    support::SetDword(L"Software\\Zelkova", name, value);
}

class ZelkovaEndToEnd : public ::testing::Test {
  protected:
    ZelkovaEndToEnd() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
        support::StartRecording();
        logBefore_ = LogText().size();
    }
    ~ZelkovaEndToEnd() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova"); }
    std::string NewLog() const { return LogText().substr(logBefore_); }

    std::size_t logBefore_ = 0;
};

TEST_F(ZelkovaEndToEnd, StartsItsCompanionsCreatesTheEventsAndSignalsOnHotKeys) {
    Zelkova zelkova;
    ASSERT_TRUE(zelkova.WaitUntilRunning());
    using Row = std::tuple<Text, Text, Text, Text>;
    std::vector<Row> seen;
    for (const auto& r : support::ReadRecords()) {
        seen.emplace_back(r.program, r.commandLine, r.desktop, r.title);
    }
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(seen, (std::vector<Row>{{u"DeskHerald.exe", u" 1", u"Default", u"Default"},
                                      {u"DeskHerald.exe", u" 2", u"desk2", u"desk2"},
                                      {u"DeskHerald.exe", u" 3", u"desk3", u"desk3"},
                                      {u"DeskHerald.exe", u" 4", u"desk4", u"desk4"},
                                      {u"DeskHerald.exe", u" 5", u"Default", u"Default"},
                                      {u"DeskPilot.exe", u" 1", u"Default", u"Default"},
                                      {u"DeskPilot.exe", u" 2", u"desk2", u"desk2"},
                                      {u"DeskPilot.exe", u" 3", u"desk3", u"desk3"},
                                      {u"DeskPilot.exe", u" 4", u"desk4", u"desk4"}}));
    for (const char* name : {"Switcher1SwitchTo1", "Switcher4Update4", "ReadRegSwitcher2",
                             "ShowPopupSwitcher4", "SwitchToDesktop1", "ReadReg", "Shutdown"}) {
        EXPECT_TRUE(Signal(name).exists()) << name;
    }
    EXPECT_FALSE(::IsWindowVisible(zelkova.window()));

    const Signal toTwo("Switcher1SwitchTo2");
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD2});
    EXPECT_TRUE(toTwo.WaitFor());
    const Signal preview("ShowPreviewSwitcher1");
    Press({VK_CONTROL, VK_MENU, VK_ADD});
    EXPECT_TRUE(preview.WaitFor());

    // A switch command moves the block that the next hotkey signals; near misses do not.
    EXPECT_EQ(zelkova.Command(kPrefix + "SwitchToDesktop3"), 0);
    (void)zelkova.Command("SwitchToDesktop2");
    (void)zelkova.Command(kPrefix + "SwitchToDesktop1" + std::string(1, '\0'));
    // The controller's hotkeys belong to its window's desktop, "Default": where desktops really
    // switch, a key typed on desk3 reaches only what desk3 holds (no stand-in holds any).
    ShowDefaultAgain();
    const Signal fromThree("Switcher3SwitchTo1");
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD1});
    EXPECT_TRUE(fromThree.WaitFor());
    EXPECT_EQ(NewLog(), "");
}

TEST_F(ZelkovaEndToEnd, RegistryValuesOverrideTheDefaultsAndReadRegReloadsThem) {
    StoreSetting(L"Desktop2Key", VK_F9);
    StoreSetting(L"Desktop2KeyMod", MOD_CONTROL | MOD_SHIFT);
    Zelkova zelkova;
    ASSERT_TRUE(zelkova.WaitUntilRunning());
    const Signal toTwo("Switcher1SwitchTo2");
    Press({VK_CONTROL, VK_SHIFT, VK_F9});
    EXPECT_TRUE(toTwo.WaitFor());

    StoreSetting(L"Desktop3Key", VK_F10);
    StoreSetting(L"Desktop3KeyMod", MOD_CONTROL | MOD_SHIFT);
    (void)zelkova.Command(kPrefix + "ReadReg");
    const Signal toThree("Switcher1SwitchTo3");
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD3});
    EXPECT_FALSE(toThree.WaitFor(500)) << "the old combination was given up";
    Press({VK_CONTROL, VK_SHIFT, VK_F10});
    EXPECT_TRUE(toThree.WaitFor());
}

TEST_F(ZelkovaEndToEnd, ACombinationHeldByAnotherProgramIsLoggedAndTheRestWork) {
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", L"3,8");
    ::SetEnvironmentVariableW(L"ZK_RECORDER_LINGER_MS", L"30000");
    STARTUPINFOW si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION holder{};
    std::wstring recorder = Wide(support::RecorderPath());
    ASSERT_TRUE(::CreateProcessW(recorder.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                 nullptr, &si, &holder));
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", nullptr);
    ::SetEnvironmentVariableW(L"ZK_RECORDER_LINGER_MS", nullptr);
    for (int i = 0; i < 200 && support::ReadRecords().empty(); ++i)
        ::Sleep(50);
    support::StartRecording();

    Zelkova zelkova;
    ASSERT_TRUE(zelkova.WaitUntilRunning());
    EXPECT_NE(NewLog().find("Zelkova: Failed to register the following hotkey: 3 + BackSpace\r\n"),
              std::string::npos)
        << NewLog();
    const Signal toFour("Switcher1SwitchTo4");
    Press({VK_CONTROL, VK_MENU, VK_NUMPAD4});
    EXPECT_TRUE(toFour.WaitFor());
    ::TerminateProcess(holder.hProcess, 0);
    ::CloseHandle(holder.hProcess);
    ::CloseHandle(holder.hThread);
}

std::vector<support::Record> WaitForRecords(std::size_t count) {
    auto records = support::ReadRecords();
    for (int i = 0; i < 200 && records.size() < count; ++i, records = support::ReadRecords()) {
        ::Sleep(50);
    }
    return records;
}

TEST_F(ZelkovaEndToEnd, AnEventNameTakenByAMutexEndsTheStartWithItsLogLine) {
    const std::unique_ptr<void, decltype(&::CloseHandle)> mutex(
        ::CreateMutexA(nullptr, FALSE, (kPrefix + "Switcher1Update1").c_str()), &::CloseHandle);
    ASSERT_NE(mutex, nullptr);
    Zelkova zelkova;
    ASSERT_TRUE(zelkova.started());
    EXPECT_EQ(zelkova.WaitForExit(), 2u);
    EXPECT_NE(NewLog().find("Zelkova: Failed to create event " + kPrefix + "Switcher1Update1 (" +
                            SystemText(ERROR_INVALID_HANDLE) + ")\r\n"),
              std::string::npos)
        << NewLog();
    const auto records = WaitForRecords(1);
    ASSERT_EQ(records.size(), 1u) << "the reporter, and no companion";
    EXPECT_EQ(records[0].program, u"ZelkovaError.exe");
    EXPECT_EQ(records[0].commandLine, support::TestFolder() + u"\\ZelkovaError.exe ")
        << "the bare path and one blank";
    EXPECT_EQ(records[0].showWindow, SW_SHOWMINIMIZED);
}

TEST_F(ZelkovaEndToEnd, MissingCompanionsUnloadTheStart) {
    Zelkova zelkova(Wide(support::TestFolder()) + L"\\lonely");
    ASSERT_TRUE(zelkova.started());
    EXPECT_EQ(zelkova.WaitForExit(), 1u);
    EXPECT_NE(NewLog().find("Zelkova: cDesktop: " + SystemText(ERROR_FILE_NOT_FOUND) + "\r\n"),
              std::string::npos)
        << NewLog();
    EXPECT_TRUE(::RegisterHotKey(nullptr, 1, MOD_CONTROL | MOD_ALT, VK_NUMPAD1))
        << "the shutdown gave the hotkeys back";
    ::UnregisterHotKey(nullptr, 1);
}

TEST_F(ZelkovaEndToEnd, ShutdownCommandOrCloseEndsTheProcessSignallingNothing) {
    for (const bool command : {true, false}) {
        Zelkova zelkova;
        ASSERT_TRUE(zelkova.WaitUntilRunning());
        std::vector<std::unique_ptr<Signal>> all;
        for (const char* name :
             {"Shutdown", "ShutdownSwitcher1", "ShutdownSwitcher4", "Switcher1SwitchTo1"}) {
            all.push_back(std::make_unique<Signal>(name));
        }
        if (command) {
            EXPECT_EQ(zelkova.Command(kPrefix + "Shutdown"), 0) << "the sender gets its answer";
        } else {
            ::PostMessageW(zelkova.window(), WM_CLOSE, 0, 0);
        }
        EXPECT_EQ(zelkova.WaitForExit(), 0u);
        for (const auto& signal : all)
            EXPECT_FALSE(signal->WaitFor(0));
        EXPECT_TRUE(::RegisterHotKey(nullptr, 1, MOD_CONTROL | MOD_ALT, VK_NUMPAD1))
            << "the hotkeys are free again";
        ::UnregisterHotKey(nullptr, 1);
    }
    EXPECT_EQ(NewLog(), "");
}

}  // namespace
}  // namespace zk
