// Window icons, the executable's icon resources and a hotkey held by another process, against
// the real system.

#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

#include "diagnostics/err_log.h"
#include "hotkeys/hotkeys.h"
#include "platform/module_path.h"
#include "platform/win32/win32_os.h"
#include "support/recorder_file.h"
#include "winsupport/app_icon.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

Lresult IconOf(Os& os, Hwnd w, Wparam which) {
    return os.SendMessageW(w, WM_GETICON, which, 0);
}

TEST(AppIconUnderWine, TheWindowAndItsTopOwnerGetBothIconsAndAnUnknownNameClearsThem) {
    Win32Os os;
    const Hwnd owner = testing::MakeProbeWindow(os);
    const Hwnd owned = testing::MakeProbeWindow(os, owner);
    AppIcon::SetWindowIcons(os, owned, u"AAA", true);
    for (const Hwnd w : {owner, owned}) {
        EXPECT_NE(IconOf(os, w, ICON_BIG), 0);
        EXPECT_NE(IconOf(os, w, ICON_SMALL), 0);
    }
    EXPECT_EQ(IconOf(os, owner, ICON_BIG), IconOf(os, owned, ICON_BIG));
    EXPECT_NE(IconOf(os, owned, ICON_BIG), IconOf(os, owned, ICON_SMALL));
    AppIcon::SetWindowIcons(os, owned, u"NOPE", true);
    for (const Hwnd w : {owner, owned}) {
        EXPECT_EQ(IconOf(os, w, ICON_BIG), 0);
        EXPECT_EQ(IconOf(os, w, ICON_SMALL), 0);
    }
    (void)os.DestroyWindow(owned);
    (void)os.DestroyWindow(owner);
}

// The icon groups as the built executable's resource directory lists them.
std::vector<std::u16string> IconGroupsInFile(const std::string& bytes) {
    auto at = [&](std::size_t offset, auto value) {
        std::memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    };
    const auto pe = at(0x3C, std::uint32_t{});
    const auto sections = at(pe + 6, std::uint16_t{});
    const auto optionalSize = at(pe + 20, std::uint16_t{});
    const std::size_t optional = pe + 24;
    const auto resourceRva = at(optional + 112 + 2 * 8, std::uint32_t{});  // data directory 2
    std::size_t base = 0;
    for (std::size_t s = 0; s < sections; ++s) {
        const std::size_t header = optional + optionalSize + s * 40;
        const auto va = at(header + 12, std::uint32_t{});
        const auto size = at(header + 16, std::uint32_t{});
        if (resourceRva >= va && resourceRva < va + size) {
            base = at(header + 20, std::uint32_t{}) + (resourceRva - va);
        }
    }
    auto entries = [&](std::size_t directory) {
        const auto named = at(directory + 12, std::uint16_t{});
        const auto ids = at(directory + 14, std::uint16_t{});
        std::vector<std::pair<std::uint32_t, std::uint32_t>> out;
        for (std::size_t i = 0; i < std::size_t{named} + ids; ++i) {
            out.emplace_back(at(directory + 16 + i * 8, std::uint32_t{}),
                             at(directory + 20 + i * 8, std::uint32_t{}));
        }
        return out;
    };
    std::vector<std::u16string> groups;
    for (const auto& [type, offset] : entries(base)) {
        if (type != 14) continue;  // RT_GROUP_ICON
        for (const auto& [name, unused] : entries(base + (offset & 0x7FFFFFFF))) {
            if ((name & 0x80000000) == 0) {
                groups.push_back(u"#" + Text(1, static_cast<char16_t>(u'0' + name)));
                continue;
            }
            const std::size_t at_name = base + (name & 0x7FFFFFFF);
            std::u16string text(at(at_name, std::uint16_t{}), u'\0');
            std::memcpy(text.data(), bytes.data() + at_name + 2, text.size() * 2);
            groups.push_back(text);
        }
    }
    return groups;
}

TEST(ResourcesUnderWine, TheNamedGroupComesFirstWithItsFourTrueColourImages) {
    Win32Os os;
    const Text path = ExecutablePath(os);
    std::ifstream file(reinterpret_cast<const wchar_t*>(path.c_str()), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(IconGroupsInFile(bytes), (std::vector<std::u16string>{u"AAA", u"#1"}));

#pragma pack(push, 2)
    struct GroupEntry {
        BYTE width, height, colours, reserved;
        WORD planes, bitCount;
        DWORD bytes;
        WORD id;
    };
#pragma pack(pop)
    auto images = [](LPCWSTR group) {
        const HRSRC found = ::FindResourceW(nullptr, group, MAKEINTRESOURCEW(14));
        const auto* data = static_cast<const BYTE*>(::LockResource(::LoadResource(nullptr, found)));
        std::vector<std::pair<int, int>> out;
        const WORD count = *reinterpret_cast<const WORD*>(data + 4);
        for (WORD i = 0; i < count; ++i) {
            const auto* e = reinterpret_cast<const GroupEntry*>(data + 6 + i * sizeof(GroupEntry));
            out.emplace_back(e->width, e->bitCount);
        }
        return out;
    };
    EXPECT_EQ(images(L"AAA"),
              (std::vector<std::pair<int, int>>{{16, 32}, {24, 32}, {32, 32}, {48, 32}}));
    EXPECT_EQ(images(MAKEINTRESOURCEW(1)),
              (std::vector<std::pair<int, int>>{{32, 1}, {32, 4}, {16, 4}}));
}

// Wine names keys by X keysyms, so the name is compared with what the layout says here.
TEST(HotKeysUnderWine, ACombinationHeldByAnotherProcessFailsAndTheLogNamesIt) {
    Win32Os os;
    (void)os.RegDeleteTreeW(HkeyCurrentUser(), kSettingsKey);
    support::StartRecording();
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", L"3,8");  // Ctrl+Alt+Backspace
    ::SetEnvironmentVariableW(L"ZK_RECORDER_LINGER_MS", L"20000");
    ProcessInformation holder;
    ASSERT_TRUE(
        os.CreateProcessW(support::RecorderPath(), u" hold", false, 0, StartupInfo{}, holder));
    ::SetEnvironmentVariableW(L"ZK_HOLD_HOTKEY", nullptr);
    ::SetEnvironmentVariableW(L"ZK_RECORDER_LINGER_MS", nullptr);
    for (int i = 0; i < 200 && support::ReadRecords().empty(); ++i)
        ::Sleep(50);
    ASSERT_FALSE(support::ReadRecords().empty()) << "the holder registered and recorded";

    const Hwnd window = testing::MakeProbeWindow(os);
    Registry registry(os);
    ErrLog log(os);
    HotKeyFields fields;
    HotKeys hotkeys(os, registry, log, fields, window);
    hotkeys.LoadHotKeys();
    const Text logPath = log.LogFolder() + kLogFileName;
    std::ifstream before(reinterpret_cast<const wchar_t*>(logPath.c_str()), std::ios::binary);
    const std::string old((std::istreambuf_iterator<char>(before)), {});
    hotkeys.RegisterHotKeys();
    EXPECT_EQ(fields.HotKeyOk[5], 0);
    for (int id : {1, 2, 3, 4, 6})
        EXPECT_NE(fields.HotKeyOk[id], 0) << id;

    std::ifstream after(reinterpret_cast<const wchar_t*>(logPath.c_str()), std::ios::binary);
    const std::string now((std::istreambuf_iterator<char>(after)), {});
    const Text name = KeyDisplayName(os, 8);
    EXPECT_FALSE(name.empty());
    const std::string expected = "Zelkova: Failed to register the following hotkey: 3 + " +
                                 os.WideCharToMultiByte(name) + "\r\n";
    ASSERT_GT(now.size(), old.size());
    EXPECT_TRUE(now.substr(old.size()).ends_with(expected)) << now.substr(old.size());

    hotkeys.UnregisterHotKeys();
    ::TerminateProcess(holder.hProcess, 0);
    (void)os.CloseHandle(holder.hProcess);
    (void)os.CloseHandle(holder.hThread);
    (void)os.DestroyWindow(window);
}

}  // namespace
}  // namespace zk
