// The switcher on the simulated session: its hotkeys where the system lets it hold them, what
// a signal or a key means, and when it takes pictures.

#include "DeskPilot/pilot.h"

#include <gtest/gtest.h>

#include "companions/companion_session.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;

constexpr std::uint32_t kCtrlAlt = 3;
const std::vector<std::string> kCommands = {"SwitchToDesktop1", "SwitchToDesktop2",
                                            "SwitchToDesktop3", "SwitchToDesktop4"};

struct FakeShell final : Pilot::Shell {
    void ShowPreview() override {
        calls.push_back("show");
        shown = true;
    }
    void HidePreview() override {
        calls.push_back("hide");
        shown = false;
    }
    void PutAway() override {
        calls.push_back("away");
        away = shown;
    }
    void HidePutAway() override {
        if (away) HidePreview();
        away = false;
    }
    bool PreviewShown() override { return shown; }
    void Capture() override { calls.push_back("capture"); }
    void ShowFinder() override { calls.push_back("finder"); }
    std::vector<std::string> calls;
    bool shown = false;
    bool away = false;
};

Pilot* g_pilot = nullptr;

Lresult ZK_CALLBACK PilotProcedure(Hwnd, std::uint32_t message, Wparam wParam, Lparam) {
    if (g_pilot != nullptr && message == WmHotKey) g_pilot->HotKey(static_cast<int>(wParam));
    if (g_pilot != nullptr && message == WmTimer) g_pilot->TimerFired(wParam);
    return 0;
}

// The switcher of one desktop; the controller holds the six default hotkeys on "Default".
class PilotTest : public ::testing::TestWithParam<sim::HotKeyScope> {
  protected:
    PilotTest() {
        s_.os.SetHotKeyScope(GetParam());
        for (const std::uint32_t key : {0x61, 0x62, 0x63, 0x64, 0x08, 0x6B})
            EXPECT_TRUE(s_.os.HoldHotKeyInOtherProcess(kCtrlAlt, key, Text(u"Default")));
    }
    // The switcher of desktop N, started there with its window.
    void Start(int desk) {
        s_.os.StartOnDesktop(desk == 1 ? Text(u"Default") : u"desk" + DecimalText(desk));
        (void)s_.os.RegisterClassW(u"Pilot", &PilotProcedure, s_.os.GetModuleHandleW());
        window_ =
            s_.os.CreateWindowExW(0, u"Pilot", u"pilot", 0, nullptr, s_.os.GetModuleHandleW());
        pilot_ = std::make_unique<Pilot>(s_.os, desk, controller_, window_, shell_);
        g_pilot = pilot_.get();
    }
    ~PilotTest() override { g_pilot = nullptr; }
    void Pump() {
        (void)s_.os.RunMessageLoop([&] {
            pilot_->Run();
            return 0;
        });
    }

    CompanionSession s_{u"DeskPilot.exe", u"Default"};
    ControllerProcess controller_{s_.os, 0};
    Hwnd window_ = nullptr;
    FakeShell shell_;
    std::unique_ptr<Pilot> pilot_;
};

// Where hotkeys belong to a desktop, one that another program holds there is logged, as the
// controller logs its own; where they belong to the session, the controller holds them all.
TEST_P(PilotTest, HoldsTheHotKeysOnItsDesktopWhereTheSystemLetsItAndLogsOnlyWhatOthersHold) {
    const bool perDesktop = GetParam() == sim::HotKeyScope::Desktop;
    s_.os.AddFile(testing::kFolder + u"\\ZelkovaError.exe");
    s_.os.CreateDesktopInOtherProcess(u"desk2");
    (void)s_.os.HoldHotKeyInOtherProcess(kCtrlAlt, 0x63, Text(u"desk2"));
    Start(2);
    const auto& held = pilot_->HotKeysHeld().HotKeyOk;
    EXPECT_EQ(std::count_if(held.begin(), held.end(), [](auto ok) { return ok != 0; }),
              perDesktop ? 5 : 0);
    const std::string log = s_.os.FileText(testing::kLog);
    EXPECT_EQ(log.find("Zelkova: Failed to register the following hotkey: 3 + Num 3\r\n") !=
                  std::string::npos,
              perDesktop);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), perDesktop ? 1 : 0);
    EXPECT_EQ(s_.os.StartedProcesses().size(), perDesktop ? 1u : 0u) << "the reporter, once";
}

// The switcher shows the target itself, then sends the command that keeps the controller's record
// (and makes the switch where the system refused the switcher's). A desktop made after the
// switcher started is opened when it is first shown.
TEST_P(PilotTest, AHotKeyOrASignalShowsItsDesktopAtOnceThenAsksTheController) {
    s_.os.CreateDesktopInOtherProcess(u"desk3");
    Start(2);
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    s_.os.CreateDesktopInOtherProcess(u"desk4");
    shell_.ShowPreview();
    s_.os.journal().Clear();
    s_.Raise("Switcher2SwitchTo4");  // the controller's hotkey, where it holds them
    Pump();
    EXPECT_EQ(s_.os.InputDesktopName(), u"desk4");
    const auto shown = s_.os.journal().Find("SwitchDesktop");
    ASSERT_TRUE(shown.has_value());
    EXPECT_TRUE(s_.os.journal().Find("SetEvent", {}, *shown)) << "the command comes after";
    EXPECT_EQ(s_.Taken(kCommands), std::vector<std::string>{"SwitchToDesktop4"});
    EXPECT_EQ(std::count(shell_.calls.begin(), shell_.calls.end(), "capture"), 0);
    EXPECT_EQ(shell_.calls.back(), "away") << "the preview goes out of sight, not hidden";
    s_.os.ShowDesktopInOtherProcess(u"desk2");

    s_.os.faults().FailEvery("SwitchDesktop", ErrorAccessDenied);
    s_.Raise("Switcher2SwitchTo1");
    Pump();
    EXPECT_EQ(s_.os.InputDesktopName(), u"desk2");
    EXPECT_EQ(s_.Taken(kCommands), std::vector<std::string>{"SwitchToDesktop1"})
        << "left to the controller";
}

// Under Wine 10 the input follows the X focus, and a notice about the desktop just left can take
// the user back there after the switch; Windows moves the input only on SwitchDesktop. The
// switcher shows the target again for a moment after its switch, unless the user has moved on.
TEST_P(PilotTest, AnInputTakenBackToTheDesktopJustLeftGoesToTheTargetAgain) {
    s_.os.CreateDesktopInOtherProcess(u"desk3");
    Start(2);
    const auto takenBack = [&](const std::function<void()>& meanwhile) {
        s_.os.AdvanceTime(1000);
        s_.os.ShowDesktopInOtherProcess(u"desk2");
        s_.Raise("Switcher2SwitchTo3");
        Pump();
        SharedState(s_.os, s_.controller).RecordSwitch(3);  // as the bridge does
        s_.os.ShowDesktopInOtherProcess(u"desk2");          // the late notice
        meanwhile();
        s_.os.AdvanceTime(SwitchGuard::kLookEvery);
        Pump();
        return s_.os.InputDesktopName();
    };
    EXPECT_EQ(takenBack([] {}), u"desk3");
    EXPECT_EQ(takenBack([&] { SharedState(s_.os, s_.controller).RecordSwitch(2); }), u"desk2")
        << "a switch back, recorded";
    EXPECT_EQ(takenBack([&] { SharedState(s_.os, s_.controller).Block().hotKeyTick += 1; }),
              u"desk2")
        << "a key on its way";
    EXPECT_EQ(takenBack([&] { s_.os.AdvanceTime(SwitchGuard::kWatchFor); }), u"desk2")
        << "too long after the switch";
}

// The finder's choice on another desktop: that desktop's switcher brings the window to the front
// once its desktop is shown, restored if it was minimised (SetForegroundWindow, Remarks: a window
// of the input desktop, by a process given the right).
TEST_P(PilotTest, TheWindowTheFinderChoseComesToTheFrontOnceItsDesktopIsShown) {
    Start(3);
    const Hwnd notepad =
        s_.os.CreateWindowInOtherProcess(u"Untitled - Notepad", nullptr, sim::kOtherProcessId,
                                         Text(u"desk3"), WsVisible | WsMinimize);
    SharedState state(s_.os, s_.controller);
    s_.os.GrantForegroundFromOtherProcess();  // by the finder's switcher, which took the Enter key
    Signals finder(s_.os, s_.os);
    int switched = 0;
    ShowFoundWindow(s_.os, finder, state, 1, {3, notepad, u"Untitled - Notepad", u"notepad.exe", 0},
                    [&](int desk) { switched = desk; });
    EXPECT_EQ(switched, 3);
    Pump();
    EXPECT_EQ(s_.os.ForegroundWindow(), nullptr) << "not before its desktop is shown";
    // The notice of the switch may come while the input is away for a moment (under Wine 10, a
    // late focus notice that the guard undoes): the switcher looks again while the record names
    // its desktop, and then also hides the preview it put away when the user last left.
    shell_.ShowPreview();
    shell_.PutAway();
    state.RecordSwitch(3);
    s_.os.CreateDesktopInOtherProcess(u"desk2");
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    EXPECT_TRUE(pilot_->Woken({Pilot::kShown, 3}));
    EXPECT_EQ(s_.os.ForegroundWindow(), nullptr);
    s_.os.ShowDesktopInOtherProcess(u"desk3");
    Pump();
    EXPECT_EQ(s_.os.ForegroundWindow(), notepad);
    EXPECT_FALSE(s_.os.IsIconic(notepad));
    EXPECT_EQ(state.Block().bringForward, 0u);
    EXPECT_FALSE(shell_.shown) << "the preview put away is hidden";
}

// A held key switches once, and a second press switches again. The switchers ask the system not
// to repeat their hotkeys (RegisterHotKey, MOD_NOREPEAT), but the controller's registration
// repeats, and under Wine every one does: a repeat is the same key again while it is held.
TEST_P(PilotTest, AHeldKeySwitchesOnceAndASecondPressSwitchesAgain) {
    Start(2);
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    // Desktop 2 stays shown, so that every arrival finds the key's state there: the system tells
    // a key's state only to the desktop shown (GetAsyncKeyState, Remarks).
    s_.os.faults().FailEvery("SwitchDesktop", ErrorAccessDenied);
    SharedState(s_.os, s_.controller).RecordSwitch(2);
    EXPECT_TRUE(s_.os.journal().Find("RegisterHotKey", "id 5 mod 16387 vk 8"));
    const bool own = GetParam() == sim::HotKeyScope::Desktop;  // the key reaches this switcher
    const auto arrives = [&](bool repeat) {
        if (!own) s_.Raise("Switcher2SwitchTo1");  // the controller's signal for the key
        if (own && repeat) pilot_->HotKey(5);      // as under Wine
        Pump();
        return s_.Taken(kCommands);
    };
    const std::vector<std::string> once = {"SwitchToDesktop1"};
    s_.os.HoldHotKey(kCtrlAlt, 0x08);
    const int asked = s_.os.journal().Count("GetAsyncKeyState");
    EXPECT_EQ(arrives(false), once);
    EXPECT_EQ(s_.os.journal().Count("GetAsyncKeyState"), asked)
        << "a new press switches without asking the keyboard which key it was";
    s_.os.RepeatHeldKey(500);
    EXPECT_TRUE(arrives(true).empty());
    s_.os.RepeatHeldKey(33);
    s_.os.ReleaseKeys();
    EXPECT_TRUE(arrives(true).empty()) << "the last repeat can come after the key went up";
    s_.os.AdvanceTime(200);
    s_.os.HoldHotKey(kCtrlAlt, 0x08);
    EXPECT_EQ(arrives(false), once) << "pressed again";
    s_.os.ReleaseKeys();
    s_.os.AdvanceTime(150);
    s_.os.HoldHotKey(kCtrlAlt, 0x08);
    EXPECT_EQ(arrives(false), once) << "pressed again sooner than the keyboard repeats";
    s_.os.AdvanceTime(600);  // the press went elsewhere: the first arrival here is a repeat
    s_.os.RepeatHeldKey(33);
    EXPECT_EQ(arrives(true), once);
    s_.os.RepeatHeldKey(33);
    EXPECT_TRUE(arrives(true).empty()) << "the repeats after it are repeats";
}

// At rest nothing wakes the switcher: a picture follows a change of the desktop's windows.
TEST_P(PilotTest,
       PicturesComeAMomentAfterTheDesktopIsShownAndAfterItsWindowsChangeAtMostEveryHalfMinute) {
    Start(2);
    const auto changed = [&](std::uint64_t after) {
        pilot_->WindowsChanged();
        pilot_->WindowsChanged();  // a burst
        s_.os.AdvanceTime(after);
        Pump();
        return std::count(shell_.calls.begin(), shell_.calls.end(), "capture");
    };
    EXPECT_EQ(changed(Pilot::kMoment), 0) << "desktop 2 is not shown";
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    s_.os.SetEventInOtherProcess(s_.Name(SharedObject::Shown, 2));
    Pump();
    s_.os.AdvanceTime(Pilot::kMoment);
    Pump();
    EXPECT_EQ(shell_.calls, std::vector<std::string>{"capture"});
    s_.os.AdvanceTime(10 * Pilot::kHalfMinute);
    Pump();
    EXPECT_EQ(shell_.calls.size(), 1u) << "none at rest";
    EXPECT_EQ(changed(Pilot::kMoment), 2);
    EXPECT_EQ(changed(Pilot::kMoment), 2) << "not within half a minute of the last";
    EXPECT_EQ(changed(Pilot::kHalfMinute), 3) << "but then";
    s_.os.ShowDesktopInOtherProcess(u"Default");
    EXPECT_EQ(changed(Pilot::kHalfMinute), 3) << "none while another desktop is shown";
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    pilot_->HotKey(6);
    s_.Raise("ShowPopupSwitcher2");
    Pump();
    EXPECT_EQ(shell_.calls, (std::vector<std::string>{"capture", "capture", "capture", "capture",
                                                      "show", "show"}))
        << "one before the preview opens, none while it is open: it would show itself";
}

TEST_P(PilotTest, TheSwitcherOfDesktop1SaysOnceThatTheHeraldsProgramIsMissing) {
    s_.os.RemoveFile(testing::kFolder + u"\\DeskHerald.exe");
    Start(1);
    Pilot again(s_.os, 1, controller_, window_, shell_);
    const std::string log = s_.os.FileText(testing::kLog);
    EXPECT_NE(log.find("Zelkova: DeskHerald.exe is missing from C:\\Program Files\\Zelkova2: "
                       "Zelkova2 cannot switch desktops."),
              std::string::npos);
    EXPECT_EQ(log.find("is missing"), log.rfind("is missing")) << "once";
    EXPECT_TRUE(s_.os.journal().Find("CreateProcessW", "ZelkovaError.exe ]")) << "the reporter";
}

INSTANTIATE_TEST_SUITE_P(BothScopes, PilotTest,
                         ::testing::Values(sim::HotKeyScope::Session, sim::HotKeyScope::Desktop),
                         [](const auto& info) {
                             return info.param == sim::HotKeyScope::Session ? "SessionWide"
                                                                            : "PerDesktop";
                         });

}  // namespace
}  // namespace zk::companion
