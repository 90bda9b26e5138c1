#include "shared/hotkey_text.h"

#include <gtest/gtest.h>

namespace zk::companion {
namespace {

TEST(HotKeyText, ModifiersComeInOrderKeysByNameAndEveryFormattedHotKeyParsesBack) {
    EXPECT_EQ(FormatHotKey({12, 0x78}), "Shift+Win+F9");
    EXPECT_EQ(FormatHotKey({3, 0x6B}), "Ctrl+Alt+Num +");
    EXPECT_EQ(FormatHotKey({2, 0xFF}), "Ctrl+key 255");
    EXPECT_EQ(FormatHotKey({3, 0x28}), "Ctrl+Alt+Down") << "the arrow, not the keypad's 2";
    for (std::int16_t key = 1; key < 0xFF; ++key) {
        for (const std::int16_t modifiers : {0, 3, 6, 15}) {
            const HotKeyCombo combo{modifiers, key};
            const std::string text = FormatHotKey(combo);
            if (text.find("key ") != std::string::npos) continue;  // no name to parse
            std::string error;
            const auto parsed = TryParseHotKey(text, error);
            ASSERT_TRUE(parsed.has_value()) << text << ": " << error;
            EXPECT_EQ(parsed->key, key) << text;
            EXPECT_EQ(parsed->modifiers, modifiers) << text;
        }
    }
}

TEST(HotKeyText, AcceptsOtherSpellingsAndSaysWhatIsWrong) {
    struct Case {
        const char* text;
        std::int16_t modifiers, key;
    };
    for (const Case& c :
         {Case{"ctrl + alt + numpad2", 3, 0x62}, Case{"Control+Shift+Return", 6, 0x0D},
          Case{"WIN+del", 8, 0x2E}, Case{"Alt+NumPad+", 1, 0x6B}, Case{"Ctrl+PgDn", 2, 0x22},
          Case{"shift+f12", 4, 0x7B}, Case{"Ctrl+Alt+Plus", 3, 0x6B}, Case{"Ctrl+Alt+Add", 3, 0x6B},
          Case{"Alt+Subtract", 1, 0x6D}}) {
        std::string error;
        const auto parsed = TryParseHotKey(c.text, error);
        ASSERT_TRUE(parsed.has_value()) << c.text << ": " << error;
        EXPECT_EQ(parsed->modifiers, c.modifiers) << c.text;
        EXPECT_EQ(parsed->key, c.key) << c.text;
    }
    std::string error;
    EXPECT_FALSE(TryParseHotKey("Ctrl+Alt+Banana", error));
    EXPECT_EQ(error, "unknown key 'Banana' in 'Ctrl+Alt+Banana'");
    EXPECT_FALSE(TryParseHotKey("Ctrl+Alt+", error));
    EXPECT_EQ(error, "unknown key 'Alt+' in 'Ctrl+Alt+'");
    EXPECT_FALSE(TryParseHotKey("  ", error));
    EXPECT_EQ(error, "no key in '  '");
}

}  // namespace
}  // namespace zk::companion
