#include "hotkeys/hotkeys.h"

#include <gtest/gtest.h>

#include <fstream>

#include "platform/sim/sim_os.h"
#include "support/text.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

const Text kLog = u"C:\\Users\\user1\\AppData\\Local\\ZelkovaErrors.txt";
const Text kReporter = u"C:\\Program Files\\Zelkova2\\ZelkovaError.exe";
const std::string kStamp = "11/22/2026 2:05:09 PM ";

class HotKeysTest : public ::testing::Test {
  protected:
    HotKeysTest()
        : window_(testing::MakeProbeWindow(os_)),
          hotkeys_(os_, os_, registry_, &log_, fields_, window_) {
        os_.AddFile(kReporter);
    }
    void Store(const Text& name, std::int32_t value) {
        os_.registry().SetDword(u"Software\\Zelkova", name, value);
    }
    std::vector<std::pair<int, int>> Pairs() const {
        std::vector<std::pair<int, int>> pairs;
        for (int id = 1; id <= 6; ++id)
            pairs.emplace_back(fields_.HotKeyCode[id], fields_.HotKeyMod[id]);
        return pairs;
    }
    int Calls(const char* call) { return os_.journal().Count(call); }
    std::size_t ReporterStarts() const { return os_.StartedProcesses().size(); }

    sim::SimOs os_;
    Registry registry_{os_};
    ErrLog log_{os_};
    HotKeyFields fields_;
    Hwnd window_;
    HotKeys hotkeys_;
};

const std::vector<std::pair<int, int>> kDefaults = {{97, 3},  {98, 3}, {99, 3},
                                                    {100, 3}, {8, 3},  {107, 3}};

TEST_F(HotKeysTest, LoadGivesDefaultsForEveryPairThatCannotBeReadWhole) {
    hotkeys_.LoadHotKeys();
    EXPECT_EQ(Pairs(), kDefaults) << "no settings key";

    Store(u"Desktop1Key", 0x70);
    Store(u"Desktop1KeyMod", 6);
    Store(u"Desktop2Key", 0x71);  // its modifier value is missing
    os_.registry().SetValue(u"Software\\Zelkova", u"Desktop3Key", RegSz, {std::byte{'1'}, {}});
    Store(u"Desktop3KeyMod", 1);
    Store(u"Desktop4Key", 70000);  // does not fit the 16-bit field
    Store(u"Desktop4KeyMod", 1);
    Store(u"ShowPrevWinKey", -1);
    Store(u"ShowPrevWinKeyMod", 0x4003);
    hotkeys_.LoadHotKeys();
    auto expected = kDefaults;
    expected[0] = {0x70, 6};
    expected[5] = {-1, 0x4003};
    EXPECT_EQ(Pairs(), expected);
    EXPECT_EQ(Calls("RegisterHotKey"), 0);
    EXPECT_EQ(os_.FileContents(kLog), std::nullopt) << "reads fail silently";
}

TEST_F(HotKeysTest, RegisteringLogsEachFailureAndStartsTheReporterOnce) {
    hotkeys_.LoadHotKeys();
    os_.HoldHotKeyInOtherProcess(3, 98);
    os_.HoldHotKeyInOtherProcess(3, 8);
    hotkeys_.RegisterHotKeys();
    EXPECT_EQ(Calls("RegisterHotKey"), 6);
    for (int id : {1, 3, 4, 6})
        EXPECT_NE(fields_.HotKeyOk[id], 0) << id;
    for (int id : {2, 5})
        EXPECT_EQ(fields_.HotKeyOk[id], 0) << id;
    EXPECT_EQ(os_.FileText(kLog),
              kStamp + "Zelkova: Failed to register the following hotkey: 3 + Num 2\r\n" + kStamp +
                  "Zelkova: Failed to register the following hotkey: 3 + Backspace\r\n");
    EXPECT_EQ(ReporterStarts(), 1u);
    EXPECT_TRUE(os_.PressHotKey(3, 97));
}

TEST_F(HotKeysTest, UnregisteringTouchesOnlyRegisteredHotKeysAndReportsFailuresOnce) {
    hotkeys_.LoadHotKeys();
    os_.HoldHotKeyInOtherProcess(3, 99);
    hotkeys_.RegisterHotKeys();
    const auto startsAfterRegister = ReporterStarts();
    os_.faults().FailNth("UnregisterHotKey", 2, ErrorHotkeyNotRegistered);
    os_.faults().FailNth("UnregisterHotKey", 4, ErrorHotkeyNotRegistered);
    hotkeys_.UnregisterHotKeys();
    EXPECT_EQ(os_.journal().Details("UnregisterHotKey").size(), 5u) << "id 3 was never held";
    EXPECT_NE(os_.FileText(kLog).find("Failed to unregister the following hotkey: 3 + Num 2\r\n"),
              std::string::npos);
    EXPECT_NE(
        os_.FileText(kLog).find("Failed to unregister the following hotkey: 3 + Backspace\r\n"),
        std::string::npos);
    EXPECT_EQ(ReporterStarts(), startsAfterRegister + 1);
}

TEST_F(HotKeysTest, ReloadReregistersOnlyTheChangedPairsAndNeverStartsTheReporter) {
    Store(u"Desktop4Key", 0x7A);  // a pair of the user's, not the default
    Store(u"Desktop4KeyMod", 6);
    hotkeys_.LoadHotKeys();
    os_.HoldHotKeyInOtherProcess(3, 99);
    hotkeys_.RegisterHotKeys();
    Store(u"Desktop3Key", 99);  // the same pair as the default, now stored
    Store(u"Desktop3KeyMod", 3);
    Store(u"Desktop2Key", 0x78);  // F9
    Store(u"Desktop2KeyMod", 6);
    Store(u"Desktop4Key", 0x79);  // modifier gone: the pair cannot be read, and is kept
    ASSERT_TRUE(os_.registry().DeleteValue(u"Software\\Zelkova", u"Desktop4KeyMod"));
    os_.journal().Clear();
    hotkeys_.ReloadHotKeys();
    ASSERT_EQ(os_.journal().Details("UnregisterHotKey").size(), 1u);
    EXPECT_NE(os_.journal().Details("UnregisterHotKey")[0].find("id 2"), std::string::npos);
    ASSERT_EQ(os_.journal().Details("RegisterHotKey").size(), 1u);
    EXPECT_NE(os_.journal().Details("RegisterHotKey")[0].find("id 2 mod 6 vk 120"),
              std::string::npos);
    EXPECT_NE(fields_.HotKeyOk[2], 0);
    EXPECT_EQ(fields_.HotKeyCode[4], 0x7A) << "no defaults in a reload";
    EXPECT_EQ(fields_.HotKeyMod[4], 6);
    EXPECT_EQ(fields_.HotKeyOk[3], 0) << "a failed, unchanged hotkey is not retried";
    EXPECT_TRUE(os_.PressHotKey(6, 0x78));
    EXPECT_FALSE(os_.PressHotKey(3, 98));
    EXPECT_EQ(ReporterStarts(), 1u) << "only the start's failure started it";
}

TEST_F(HotKeysTest, ReloadOfAPairThatCannotBeUnregisteredKeepsTheOldRegistration) {
    hotkeys_.LoadHotKeys();
    hotkeys_.RegisterHotKeys();
    Store(u"Desktop1Key", 0x78);
    Store(u"Desktop1KeyMod", 6);
    Store(u"Desktop2Key", 0x79);
    Store(u"Desktop2KeyMod", 6);
    os_.HoldHotKeyInOtherProcess(6, 0x79);
    os_.faults().FailNth("UnregisterHotKey", 1, ErrorHotkeyNotRegistered);
    hotkeys_.ReloadHotKeys();
    EXPECT_NE(fields_.HotKeyOk[1], 0) << "still registered with the old pair";
    EXPECT_EQ(fields_.HotKeyCode[1], 0x78) << "while the fields hold the new one";
    EXPECT_EQ(fields_.HotKeyOk[2], 0) << "unregistered, and the new pair is taken";
    EXPECT_EQ(os_.FileText(kLog),
              kStamp + "Zelkova: Failed to unregister the following hotkey: 6 + F9\r\n" + kStamp +
                  "Zelkova: Failed to register the following hotkey: 6 + F10\r\n");
    EXPECT_EQ(ReporterStarts(), 0u);
}

TEST(KeyDisplayName, UsesFixedScanCodesForFourKeysAndTheLayoutForTheRest) {
    sim::SimOs os;
    for (const std::int16_t vk : {19, 144, 44, 111})
        (void)KeyDisplayName(os, vk);
    EXPECT_EQ(os.journal().Count("MapVirtualKeyExA"), 0);
    EXPECT_EQ(KeyDisplayName(os, 144), u"Num Lock");
    EXPECT_EQ(KeyDisplayName(os, 111), u"Num /");
    EXPECT_EQ(KeyDisplayName(os, 19), u"Pause");
    EXPECT_EQ(os.journal().Details("GetKeyNameTextA"),
              (std::vector<std::string>{"0x450000", "0x1450000", "0x1010000", "0x1350000",
                                        "0x1450000", "0x1350000", "0x450000"}));
    EXPECT_EQ(KeyDisplayName(os, 98), u"Num 2");
    EXPECT_EQ(os.journal().Details("MapVirtualKeyExA"),
              (std::vector<std::string>{"98 type 0 0x4090409"}));
    EXPECT_EQ(KeyDisplayName(os, 0xFF), u"") << "a key without a name";
}

#ifdef ZK_SOURCE_DIR
// The README's table of registry values is the hotkey table as a user reads it.
TEST(HotKeyTable, IsTheTableTheReadmeShows) {
    std::ifstream file(std::string(ZK_SOURCE_DIR) + "/README.md");
    const std::string readme((std::istreambuf_iterator<char>(file)), {});
    ASSERT_FALSE(readme.empty());
    for (const HotKeySetting& hotkey : kHotKeyTable) {
        const std::string row = "| " + std::to_string(hotkey.id) + " | " + hotkey.name + " | `" +
                                AsciiText(hotkey.keyValue) + "` | `" +
                                AsciiText(hotkey.modifierValue) + "` | ";
        const std::string defaults = " (" + std::to_string(hotkey.defaultKey) + ", " +
                                     std::to_string(hotkey.defaultModifiers) + ") |\n";
        const auto at = readme.find(row);
        ASSERT_NE(at, std::string::npos) << row;
        EXPECT_EQ(readme.find(defaults, at), readme.find('\n', at) - defaults.size() + 1) << row;
    }
}
#endif

}  // namespace
}  // namespace zk
