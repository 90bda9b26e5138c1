// The controller on the simulated session: startup with its failure paths, hotkeys and
// commands, and the shutdown.

#include "controller/frm_zk.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"
#include "signals/shared_state.h"
#include "winsupport/process_context.h"

namespace zk {
namespace {

const Text kFolder = u"C:\\Program Files\\Zelkova2";
const Text kLog = u"C:\\Users\\user1\\AppData\\Local\\ZelkovaErrors.txt";
const std::string kPrefix = "Local\\larchmont_";
const std::string kStamp = "11/22/2026 2:05:09 PM ";

class ControllerTest : public ::testing::Test {
  protected:
    ControllerTest() : context_(os_, [this](const Text& what) { reported_.push_back(what); }) {
        for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe", u"ZelkovaError.exe"}) {
            os_.AddFile(kFolder + u"\\" + file);
        }
    }

    // Creates the window and runs the startup; false when the process ended inside it.
    bool Start() {
        form_ = frmZK::Create(os_);
        EXPECT_NE(form_, nullptr);
        try {
            form_->Form_Load();
        } catch (const sim::ProcessEnded& ended) {
            exitCode_ = ended.exitCode;
            return false;
        }
        window_ = form_->hWnd();
        return true;
    }
    // Lets the message loop run until nothing is left to do; its exit code once it ended.
    std::optional<int> Pump() {
        return os_.RunMessageLoop([&] { return RunMessageLoop(os_); });
    }
    void Press(std::uint32_t modifiers, std::uint32_t key) {
        ASSERT_TRUE(os_.PressHotKey(modifiers, key));
        ASSERT_EQ(Pump(), std::nullopt);
    }
    void Command(const std::string& text) { (void)os_.SendCopyData(window_, text); }
    // The signals set since the last look, taken as companions waiting on them would.
    std::vector<std::string> Signalled() {
        std::vector<std::string> set;
        EventNames names;
        names.InitEventNames();
        for (std::int16_t i = 1; i <= kSignalCount; ++i) {
            const Ansi name = os_.WideCharToMultiByte(names.EventName(i));
            if (os_.WaitForEventInOtherProcess(name)) set.push_back(name.substr(kPrefix.size()));
        }
        return set;
    }
    std::vector<Text> Starts() const {
        std::vector<Text> starts;
        for (const auto& p : os_.StartedProcesses()) {
            const Text image = p.image.substr(p.image.find_last_of(u'\\') + 1);
            const Text arguments = p.applicationName ? p.commandLine : Text();
            starts.push_back(image + arguments + u" on " + p.startupInfo.lpDesktop.value_or(u"-"));
        }
        return starts;
    }
    const frmZKRecord& record() const { return form_->record(); }
    std::size_t At(const char* call, std::string_view part = {}, std::size_t from = 0) {
        const auto found = os_.journal().Find(call, part, from);
        EXPECT_TRUE(found.has_value()) << call << " " << part;
        return found.value_or(0);
    }

    sim::SimOs os_;
    ProcessContext context_;
    std::shared_ptr<frmZK> form_;
    Hwnd window_ = nullptr;
    std::optional<std::uint32_t> exitCode_;
    std::vector<Text> reported_;  // errors that reached the window procedure's guard
};

TEST_F(ControllerTest, NormalStartRunsItsStepsInOrderAndEndsOnDesktopOne) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(record().CurrentDesk, 1);
    EXPECT_EQ(record().PreviousDesk, 0);
    for (int id = 1; id <= 6; ++id)
        EXPECT_NE(record().HotKeyOk[id], 0) << id;
    EXPECT_EQ(os_.InputDesktopName(), u"Default");
    EXPECT_EQ(os_.GetPropW(window_, u"Zelkova2_APP5"), HandleFrom<Handle>(1));
    EXPECT_EQ(os_.FindWindowByCaption(u"Zelkova 2"), window_);
    EXPECT_FALSE(os_.IsWindowVisible(window_));
    EXPECT_NE(os_.WindowExStyle(window_) & 0x80, 0u) << "a tool window stays out of the taskbar";
    EXPECT_NE(os_.WindowIcon(window_, true), nullptr);
    EXPECT_TRUE(Signalled().empty());
    EXPECT_EQ(os_.FileContents(kLog), std::nullopt);

    EXPECT_EQ(Starts(),
              (std::vector<Text>{u"DeskPilot.exe 1 on Default", u"DeskHerald.exe 1 on Default",
                                 u"DeskHerald.exe 5 on Default", u"DeskPilot.exe 2 on desk2",
                                 u"DeskHerald.exe 2 on desk2", u"DeskPilot.exe 3 on desk3",
                                 u"DeskHerald.exe 3 on desk3", u"DeskPilot.exe 4 on desk4",
                                 u"DeskHerald.exe 4 on desk4"}));

    std::size_t step = At("LoadImageA", "AAA");
    step = At("SetPropA", "Zelkova2_APP5", step);
    step = At("SetPropW", "#786#1", step);
    step = At("SetPropW", "#74#1", step);
    step = At("CreateEventA", kPrefix + "Switcher1SwitchTo1", step);
    step = At("CreateEventA", kPrefix + "Shutdown", step);
    step = At("RegisterHotKey", "id 1 mod 3 vk 97", step);
    step = At("RegisterHotKey", "id 6 mod 3 vk 107", step);
    step = At("OpenInputDesktop", "", step);
    for (const char* desk : {"desk2", "desk3", "desk4"})
        step = At("CreateDesktopW", desk, step);
    step = At("CreateProcessW", "DeskHerald.exe cmd=[ 4]", step);
    const std::size_t last = At("SwitchDesktop", "", step);
    EXPECT_EQ(os_.journal().Find("SwitchDesktop", "", last + 1), std::nullopt);
    EXPECT_EQ(os_.journal().Details("CreateEventA").size(), 54u);
    EXPECT_EQ(os_.OpenHandleCount(), 54u + 4u + 1u)
        << "the events, the four desktops and the companions' shared block";
}

TEST_F(ControllerTest, AnEventThatCannotBeCreatedEndsTheProcessAtOnce) {
    os_.faults().FailNth("CreateEventA", 3, ErrorAccessDenied);
    EXPECT_FALSE(Start());
    EXPECT_EQ(exitCode_, 2u);
    EXPECT_NE(record().EventHandles[1], nullptr);
    EXPECT_NE(record().EventHandles[2], nullptr);
    EXPECT_EQ(record().EventHandles[3], nullptr);
    EXPECT_EQ(os_.FileText(kLog), kStamp + "Zelkova: Failed to create event " + kPrefix +
                                      "Switcher1SwitchTo3 (Access is denied.\r\n)\r\n");
    EXPECT_EQ(Starts(), std::vector<Text>{u"ZelkovaError.exe on -"});
    const std::size_t logged = At("WriteFile");
    const std::size_t reporter = At("CreateProcessW", "", logged);
    At("ExitProcess", "2", reporter);
    for (const char* untouched : {"RegisterHotKey", "GetThreadDesktop", "OpenInputDesktop",
                                  "CreateDesktopW", "SwitchDesktop", "RemovePropW"}) {
        EXPECT_EQ(os_.journal().Count(untouched), 0) << untouched;
    }
}

TEST_F(ControllerTest, AHotKeyTakenByAnotherProgramIsLoggedAndTheStartGoesOn) {
    os_.HoldHotKeyInOtherProcess(3, 98);
    ASSERT_TRUE(Start());
    EXPECT_EQ(record().HotKeyOk[2], 0);
    EXPECT_EQ(record().CurrentDesk, 1);
    EXPECT_EQ(os_.FileText(kLog),
              kStamp + "Zelkova: Failed to register the following hotkey: 3 + Num 2\r\n");
    EXPECT_EQ(Starts().front(), u"ZelkovaError.exe on -") << "reported before the desktops";
    EXPECT_EQ(Starts().size(), 10u);
}

TEST_F(ControllerTest, DesktopOneThatCannotBeTakenUnloadsWithoutAnySwitch) {
    os_.faults().FailEvery("OpenInputDesktop", ErrorAccessDenied);
    ASSERT_TRUE(Start());
    EXPECT_EQ(os_.FileText(kLog), kStamp + "Zelkova: cDesktop: Access is denied.\r\n\r\n")
        << "the system's text keeps its own line end";
    EXPECT_EQ(os_.journal().Count("SwitchDesktop"), 0);
    EXPECT_TRUE(form_->unloaded());
    EXPECT_FALSE(os_.IsWindow(window_));
    EXPECT_EQ(os_.RegisteredHotKeyCount(), 0u);
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
    EXPECT_EQ(record().CurrentDesk, 0);
    EXPECT_EQ(Pump(), 1) << "the loop ends with the unloaded start's exit code";
}

TEST_F(ControllerTest, Desk2ThatCannotBeMadeIsLoggedWithoutABlankAfterTheColon) {
    os_.faults().FailNth("CreateDesktopW", 1, ErrorNotEnoughMemory);
    ASSERT_TRUE(Start());
    EXPECT_EQ(os_.FileText(kLog),
              kStamp +
                  "Zelkova:cDesktop: Not enough memory resources are available to process "
                  "this command.\r\n\r\n");
    EXPECT_TRUE(form_->unloaded());
}

TEST_F(ControllerTest, Desk3ThatCannotBeMadeSwitchesBackFirstAndKeepsDesk2) {
    os_.faults().FailNth("CreateDesktopW", 2, ErrorNotEnoughMemory);
    ASSERT_TRUE(Start());
    EXPECT_TRUE(os_.DesktopExists(u"desk2")) << "its companions keep it";
    EXPECT_EQ(Starts().size(), 5u + 1u);
    EXPECT_EQ(os_.InputDesktopName(), u"Default");
    const std::size_t back = At("SwitchDesktop", "", At("CreateDesktopW", "desk3"));
    const std::size_t logged = At("WriteFile", "", back);
    const std::size_t reporter = At("CreateProcessW", "", logged);
    At("CloseDesktop", "", reporter);
    EXPECT_EQ(os_.journal().Find("SwitchDesktop", "", logged), std::nullopt);
    EXPECT_NE(os_.FileText(kLog).find("Zelkova: cDesktop: Not enough memory"), std::string::npos);
    EXPECT_EQ(os_.journal().Count("CloseDesktop"), 2) << "desktops 1 and 2 held handles";
    EXPECT_EQ(record().CurrentDesk, 0);
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
}

TEST_F(ControllerTest, HotKeysSignalTheCurrentDesktopsBlockAndSwitchCommandsMoveIt) {
    ASSERT_TRUE(Start());
    SharedState companions(os_, os_.GetCurrentProcessId());  // as the switchers publish them
    for (int desk = 1; desk <= 4; ++desk)
        companions.Block().companions[PilotSlot(desk)] = 0x500 + desk;
    struct Step {
        std::string command;  // sent first, if any
        std::uint32_t key;    // then pressed with Ctrl+Alt, if any
        std::vector<std::string> signalled;
        std::int16_t current, previous;
        int switches;  // SwitchTo calls the step makes
    };
    const std::string to = kPrefix + "SwitchToDesktop";
    const Step steps[] = {
        {"", 97, {"Switcher1SwitchTo1"}, 1, 0, 0},
        {"", 8, {}, 1, 0, 0},  // no previous desktop yet
        {"", 107, {"ShowPreviewSwitcher1"}, 1, 0, 0},
        {to + "1", 0, {}, 1, 0, 0},  // already shown
        {to + "2", 0, {}, 2, 1, 1},
        {"", 8, {"Switcher2SwitchTo1"}, 2, 1, 0},
        {"", 107, {"ShowPreviewSwitcher2"}, 2, 1, 0},
        {to + "3", 0, {}, 3, 2, 1},
        {"", 99, {"Switcher3SwitchTo3"}, 3, 2, 0},
        {"", 8, {"Switcher3SwitchTo2"}, 3, 2, 0},
        {kPrefix + "ReadReg", 0, {}, 3, 2, 0},
    };
    for (const auto& step : steps) {
        const int switches = os_.journal().Count("SwitchDesktop");
        if (!step.command.empty()) Command(step.command);
        if (step.key != 0) Press(3, step.key);
        EXPECT_EQ(Signalled(), step.signalled) << step.command << " " << step.key;
        EXPECT_EQ(record().CurrentDesk, step.current) << step.command << " " << step.key;
        EXPECT_EQ(record().PreviousDesk, step.previous) << step.command << " " << step.key;
        EXPECT_EQ(os_.journal().Count("SwitchDesktop") - switches, step.switches);
    }
    EXPECT_EQ(os_.InputDesktopName(), u"desk3");
    // The preview key lets the switcher it signals take the keyboard, right before the signal:
    // the controller can pass the right on because it received the key (AllowSetForegroundWindow,
    // Remarks); the other keys pass nothing.
    EXPECT_EQ(os_.ForegroundGrants(), (std::vector<std::uint32_t>{0x501, 0x502}));
    const auto& calls = os_.journal().Entries();
    for (std::size_t i = 0; i + 1 < calls.size(); ++i) {
        if (calls[i].call == "AllowSetForegroundWindow") {
            EXPECT_EQ(calls[i + 1].call, "SetEvent");
        }
    }
    for (const Wparam id : {Wparam{0}, Wparam{7}, ~Wparam{0}})  // no hotkey of ours
        ASSERT_TRUE(os_.PostMessageW(window_, WmHotKey, id, 0));
    EXPECT_EQ(Pump(), std::nullopt);
    EXPECT_TRUE(Signalled().empty());
    EXPECT_TRUE(reported_.empty()) << "no hotkey raised an error";
}

TEST_F(ControllerTest, OnlyTheExactCommandTextsCount) {
    ASSERT_TRUE(Start());
    const int conversions = os_.journal().Count("MultiByteToWideChar");
    const int switches = os_.journal().Count("SwitchDesktop");
    const std::string ignored[] = {
        "SwitchToDesktop2",
        "local\\larchmont_SwitchToDesktop2",
        kPrefix + "switchtodesktop2",
        std::string(kPrefix + "SwitchToDesktop2") + '\0',
        std::string(kPrefix + "Shutdown") + '\0',  // short enough to be read, then compared
        kPrefix + "SwitchToDesktop5",
        kPrefix + "Switcher1SwitchTo2",
        "",
    };
    for (const auto& text : ignored)
        Command(text);
    EXPECT_EQ(record().CurrentDesk, 1);
    EXPECT_EQ(os_.journal().Count("SwitchDesktop"), switches);
    EXPECT_EQ(os_.journal().Count("MultiByteToWideChar") - conversions, 5)
        << "neither the empty text nor those longer than any command";

    const std::string hostile(100 * 1024 * 1024, 'A');
    Command(hostile);
    EXPECT_EQ(os_.journal().Count("MultiByteToWideChar") - conversions, 5)
        << "a payload longer than any command is not converted";
    CopyDataStruct noData{0, 10, nullptr};
    (void)os_.SendMessageW(window_, WmCopyData, 0, reinterpret_cast<Lparam>(&noData));
    (void)os_.SendMessageW(window_, WmCopyData, 0, 0);
    EXPECT_TRUE(Signalled().empty());
    EXPECT_TRUE(os_.IsWindow(window_));
}

TEST_F(ControllerTest, ReadRegReloadsTheHotKeysWhileRunning) {
    ASSERT_TRUE(Start());
    os_.registry().SetDword(u"Software\\Zelkova", u"Desktop2Key", 0x78);
    os_.registry().SetDword(u"Software\\Zelkova", u"Desktop2KeyMod", 6);
    EXPECT_FALSE(os_.PressHotKey(6, 0x78));
    Command(kPrefix + "ReadReg");
    EXPECT_FALSE(os_.PressHotKey(3, 98));
    Press(6, 0x78);
    EXPECT_EQ(Signalled(), std::vector<std::string>{"Switcher1SwitchTo2"});
    // The tools read the pairs in force where the companions do: one that cannot be read again
    // is kept there as it is kept in force.
    os_.registry().SetText(u"Software\\Zelkova", u"Desktop2Key", u"F10");
    Command(kPrefix + "ReadReg");
    SharedState shared(os_, os_.GetCurrentProcessId());
    EXPECT_EQ(shared.Block().hotKeysPublished, 1u);
    EXPECT_EQ(shared.Block().hotKeyCodes[1], 0x78);
    EXPECT_EQ(shared.Block().hotKeyModifiers[1], 6);
    EXPECT_EQ(shared.Block().hotKeyCodes[2], 99) << "the default";
}

TEST_F(ControllerTest, ShutdownCommandUnloadsInsideItsOwnDispatchAndLeavesTheDesktopShown) {
    ASSERT_TRUE(Start());
    Command(kPrefix + "SwitchToDesktop3");
    Command(kPrefix + "Shutdown");
    EXPECT_FALSE(os_.IsWindow(window_));
    EXPECT_EQ(os_.RegisteredHotKeyCount(), 0u);
    EXPECT_EQ(os_.OpenHandleCount(), 0u) << "every event and desktop handle closed";
    EXPECT_EQ(os_.InputDesktopName(), u"desk3");
    EXPECT_TRUE(Signalled().empty());
    for (const auto& desktop : record().Desktops)
        EXPECT_EQ(desktop, nullptr);
    EXPECT_EQ(record().CurrentDesk, 3) << "the shutdown leaves the fields as they are";
    EXPECT_LT(At("RemovePropW", "#74#1"), At("RemovePropW", "#786#1"));
    EXPECT_LT(At("CloseDesktop"), At("UnregisterHotKey")) << "the desktops first, then the hotkeys";
    EXPECT_EQ(Pump(), 0);
}

TEST_F(ControllerTest, ClosingTheWindowOrEndingTheSessionRunsTheSameShutdown) {
    for (const std::uint32_t message : {WmClose, WmEndSession}) {
        sim::SimOs os;
        for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe"}) {
            os.AddFile(kFolder + u"\\" + file);
        }
        ProcessContext context(os);
        auto form = frmZK::Load(os);
        ASSERT_TRUE(os.PostMessageW(form->hWnd(), message, 1, 0));
        EXPECT_EQ(os.RunMessageLoop([&] { return RunMessageLoop(os); }), 0) << message;
        EXPECT_TRUE(form->unloaded());
        EXPECT_EQ(os.RegisteredHotKeyCount(), 0u);
        EXPECT_EQ(os.OpenHandleCount(), 0u);
    }
}

TEST_F(ControllerTest, AHotKeyThatCannotBeUnregisteredIsReportedAndTheShutdownGoesOn) {
    ASSERT_TRUE(Start());
    os_.faults().FailNth("UnregisterHotKey", 1, ErrorHotkeyNotRegistered);
    Command(kPrefix + "Shutdown");
    EXPECT_EQ(os_.FileText(kLog),
              kStamp + "Zelkova: Failed to unregister the following hotkey: 3 + Num 1\r\n");
    EXPECT_EQ(Starts().back(), u"ZelkovaError.exe on -");
    EXPECT_EQ(os_.OpenHandleCount(), 0u) << "the events were closed after the failure";
}

TEST(ZelkovaRun, ExitCodesSayHowTheProcessEnded) {
    sim::SimOs missing;
    EXPECT_EQ(RunZelkova(missing), kExitStartUnloaded) << "no companions beside the program";

    sim::SimOs refused;
    refused.faults().FailEvery("CreateWindowExW", ErrorNotEnoughMemory);
    EXPECT_EQ(RunZelkova(refused), kExitStartError);
    EXPECT_NE(refused.FileText(kLog).find("Zelkova: The controller window could not be created: "
                                          "Not enough memory"),
              std::string::npos);
}

}  // namespace
}  // namespace zk
