// The herald of a desktop on the simulated session: the banner, the tray's tooltip, menu and
// commands, the start-up programs, and the switcher it keeps running (what its keys do while the
// switcher starts again is the random users').

#include "DeskHerald/herald.h"
#include "DeskHerald/tray_wheel.h"

#include <gtest/gtest.h>

#include "DeskHerald/startup_programs.h"
#include "companions/companion_session.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;
using testing::kFolder;
using testing::kLog;

const std::vector<std::string> kSignals = {"SwitchToDesktop1", "SwitchToDesktop2",
                                           "SwitchToDesktop3", "SwitchToDesktop4",
                                           "Shutdown",         "ShowPreviewSwitcher3"};

class HeraldTest : public ::testing::Test {
  protected:
    Herald& Make(int desk) {
        s_.os.StartOnDesktop(desk == 1 ? Text(u"Default") : u"desk" + DecimalText(desk));
        herald_ = std::make_unique<Herald>(s_.os, desk, controller_, shell_);
        return *herald_;
    }
    bool Pump() {
        return s_.os.RunMessageLoop([&] {
            herald_->Run();
            return 0;
        }) == 0;
    }

    CompanionSession s_{u"DeskHerald.exe", u"Default"};
    ControllerProcess controller_{s_.os, 0};
    testing::HeraldShellRecord shell_;
    std::unique_ptr<Herald> herald_;
};

// Not once the user has moved on (a quick second switch): under Wine 10 the banner would take the
// input back to its desktop.
TEST_F(HeraldTest, NamesItsDesktopInTheBannerWhenItIsShownUnlessTheBannerIsOff) {
    Herald& herald = Make(3);
    s_.os.registry().SetText(u"Software\\Zelkova\\Desktop3", u"Name", u"Mail");
    SharedState state(s_.os, s_.controller);
    state.RecordSwitch(3);  // where the system has never switched (Wine 8), the record says
    s_.Raise("Switcher3Update3");
    EXPECT_FALSE(Pump());
    s_.os.ShowDesktopInOtherProcess(u"desk4");  // shown straight after, past the bridge
    s_.Raise("Switcher3Update3");
    state.RecordSwitch(4);
    EXPECT_FALSE(Pump());
    state.RecordSwitch(3);  // Wine 10: the input away for a moment, then brought back
    (void)herald.Woken({Herald::kShown, 3});
    s_.os.ShowDesktopInOtherProcess(u"desk3");
    EXPECT_FALSE(Pump());
    state.RecordSwitch(1);  // the system shows it, whatever the record says
    s_.os.ShowDesktopInOtherProcess(u"desk3");
    s_.Raise("Switcher3Update3");
    EXPECT_FALSE(Pump());
    s_.os.registry().SetDword(u"Software\\Zelkova", u"ShowBanner", 0);
    s_.Raise("Switcher3Update3");
    EXPECT_FALSE(Pump());
    EXPECT_EQ(shell_.banners, (std::vector<Text>{u"Mail", u"Mail", u"Mail"}));
    EXPECT_EQ(herald.Tooltip(), u"Zelkova2 \u2014 desktop 3: Mail");
    s_.os.EndProcess(s_.controller);
    EXPECT_TRUE(Pump()) << "it ends with its controller";
}

// Zelkova2 ends while a made desktop is shown: one with nothing of the user's on it is left for
// desktop 1 before its last handle closes; one with the user's windows stays shown.
TEST_F(HeraldTest, EndingOnAnEmptyDesktopShowsDesktop1) {
    for (const bool userWindow : {false, true}) {
        CompanionSession s(u"DeskHerald.exe", u"desk3");
        ControllerProcess controller(s.os, 0);
        if (userWindow) {
            (void)s.os.CreateWindowInOtherProcess(u"Untitled - Notepad", nullptr,
                                                  sim::kOtherProcessId, Text(u"desk3"), WsVisible);
        }
        Herald herald(s.os, 3, controller, shell_);
        s.os.ShowDesktopInOtherProcess(u"desk3");
        s.os.EndProcess(s.controller);
        EXPECT_TRUE(s.os.RunMessageLoop([&] {
            herald.Run();
            return 0;
        }) == 0);
        EXPECT_EQ(s.os.InputDesktopName(), userWindow ? u"desk3" : u"Default") << userWindow;
    }
}

// (A desktop chosen in the menu, and the wheel's desktop, are the random users'.)
TEST_F(HeraldTest, TheTrayMenuNamesTheDesktopsChecksItsOwnAndEachChoiceIsACommand) {
    Herald& herald = Make(3);
    s_.os.registry().SetText(u"Software\\Zelkova\\Desktop2", u"Name", u"Web");
    std::vector<Text> labels;
    std::vector<bool> checked;
    for (const auto& item : herald.Menu()) {
        labels.push_back(item.label);
        checked.push_back(item.checked);
    }
    EXPECT_EQ(labels, (std::vector<Text>{u"&1  Desktop 1", u"&2  Web", u"&3  Desktop 3",
                                         u"&4  Desktop 4", u"&Preview", u"&Settings\u2026",
                                         u"Error &log\u2026", u"E&xit Zelkova2"}));
    EXPECT_EQ(checked, (std::vector<bool>{false, false, true, false, false, false, false, false}));

    struct Case {
        TrayCommand command;
        std::optional<bool> answer;
        std::vector<std::string> raised;
    };
    const Case cases[] = {
        {TrayCommand::Preview, {}, {"ShowPreviewSwitcher3"}},
        {TrayCommand::Exit, std::nullopt, {}},  // cancelled
        {TrayCommand::Exit, false, {"Shutdown"}},
        {TrayCommand::Exit, true, {"SwitchToDesktop1", "Shutdown"}},
    };
    SharedState(s_.os, s_.controller).Block().companions[PilotSlot(3)] = 0x777;
    s_.os.ClickProgramWindow();
    for (const Case& c : cases) {
        shell_.answer = c.answer;
        herald.Command(c.command);
        EXPECT_EQ(s_.Taken(kSignals), c.raised) << static_cast<int>(c.command);
    }
    // The preview takes the keyboard in the switcher: the herald, which took the click, lets it
    // (AllowSetForegroundWindow, Remarks).
    EXPECT_EQ(s_.os.ForegroundGrants(), std::vector<std::uint32_t>{0x777});
    ASSERT_EQ(shell_.questions.size(), 3u);
    EXPECT_NE(shell_.questions[0].find(u"stay on desktop 3"), Text::npos);
    Herald(s_.os, 1, controller_, shell_).Command(TrayCommand::Exit);
    EXPECT_EQ(shell_.questions.size(), 3u) << "on desktop 1 without a question";
    EXPECT_EQ(s_.Taken(kSignals), std::vector<std::string>{"Shutdown"});
    s_.os.DeleteFileW(kFolder + u"\\ZelkovaSettings.exe");
    herald.Command(TrayCommand::ErrorLog);
    herald.Command(TrayCommand::Settings);  // not there
    ASSERT_EQ(s_.os.StartedProcesses().size(), 1u);
    EXPECT_EQ(s_.os.StartedProcesses()[0].applicationName, kFolder + u"\\ZelkovaError.exe");
    ASSERT_EQ(shell_.told.size(), 1u);
    EXPECT_NE(
        shell_.told[0].find(u"ZelkovaSettings.exe could not be started: The system cannot find"),
        Text::npos);
}

// The wheel over the icon: a whole notch (a fine wheel's parts add up) shows the next desktop
// (towards the user) or the one before, wrapping; once the pointer has left, the wheel is not
// watched until it comes back.
TEST(TrayWheel, AWholeNotchTurnsTowardsTheUserToTheNextAndOnlyWhileThePointerIsOver) {
    using Turn = TrayWheel::Turn;
    TrayWheel wheel;
    wheel.PointerOver({500, 700}, 16);
    EXPECT_EQ(wheel.Wheel({510, 690}, -120), Turn::Next);
    EXPECT_EQ(wheel.Wheel({510, 690}, 60), Turn::None);
    EXPECT_EQ(wheel.Wheel({510, 690}, 60), Turn::Before);
    EXPECT_FALSE(wheel.Moved({520, 700})) << "off the icon";
    EXPECT_EQ(wheel.Wheel({500, 700}, 120), Turn::None) << "not watched until the pointer is back";
    wheel.PointerOver({500, 700}, 16);
    EXPECT_EQ(wheel.Wheel({500, 700}, 120), Turn::Before);
}

// Each by the full path of its program, found as the system would but never in the current
// folder: Zelkova2 may have been started from a folder that holds a planted "explorer.exe"
// (CreateProcess, "lpCommandLine": the current directory is searched second).
TEST_F(HeraldTest, StartsTheDesktopsProgramsOnceByTheirFullPathsOrTheShell) {
    struct Case {
        std::vector<Text> stored;  // empty: no key
        bool off;
        bool windowShown;
        std::vector<Text> started;
    };
    const Case cases[] = {
        {{}, false, false, {u"\"C:\\Windows\\explorer.exe\""}},
        {{u"notepad.exe C:\\notes.txt", u"%SystemRoot%\\calc.exe", u"tool -x", u"nosuch",
          u"C:\\Program Files\\App\\app.exe --go", u" \"C:\\Program Files\\App\\app.exe\" -q",
          u"\\\\server\\share\\tool.exe -y"},
         false,
         false,
         {u"\"C:\\Windows\\System32\\notepad.exe\" C:\\notes.txt", u"\"C:\\Windows\\calc.exe\"",
          u"\"D:\\Tools\\tool.exe\" -x", u"\"C:\\Program Files\\App\\app.exe\" --go",
          u"\"C:\\Program Files\\App\\app.exe\" -q", u"\"\\\\server\\share\\tool.exe\" -y"}},
        {{u"notepad.exe"}, true, false, {}},
        {{u"notepad.exe"}, false, true, {}},  // an earlier run started them
    };
    for (const Case& c : cases) {
        CompanionSession s(u"DeskHerald.exe", u"desk2");
        for (const char16_t* file :
             {u"C:\\Windows\\calc.exe", u"C:\\Windows\\System32\\notepad.exe",
              u"C:\\Windows\\explorer.exe", u"D:\\Tools\\tool.exe",
              u"C:\\Program Files\\App\\app.exe", u"C:\\Users\\user1\\Downloads\\explorer.exe",
              u"C:\\Users\\user1\\Downloads\\notepad.exe", u"C:\\Users\\user1\\Downloads\\tool.exe",
              u"\\\\server\\share\\tool.exe"})
            s.os.AddFile(file);
        s.os.SetEnvironmentVariable(u"PATH", u"relative;D:\\Tools");
        s.os.SetCurrentDirectory(u"C:\\Users\\user1\\Downloads");
        for (std::size_t i = 0; i < c.stored.size(); ++i)
            s.os.registry().SetText(u"Software\\Zelkova\\Desktop2\\Programs", DecimalText(i + 1),
                                    c.stored[i]);
        if (c.off) s.os.registry().SetDword(u"Software\\Zelkova\\Desktop2", u"StartPrograms", 0);
        if (c.windowShown) {
            (void)s.os.CreateWindowInOtherProcess(u"w", nullptr, sim::kOtherProcessId,
                                                  Text(u"desk2"), WsVisible);
        }
        Registry registry(s.os);
        EXPECT_EQ(StartStartupPrograms(s.os, registry, 2), static_cast<int>(c.started.size()));
        std::vector<Text> started;
        for (const auto& p : s.os.StartedProcesses()) {
            started.push_back(p.commandLine);
            EXPECT_EQ(p.startupInfo.lpDesktop, u"desk2");
        }
        EXPECT_EQ(started, c.started);
        const bool logged = s.os.FileText(kLog).find("was not found: nosuch") != std::string::npos;
        EXPECT_EQ(logged, c.stored.size() > 2) << "a program that is not found is logged";
    }
}

TEST_F(HeraldTest, KeepsItsSwitcherRunningAndAMissingSwitcherIsLoggedOnceAndShown) {
    Herald& herald = Make(2);
    const std::uint32_t pilot = s_.os.AddOtherProcess(u"DeskPilot.exe", s_.controller);
    SharedState(s_.os, s_.controller).Block().companions[PilotSlot(2)] = pilot;
    s_.os.SetEventInOtherProcess(s_.Name(SharedObject::Up, 1));
    s_.os.EndProcess(pilot);  // before the herald looked at it: started again all the same
    EXPECT_FALSE(Pump());
    ASSERT_EQ(s_.os.StartedProcesses().size(), 1u);
    for (int death = 0; death < 6; ++death) {  // one that keeps dying is given up after five
        s_.os.EndProcess(s_.os.StartedProcesses().back().processId);
        EXPECT_FALSE(Pump());
    }
    ASSERT_EQ(s_.os.StartedProcesses().size(), 5u);
    EXPECT_EQ(s_.os.StartedProcesses()[0].commandLine, u" 2 " + DecimalText(s_.controller));
    EXPECT_EQ(s_.os.StartedProcesses()[0].startupInfo.lpDesktop, u"desk2");
    EXPECT_NE(s_.os.FileText(kLog).find("DeskPilot.exe 2 kept ending"), std::string::npos);

    s_.os.RemoveFile(kFolder + u"\\DeskPilot.exe");
    herald.Start();  // herald 2: shows it, does not log it
    EXPECT_NE(herald.Tooltip().find(u"DeskPilot.exe is missing"), Text::npos);
    Herald first(s_.os, 1, controller_, shell_);
    first.Start();
    first.Start();
    const std::string log = s_.os.FileText(kLog);
    EXPECT_EQ(log.find("DeskPilot.exe is missing"), log.rfind("DeskPilot.exe is missing"));
    EXPECT_NE(log.find("DeskPilot.exe is missing from C:\\Program Files\\Zelkova2"),
              std::string::npos);
    EXPECT_TRUE(s_.os.journal().Find("CreateProcessW", "ZelkovaError.exe ]")) << "the reporter";
}

}  // namespace
}  // namespace zk::companion
