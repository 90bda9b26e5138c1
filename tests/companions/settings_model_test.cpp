// The settings window's model on the simulated session: what it loads, how it flags a
// combination, what Apply writes and what it reads back from the log.

#include "ZelkovaSettings/settings_model.h"

#include <gtest/gtest.h>

#include "companions/companion_session.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;

class SettingsModelTest : public ::testing::Test {
  protected:
    SettingsModelTest() {
        (void)s_.os.RegisterClassW(u"Probe", nullptr, s_.os.GetModuleHandleW());
        probe_ = s_.os.CreateWindowExW(0, u"Probe", u"probe", 0, nullptr, s_.os.GetModuleHandleW());
    }
    std::optional<std::int32_t> Dword(const Text& key, const Text& name) {
        return s_.os.registry().Dword(key, name);
    }

    CompanionSession s_{u"ZelkovaSettings.exe", u"desk3"};
    Hwnd probe_ = nullptr;
    SettingsModel model_{s_.os, probe_};
};

TEST(ProgramBox, HoldsOneCommandLineALine) {
    EXPECT_EQ(ProgramLines(u" notepad.exe \r\n\r\n  calc.exe\n"),
              (std::vector<Text>{u"notepad.exe", u"calc.exe"}));
    EXPECT_EQ(ProgramBox({u"a", u"b"}), u"a\r\nb");
}

TEST_F(SettingsModelTest, FlagsACombinationAnotherProgramHoldsButNotOneZelkovaHolds) {
    Settings settings = model_.Load();
    ASSERT_TRUE(s_.os.HoldHotKeyInOtherProcess(3, 0x62));  // Zelkova2's own Ctrl+Alt+Num 2
    ASSERT_TRUE(s_.os.HoldHotKeyInOtherProcess(6, 0x78));  // another program's Ctrl+Shift+F9
    struct Case {
        HotKeyCombo combo;
        ComboState state;
    };
    const Case cases[] = {{{3, 0x62}, ComboState::Zelkova},
                          {{6, 0x78}, ComboState::Taken},
                          {{6, 0x79}, ComboState::Free},
                          {{3, 0x61}, ComboState::Twice},
                          {{0, 0}, ComboState::Empty}};
    for (const Case& c : cases) {
        settings.hotkeys[1] = c.combo;
        EXPECT_EQ(model_.Check(settings, 2), c.state) << c.combo.modifiers << "+" << c.combo.key;
    }
    settings.hotkeys[8] = settings.hotkeys[7];
    EXPECT_EQ(model_.Check(settings, 9), ComboState::Twice) << "the companions' hotkeys too";
    EXPECT_FALSE(s_.os.IsHotKeyRegistered(6, 0x79)) << "a free combination is given back";
}

TEST_F(SettingsModelTest, ApplyWritesEverySettingAndSaysWhichHotKeysZelkovaCouldNotRegister) {
    Settings settings = model_.Load();
    EXPECT_EQ(settings.hotkeys[4], (HotKeyCombo{3, 0x08}));
    EXPECT_EQ(settings.desktops[1].programs, std::vector<Text>{u"%SystemRoot%\\explorer.exe"});
    settings.hotkeys[1] = {6, 0x78};
    settings.hotkeys[2] = {6, 0x79};
    settings.desktops[1].name = u"Mail";
    settings.desktops[2].startPrograms = false;
    settings.desktops[3].programs = {u"notepad.exe", u"%SystemRoot%\\calc.exe"};
    settings.banner = false;
    settings.autostart = true;
    // The controller reads the values again and logs what it cannot register.
    s_.os.WhenSignalled("Local\\larchmont_ReadReg", [this] {
        (void)s_.os.WaitForEventInOtherProcess("Local\\larchmont_ReadReg");
        s_.os.AddFile(
            testing::kLog,
            "1/1/2026 1:00:00 PM Zelkova: an older entry\r\n"
            "1/1/2026 1:00:01 PM Zelkova: Failed to register the following hotkey: 6 + F10\r\n");
        s_.os.SetEventInOtherProcess(s_.Name(SharedObject::Reloaded));
    });
    s_.os.AddFile(testing::kLog, "1/1/2026 1:00:00 PM Zelkova: an older entry\r\n");
    const ApplyResult result = model_.Apply(settings);
    EXPECT_TRUE(result.written);
    EXPECT_TRUE(result.confirmed);
    EXPECT_EQ(result.failedIds, std::vector<int>{3});
    EXPECT_TRUE(result.otherErrors.empty()) << "older entries are not this Apply's";
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"Desktop2Key"), 0x78);
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"Desktop2KeyMod"), 6);
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"ShowPrevWinKey"), 0x6B);
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"ShowBanner"), 0);
    EXPECT_EQ(Dword(u"Software\\Zelkova\\Desktop3", u"StartPrograms"), 0);
    const Settings again = SettingsModel(s_.os, probe_).Load();
    EXPECT_EQ(again.desktops[1].name, u"Mail");
    EXPECT_EQ(again.desktops[0].name, u"") << "an empty name stays empty: \"Desktop 1\"";
    EXPECT_EQ(again.desktops[3].programs, settings.desktops[3].programs);
    EXPECT_TRUE(again.autostart);
    EXPECT_FALSE(again.banner);
}

// The system takes a stored pair that names no key without a word, and the hotkey is dead: the
// settings offer the default instead, and Apply stores it.
TEST_F(SettingsModelTest, AStoredPairThatNamesNoKeyIsOfferedItsDefault) {
    for (const auto& [name, value] :
         {std::pair{u"Desktop4Key", -1}, {u"Desktop4KeyMod", 3}, {u"Desktop2KeyMod", 255}})
        s_.os.registry().SetDword(u"Software\\Zelkova", name, value);
    s_.os.registry().SetDword(u"Software\\Zelkova", u"Desktop2Key", 0x62);
    const Settings settings = model_.Load();
    EXPECT_EQ(model_.NotAKey(), (std::vector<int>{2, 4}));
    EXPECT_EQ(settings.hotkeys[3], (HotKeyCombo{3, 0x64}));
    EXPECT_EQ(settings.hotkeys[1], (HotKeyCombo{3, 0x62}));
    EXPECT_TRUE(model_.Apply(settings).written);
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"Desktop4Key"), 0x64);
    EXPECT_EQ(Dword(u"Software\\Zelkova", u"Desktop2KeyMod"), 3);
}

TEST_F(SettingsModelTest, ApplyWithoutARunningZelkovaWritesButConfirmsNothing) {
    const ApplyResult result = model_.Apply(model_.Load());
    EXPECT_TRUE(result.written);
    EXPECT_FALSE(result.confirmed);
    s_.os.faults().FailEvery("RegSetValueExW", ErrorAccessDenied);
    const ApplyResult refused = model_.Apply(model_.Load());
    EXPECT_FALSE(refused.written);
    EXPECT_EQ(refused.error, u"Access is denied.\r\n");
}

}  // namespace
}  // namespace zk::companion
