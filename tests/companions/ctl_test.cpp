#include "zelkovactl/ctl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "platform/sim/sim_os.h"
#include "settings/registry.h"
#include "signals/shared_state.h"
#include "vocabulary/desktops.h"
#include "vocabulary/shared_names.h"

namespace zk::ctl {
namespace {

const std::string kPrefix = "Local\\larchmont_";
const Text kLog = u"C:\\Users\\user1\\AppData\\Local\\ZelkovaErrors.txt";

class CtlTest : public ::testing::Test {
  protected:
    CtlTest() { os_.SetModuleFileName(u"C:\\Program Files\\Zelkova2\\zelkovactl.exe"); }
    int Run(std::vector<std::string> args) {
        out_.Clear();
        err_.Clear();
        return Ctl(os_, out_, err_).Run(args);
    }
    // A running controller with its bridge, which takes each command as it comes.
    void StartZelkova() {
        controller_ = os_.AddOtherProcess(u"Zelkova2.exe");
        const auto take = [this](const std::string& command, std::function<void()> effect) {
            os_.WhenSignalled(kPrefix + command, [this, command, effect] {
                commands_.push_back(command);
                (void)os_.WaitForEventInOtherProcess(kPrefix + command);
                effect();
            });
        };
        for (int desk = 1; desk <= 4; ++desk) {
            take("SwitchToDesktop" + std::to_string(desk), [this, desk] {
                os_.ShowDesktopInOtherProcess(kDesktopNames[static_cast<std::size_t>(desk - 1)]);
            });
        }
        take("ReadReg", [this] {
            os_.SetEventInOtherProcess(
                Utf8Text(SharedObjectName(SharedObject::Reloaded, controller_)));
        });
        take("Shutdown", [this] { os_.EndProcess(controller_); });
    }
    std::optional<std::int32_t> StoredDword(const char16_t* name) {
        return os_.registry().Dword(u"Software\\Zelkova", name);
    }

    sim::SimOs os_;
    StringOutput out_, err_;
    std::uint32_t controller_ = 0;
    std::vector<std::string> commands_;
};

// Without Zelkova2 a command says so (1); when nobody takes it, it says what to do (4).
TEST_F(CtlTest, CommandsSayWhenZelkovaDoesNotRunOrDoesNotTakeThem) {
    const std::vector<std::vector<std::string>> commands = {
        {"switch", "2"}, {"reload"}, {"shutdown"}};
    for (const auto& args : commands) {
        EXPECT_EQ(Run(args), kExitNotRunning) << args[0];
        EXPECT_EQ(err_.Text(), "Zelkova2 is not running\n");
    }
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
    StartZelkova();
    for (const char* name : {"SwitchToDesktop2", "ReadReg", "Shutdown"})
        os_.WhenSignalled(kPrefix + name, [] {});  // the bridge is gone: nobody takes them
    // A confirmation left from a reload before says nothing about this one.
    os_.SetEventInOtherProcess(Utf8Text(SharedObjectName(SharedObject::Reloaded, controller_)));
    for (const auto& args : commands) {
        EXPECT_EQ(Run(args), kExitNoEffect) << args[0];
        EXPECT_NE(err_.Text().find("DeskHerald.exe 5"), std::string::npos) << err_.Text();
    }
    // "Not running" only where the list of processes holds no controller: a busy system that
    // gives no list, or a command that cannot be opened, is told as what it is.
    os_.faults().FailEvery("CreateToolhelp32Snapshot", ErrorNotEnoughMemory);
    EXPECT_EQ(Run({"status"}), kExitOk);
    EXPECT_EQ(out_.Text().rfind("Whether Zelkova2 runs cannot be told", 0), 0u) << out_.Text();
    (void)os_.CreateWindowInOtherProcess(u"Notes", nullptr, sim::kOtherProcessId, std::nullopt,
                                         WsVisible);
    EXPECT_EQ(Run({"find", "notes"}), kExitFailed);
    EXPECT_NE(err_.Text().find("cannot be told"), std::string::npos) << err_.Text();
    os_.faults().Clear();
    os_.faults().FailEvery("OpenEventA", ErrorAccessDenied);
    EXPECT_EQ(Run({"reload"}), kExitFailed);
    EXPECT_EQ(
        err_.Text(),
        "zelkovactl: Zelkova2 runs, but its command could not be opened: Access is denied.\n");
}

TEST_F(CtlTest, CommandsSignalTheControllerAndWaitForTheirEffect) {
    StartZelkova();
    EXPECT_EQ(Run({"switch", "3"}), kExitOk) << err_.Text();
    EXPECT_EQ(Run({"reload"}), kExitOk) << err_.Text();
    // What the user left on desktop 3 stays there: the shutdown names it, not Zelkova2's own
    // windows, the shell's, hidden ones or ones without a title.
    const std::uint32_t notepad = os_.AddOtherProcess(u"notepad.exe");
    const std::uint32_t herald = os_.AddOtherProcess(u"DESKHERALD.EXE");
    for (const auto& [title, process, style, kind] :
         {std::tuple{u"Untitled - Notepad", notepad, WsVisible, u"Notepad"},
          std::tuple{u"hidden", notepad, 0u, u"Notepad"}, std::tuple{u"", notepad, WsVisible, u"X"},
          std::tuple{u"Zelkova2 banner", herald, WsVisible, u"Zelkova2Banner"},
          std::tuple{u"Wine System Tray", notepad, WsVisible, u"Shell_TrayWnd"}}) {
        (void)os_.CreateWindowInOtherProcess(title, nullptr, process, Text(u"desk3"), style, kind);
    }
    EXPECT_EQ(Run({"shutdown"}), kExitOk) << err_.Text();
    EXPECT_EQ(out_.Text(),
              "Until Zelkova2 runs again, these windows stay out of reach:\n"
              "  desktop 3: Untitled - Notepad\n");
    EXPECT_EQ(commands_, (std::vector<std::string>{"SwitchToDesktop3", "ReadReg", "Shutdown"}));
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
}

TEST_F(CtlTest, BadInputGetsOneLineAndExitCodeTwo) {
    for (const char* line : {"", "bogus", "switch", "switch 5", "switch x", "switch 2 3",
                             "hotkey set 10 Ctrl+A", "hotkey set 1 Ctrl+Banana", "hotkey reset 10",
                             "hotkey frob", "log --tail 0", "log -n", "autostart maybe"}) {
        std::istringstream words(line);
        EXPECT_EQ(Run({std::istream_iterator<std::string>(words), {}}), kExitUsage) << line;
        const std::string said = err_.Text();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        EXPECT_EQ(said.rfind("zelkovactl: ", 0), 0u) << said;
        EXPECT_TRUE(said.ends_with("(see zelkovactl --help)\n")) << said;
    }
}

TEST_F(CtlTest, HotKeysAreListedSetAndResetWithBothValuesAndAReload) {
    os_.registry().SetDword(u"Software\\Zelkova", u"Desktop2Key", 0x78);
    os_.registry().SetDword(u"Software\\Zelkova", u"Desktop2KeyMod", 6);
    os_.registry().SetDword(u"Software\\Zelkova", u"Desktop3Key", 0x78);  // no modifier
    EXPECT_EQ(Run({"hotkeys"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "1  desktop 1         Ctrl+Alt+Num 1  (default)\n"
              "2  desktop 2         Ctrl+Shift+F9\n"
              "3  desktop 3         Ctrl+Alt+Num 3  (default)\n"
              "4  desktop 4         Ctrl+Alt+Num 4  (default)\n"
              "5  previous desktop  Ctrl+Alt+Backspace  (default)\n"
              "6  preview           Ctrl+Alt+Num +  (default)\n"
              "7  find a window     Ctrl+Alt+Space  (default)\n"
              "8  next desktop      Ctrl+Alt+Right  (default)\n"
              "9  desktop before    Ctrl+Alt+Left  (default)\n");
    StartZelkova();
    EXPECT_EQ(Run({"hotkey", "set", "5", "Ctrl+Alt+F9"}), kExitOk);
    EXPECT_EQ(StoredDword(u"PrevDesktopKey"), 0x78);
    EXPECT_EQ(StoredDword(u"PrevDesktopKeyMod"), 3);
    EXPECT_EQ(out_.Text(), "Hotkey 5 (previous desktop) is now Ctrl+Alt+F9.\n");

    EXPECT_EQ(Run({"hotkey", "reset", "all"}), kExitOk);
    EXPECT_EQ(StoredDword(u"PrevDesktopKey"), 8);
    EXPECT_EQ(StoredDword(u"ShowPrevWinKey"), 107);
    EXPECT_EQ(StoredDword(u"Desktop1KeyMod"), 3);
    // A laptop has no keypad: one command stores the number row's hotkeys, the companions' too.
    os_.registry().SetDword(u"Software\\Zelkova", u"NextDesktopKey", 0x74);
    EXPECT_EQ(Run({"hotkey", "preset", "laptop"}), kExitOk);
    EXPECT_EQ(StoredDword(u"NextDesktopKey"), 0x27);
    EXPECT_EQ(StoredDword(u"Desktop3Key"), '3');
    EXPECT_EQ(StoredDword(u"Desktop3KeyMod"), 3);
    EXPECT_EQ(StoredDword(u"ShowPrevWinKey"), 0xBB);
    EXPECT_NE(out_.Text().find("Hotkey 4 (desktop 4) is now Ctrl+Alt+4.\n"), std::string::npos);
    EXPECT_EQ(commands_, (std::vector<std::string>{"ReadReg", "ReadReg", "ReadReg"}));
}

// What a user must be told: a stored pair that names no key, and with the way back; the pair in
// force where a reload kept it; and, in the log, which hotkey a failure was about.
TEST_F(CtlTest, HotKeysSayWhatIsInForceAndWhatNamesNoKeyAndTheLogNamesThem) {
    const Text key = u"Software\\Zelkova";
    for (const auto& [name, value] : {std::pair{u"Desktop2Key", 0x79},
                                      {u"Desktop2KeyMod", 3},
                                      {u"Desktop4Key", 0},
                                      {u"Desktop4KeyMod", 3}})
        os_.registry().SetDword(key, name, value);
    StartZelkova();
    HotKeyFields inForce;
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        inForce.HotKeyCode[id] = HotKeySettingOf(id).defaultKey;
        inForce.HotKeyMod[id] = HotKeySettingOf(id).defaultModifiers;
    }
    inForce.HotKeyCode[2] = 0x78;
    inForce.HotKeyCode[4] = 0;
    SharedState controllerState(os_, controller_);  // held as the controller holds it
    controllerState.PublishHotKeys(inForce);
    EXPECT_EQ(Run({"hotkeys"}), kExitOk);
    const std::string lines = out_.Text();
    EXPECT_NE(lines.find("2  desktop 2         Ctrl+Alt+F10  (in force: Ctrl+Alt+F9)\n"),
              std::string::npos)
        << lines;
    EXPECT_NE(lines.find("4  desktop 4         Ctrl+Alt+key 0  stored as something that is not a "
                         "key; 'zelkovactl hotkey reset 4' gives the default, Ctrl+Alt+Num 4\n"),
              std::string::npos)
        << lines;
    EXPECT_NE(lines.find("3  desktop 3         Ctrl+Alt+Num 3  (default)\n"), std::string::npos);

    os_.AddFile(kLog,
                "1/2/2026 1:00:00 PM Zelkova: Failed to register the following hotkey: 3 + F9\r\n"
                "1/2/2026 1:00:01 PM Zelkova: Failed to register the following hotkey: 3 + F7\r\n");
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "1/2/2026 1:00:00 PM Zelkova: Failed to register the following hotkey: 3 + F9 "
              "\xE2\x80\x94 desktop 2 (Ctrl+Alt+F9)\n"
              "1/2/2026 1:00:01 PM Zelkova: Failed to register the following hotkey: 3 + F7\n")
        << "a hotkey not in force is left as the log has it";
}

TEST_F(CtlTest, StartWaitsForTheEndOnlyWhenAskedTo) {
    for (const char16_t* program : {u"Zelkova2.exe", u"DeskPilot.exe", u"DeskHerald.exe",
                                    u"ZelkovaError.exe", u"ZelkovaSettings.exe"})
        os_.AddFile(u"C:\\Program Files\\Zelkova2\\" + Text(program));
    std::vector<std::unique_ptr<SharedState>> states;
    os_.WhenStarted(u"Zelkova2.exe", [&](std::uint32_t controller) {
        const Hwnd window =
            os_.CreateWindowInOtherProcess(u"Zelkova 2", nullptr, controller, Text(u"Default"));
        (void)os_.SetPropW(window, u"Zelkova2_APP5", HandleFrom<Handle>(1));
        states.push_back(std::make_unique<SharedState>(os_, controller));
        for (std::uint32_t& companion : states.back()->Block().companions)
            companion = controller + 1;
    });
    const auto waitsForever = [&] {
        return os_.journal().Find("WaitForSingleObject", " 4294967295").has_value();
    };
    EXPECT_EQ(Run({"start"}), kExitOk) << err_.Text();
    EXPECT_FALSE(waitsForever());
    os_.EndProcess(os_.StartedProcesses().back().processId);
    EXPECT_EQ(Run({"start", "--wait"}), kExitOk) << err_.Text();
    EXPECT_TRUE(waitsForever()) << "on the process it started";

    os_.EndProcess(os_.StartedProcesses().back().processId);
    os_.DeleteFileW(u"C:\\Program Files\\Zelkova2\\DeskHerald.exe");
    os_.DeleteFileW(u"C:\\Program Files\\Zelkova2\\ZelkovaError.exe");
    const std::size_t started = os_.StartedProcesses().size();
    EXPECT_EQ(Run({"start"}), kExitNoEffect);
    EXPECT_EQ(err_.Text(),
              "zelkovactl: Zelkova2 cannot start: DeskHerald.exe and ZelkovaError.exe are missing "
              "from C:\\Program Files\\Zelkova2. Install Zelkova2 again, or put the files back.\n");
    EXPECT_EQ(os_.StartedProcesses().size(), started) << "nothing is started without them";
}

TEST_F(CtlTest, StatusSaysWhetherItRunsAndWhichDesktopsThereAre) {
    EXPECT_EQ(Run({"status"}), kExitOk);
    EXPECT_EQ(
        out_.Text(),
        "Zelkova2 is not running\nInput desktop: Default\nDesktops: Default (1: Desktop 1)\n");
    StartZelkova();
    os_.CreateDesktopInOtherProcess(u"desk2");
    os_.registry().SetText(u"Software\\Zelkova\\Desktop2", u"Name", u"B\u00FCro \U0001F4BC");
    EXPECT_EQ(Run({"status"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "Zelkova2 is running\nInput desktop: Default\n"
              "Desktops: Default (1: Desktop 1), desk2 (2: B\xC3\xBCro \xF0\x9F\x92\xBC)\n")
        << "what it was given, in UTF-8";
}

TEST_F(CtlTest, LogShowsTheNewestLinesOrSaysThatNothingIsLogged) {
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(out_.Text(), "Nothing has been logged.\n");
    std::string many;
    for (int entry = 1; entry <= 25; ++entry)
        many += "1/2/2026 1:00:00 PM Zelkova: entry " + std::to_string(entry) + "\r\n";
    os_.AddFile(kLog, many);
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(std::count(out_.Text().begin(), out_.Text().end(), '\n'), 20) << "the newest 20";
    EXPECT_EQ(out_.Text().rfind("1/2/2026 1:00:00 PM Zelkova: entry 6\n", 0), 0u);
    // The middle entry's system text ends with a line break of its own.
    const std::string lines =
        "1/2/2026 1:00:00 PM Zelkova: one\r\n"
        "1/2/2026 1:00:01 PM Zelkova: two (Access is denied.\r\n)\r\n"
        "1/2/2026 1:00:02 PM Zelkova: caf\xE9\r\n";  // the log is ANSI
    os_.AddFile(kLog, lines);
    EXPECT_EQ(Run({"log", "--tail", "2"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "1/2/2026 1:00:01 PM Zelkova: two (Access is denied.\r\n)\n"
              "1/2/2026 1:00:02 PM Zelkova: caf\xC3\xA9\n");
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(std::count(out_.Text().begin(), out_.Text().end(), '\n'), 4);
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
    os_.MakeUnwritable(kLog);
    EXPECT_EQ(Run({"log", "--tail", "1"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "Zelkova2 cannot write its error log C:\\Users\\user1\\AppData\\Local\\"
              "ZelkovaErrors.txt: Access is denied.\n"
              "What failed is not recorded until the folder can be written.\n"
              "1/2/2026 1:00:02 PM Zelkova: caf\xC3\xA9\n")
        << "what the reporter says";
}

// The windows of every desktop, as lines or JSON; find shows the first match as the finder does:
// its desktop, and that desktop's switcher is asked to bring it to the front.
TEST_F(CtlTest, WindowsAreListedAndFindShowsTheFirstMatch) {
    os_.CreateDesktopInOtherProcess(u"desk3");
    const std::uint32_t notepad = os_.AddOtherProcess(u"notepad.exe");
    (void)os_.CreateWindowInOtherProcess(u"Caf\u00E9 \"menu\" - Notepad", nullptr, notepad,
                                         Text(u"desk3"), WsVisible);
    const std::string pid = std::to_string(notepad);
    EXPECT_EQ(Run({"windows"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "3  Desktop 3  notepad.exe  " + pid + "  Caf\xC3\xA9 \"menu\" - Notepad\n");
    EXPECT_EQ(Run({"windows", "--json"}), kExitOk);
    EXPECT_EQ(out_.Text(),
              "[{\"desktop\": 3, \"desktopName\": \"Desktop 3\", \"title\": "
              "\"Caf\xC3\xA9 \\\"menu\\\" - Notepad\", \"program\": \"notepad.exe\", "
              "\"processId\": " +
                  pid + ", \"news\": false}]\n");
    EXPECT_EQ(Run({"find", "calendar"}), kExitNoEffect);
    EXPECT_EQ(Run({"find", "CAF\xC3\x89", "menu"}), kExitNotRunning)
        << "found, but nothing to show it (what find shows is the random users')";
    EXPECT_EQ(out_.Text(), "desktop 3: Caf\xC3\xA9 \"menu\" - Notepad (notepad.exe)\n");
}

TEST_F(CtlTest, AutostartWritesAndRemovesTheRunValue) {
    const Text run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    EXPECT_EQ(Run({"autostart", "on"}), kExitOk);
    const auto* value = os_.registry().FindValue(run, u"Zelkova2");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->type, RegSz);
    const Text expected = u"\"C:\\Program Files\\Zelkova2\\ZelkovaSettings.exe\" --start";
    EXPECT_EQ(value->data.size(), expected.size() * 2 + 1);
    EXPECT_EQ(std::memcmp(value->data.data(), expected.data(), expected.size() * 2), 0);
    EXPECT_EQ(Run({"autostart", "off"}), kExitOk);
    EXPECT_EQ(os_.registry().FindValue(run, u"Zelkova2"), nullptr);
    EXPECT_EQ(Run({"autostart", "off"}), kExitOk) << "already off";
}

// The shutdown's signal wakes one bridge: with two copies running, each takes one, and both end
// without a wait for the other.
TEST_F(CtlTest, ShutdownEndsEveryCopyRunning) {
    std::vector<std::uint32_t> running = {os_.AddOtherProcess(u"Zelkova2.exe"),
                                          os_.AddOtherProcess(u"Zelkova2.exe")};
    os_.WhenSignalled(kPrefix + "Shutdown", [&] {
        (void)os_.WaitForEventInOtherProcess(kPrefix + "Shutdown");
        os_.EndProcess(running.front());
        running.erase(running.begin());
    });
    const std::uint64_t before = os_.GetTickCount64();
    EXPECT_EQ(Run({"shutdown"}), kExitOk) << err_.Text();
    EXPECT_TRUE(running.empty());
    EXPECT_LT(os_.GetTickCount64() - before, 1000u);
}

#ifdef ZK_SOURCE_DIR
// The README's table of the tool's commands is the tool's own: a row for each command of the
// help, with its arguments, and no other.
TEST_F(CtlTest, TheReadmesTableIsTheToolsCommands) {
    ASSERT_EQ(Run({"--help"}), kExitOk);
    std::istringstream help(out_.Text());
    std::vector<std::string> commands;
    for (std::string line; std::getline(help, line);) {
        if (line.starts_with("  ")) commands.push_back(line + " ");
    }
    std::ifstream file(std::string(ZK_SOURCE_DIR) + "/README.md");
    const std::string readme((std::istreambuf_iterator<char>(file)), {});
    const std::size_t from = readme.find("## The control tool"), to = readme.find("\n## ", from);
    ASSERT_NE(from, std::string::npos);
    std::istringstream table(readme.substr(from, to - from));
    std::size_t rows = 0;
    for (std::string line; std::getline(table, line);) {
        if (!line.starts_with("| `")) continue;
        ++rows;
        std::string usage = line.substr(3, line.find('`', 3) - 3);
        for (std::size_t at; (at = usage.find("\\|")) != std::string::npos;)
            usage.erase(at, 1);
        EXPECT_TRUE(std::any_of(commands.begin(), commands.end(), [&](const std::string& c) {
            return c.starts_with("  " + usage + " ");
        })) << usage;
    }
    EXPECT_EQ(rows, commands.size());
}
#endif

}  // namespace
}  // namespace zk::ctl
