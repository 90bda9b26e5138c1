#include "zelkovactl/ctl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "platform/sim/sim_os.h"
#include "settings/registry.h"

namespace zk::ctl {
namespace {

const std::string kPrefix = "Local\\larchmont_";

class CtlTest : public ::testing::Test {
  protected:
    int Run(std::vector<std::string> args) {
        out_.str("");
        err_.str("");
        return Ctl(os_, out_, err_).Run(args);
    }
    void StartZelkova() {
        for (const char* name : {"SwitchToDesktop1", "SwitchToDesktop2", "SwitchToDesktop3",
                                 "SwitchToDesktop4", "ReadReg", "Shutdown"}) {
            os_.CreateEventInOtherProcess(kPrefix + name);
        }
    }
    std::optional<std::int32_t> StoredDword(const char16_t* name) {
        const auto* value = os_.registry().FindValue(u"Software\\Zelkova", name);
        if (value == nullptr || value->type != RegDword || value->data.size() != 4)
            return std::nullopt;
        std::int32_t n = 0;
        std::memcpy(&n, value->data.data(), 4);
        return n;
    }

    sim::SimOs os_;
    std::ostringstream out_, err_;
};

TEST_F(CtlTest, CommandsForZelkovaSaySoWhenItDoesNotRun) {
    for (const auto& args :
         std::vector<std::vector<std::string>>{{"switch", "2"}, {"reload"}, {"shutdown"}}) {
        EXPECT_EQ(Run(args), kExitNotRunning) << args[0];
        EXPECT_EQ(err_.str(), "Zelkova2 is not running\n");
    }
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
}

TEST_F(CtlTest, CommandsSignalTheControllersEvents) {
    StartZelkova();
    EXPECT_EQ(Run({"switch", "3"}), kExitOk);
    EXPECT_TRUE(os_.WaitForEventInOtherProcess(kPrefix + "SwitchToDesktop3"));
    EXPECT_EQ(Run({"reload"}), kExitOk);
    EXPECT_TRUE(os_.WaitForEventInOtherProcess(kPrefix + "ReadReg"));
    EXPECT_EQ(Run({"shutdown"}), kExitOk);
    EXPECT_TRUE(os_.WaitForEventInOtherProcess(kPrefix + "Shutdown"));
    EXPECT_FALSE(os_.EventIsSignalled(kPrefix + "SwitchToDesktop1"));
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
}

TEST_F(CtlTest, BadInputGetsOneLineAndExitCodeTwo) {
    const std::vector<std::vector<std::string>> bad = {{},
                                                       {"bogus"},
                                                       {"switch"},
                                                       {"switch", "5"},
                                                       {"switch", "x"},
                                                       {"switch", "2", "3"},
                                                       {"hotkey", "set", "7", "Ctrl+A"},
                                                       {"hotkey", "set", "1", "Ctrl+Banana"},
                                                       {"hotkey", "reset", "9"},
                                                       {"hotkey", "frob"},
                                                       {"log", "--tail", "0"},
                                                       {"log", "-n"},
                                                       {"autostart", "maybe"}};
    for (const auto& args : bad) {
        EXPECT_EQ(Run(args), kExitUsage) << (args.empty() ? "" : args[0]);
        const std::string line = err_.str();
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
        EXPECT_EQ(line.rfind("zelkovactl: ", 0), 0u) << line;
        EXPECT_TRUE(line.ends_with("(see zelkovactl --help)\n")) << line;
    }
    EXPECT_EQ(Run({"--help"}), kExitOk);
    EXPECT_NE(out_.str().find("hotkey set ID COMBO"), std::string::npos);
}

TEST_F(CtlTest, HotKeysAreListedAsStoredOrDefaulted) {
    std::vector<std::byte> f9(4), ctrlShift(4);
    const std::int32_t key = 0x78, modifiers = 6;
    std::memcpy(f9.data(), &key, 4);
    std::memcpy(ctrlShift.data(), &modifiers, 4);
    os_.registry().SetValue(u"Software\\Zelkova", u"Desktop2Key", RegDword, f9);
    os_.registry().SetValue(u"Software\\Zelkova", u"Desktop2KeyMod", RegDword, ctrlShift);
    os_.registry().SetValue(u"Software\\Zelkova", u"Desktop3Key", RegDword, f9);  // no modifier
    EXPECT_EQ(Run({"hotkeys"}), kExitOk);
    EXPECT_EQ(out_.str(),
              "1  desktop 1         Ctrl+Alt+Num 1  (default)\n"
              "2  desktop 2         Ctrl+Shift+F9\n"
              "3  desktop 3         Ctrl+Alt+Num 3  (default)\n"
              "4  desktop 4         Ctrl+Alt+Num 4  (default)\n"
              "5  previous desktop  Ctrl+Alt+Backspace  (default)\n"
              "6  preview           Ctrl+Alt+Num +  (default)\n");
}

TEST_F(CtlTest, SettingAndResettingAHotKeyWritesBothValuesAndAsksForAReload) {
    StartZelkova();
    EXPECT_EQ(Run({"hotkey", "set", "5", "Ctrl+Alt+F9"}), kExitOk);
    EXPECT_EQ(StoredDword(u"PrevDesktopKey"), 0x78);
    EXPECT_EQ(StoredDword(u"PrevDesktopKeyMod"), 3);
    EXPECT_TRUE(os_.WaitForEventInOtherProcess(kPrefix + "ReadReg"));
    EXPECT_EQ(out_.str(), "Hotkey 5 (previous desktop) is now Ctrl+Alt+F9.\n");

    EXPECT_EQ(Run({"hotkey", "reset", "all"}), kExitOk);
    EXPECT_EQ(StoredDword(u"PrevDesktopKey"), 8);
    EXPECT_EQ(StoredDword(u"ShowPrevWinKey"), 107);
    EXPECT_EQ(StoredDword(u"Desktop1KeyMod"), 3);
    EXPECT_TRUE(os_.WaitForEventInOtherProcess(kPrefix + "ReadReg"));
}

TEST_F(CtlTest, StatusSaysWhetherItRunsAndWhichDesktopsThereAre) {
    EXPECT_EQ(Run({"status"}), kExitOk);
    EXPECT_EQ(out_.str(), "Zelkova2 is not running\nInput desktop: Default\nDesktops: Default\n");
    StartZelkova();
    os_.CreateDesktopInOtherProcess(u"desk2");
    EXPECT_EQ(Run({"status"}), kExitOk);
    EXPECT_EQ(out_.str(),
              "Zelkova2 is running\nInput desktop: Default\nDesktops: Default, desk2\n");
}

TEST_F(CtlTest, LogShowsTheNewestLinesOrSaysThatNothingIsLogged) {
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(out_.str(), "Nothing has been logged.\n");
    const std::string lines = "one\r\ntwo\r\nthree\r\n";
    std::vector<std::byte> bytes(lines.size());
    std::memcpy(bytes.data(), lines.data(), lines.size());
    os_.AddFile(u"C:\\Users\\user1\\AppData\\Local\\ZelkovaErrors.txt", bytes);
    EXPECT_EQ(Run({"log", "--tail", "2"}), kExitOk);
    EXPECT_EQ(out_.str(), "two\nthree\n");
    EXPECT_EQ(Run({"log"}), kExitOk);
    EXPECT_EQ(out_.str(), "one\ntwo\nthree\n");
    EXPECT_EQ(os_.OpenHandleCount(), 0u);
}

TEST_F(CtlTest, AutostartWritesAndRemovesTheRunValue) {
    const Text run = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    EXPECT_EQ(Run({"autostart", "on"}), kExitOk);
    const auto* value = os_.registry().FindValue(run, u"Zelkova2");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->type, RegSz);
    const Text expected = u"\"C:\\Program Files\\Zelkova2\\Zelkova2.exe\"";
    EXPECT_EQ(value->data.size(), expected.size() * 2 + 1);
    EXPECT_EQ(std::memcmp(value->data.data(), expected.data(), expected.size() * 2), 0);
    EXPECT_EQ(Run({"autostart", "off"}), kExitOk);
    EXPECT_EQ(os_.registry().FindValue(run, u"Zelkova2"), nullptr);
    EXPECT_EQ(Run({"autostart", "off"}), kExitOk) << "already off";
}

}  // namespace
}  // namespace zk::ctl
