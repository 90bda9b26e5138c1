// Window icons, the executable's icon resources and a hotkey held by another process, against
// the real system.

#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "diagnostics/err_log.h"
#include "hotkeys/hotkeys.h"
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

// The icon groups in the order of the built executable's resource directory.
BOOL CALLBACK CollectGroup(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR groups) {
    auto* list = reinterpret_cast<std::vector<std::wstring>*>(groups);
    list->push_back(IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<UINT_PTR>(name))
                                         : std::wstring(name));
    return TRUE;
}

// Width and bits per pixel of each image of an icon group.
std::vector<std::pair<int, int>> GroupImages(HMODULE module, LPCWSTR group) {
#pragma pack(push, 2)
    struct Entry {
        BYTE width, height, colours, reserved;
        WORD planes, bitCount;
        DWORD bytes;
        WORD id;
    };
#pragma pack(pop)
    const HRSRC found = ::FindResourceW(module, group, MAKEINTRESOURCEW(14));
    const auto* data = static_cast<const BYTE*>(::LockResource(::LoadResource(module, found)));
    std::vector<std::pair<int, int>> images;
    for (WORD i = 0; data != nullptr && i < *reinterpret_cast<const WORD*>(data + 4); ++i) {
        const auto* e = reinterpret_cast<const Entry*>(data + 6 + i * sizeof(Entry));
        images.emplace_back(e->width, e->bitCount);
    }
    return images;
}

TEST(ResourcesUnderWine, TheNamedGroupComesFirstWithItsFourTrueColourImages) {
    const Text tests = support::TestFolder();
    const std::wstring exe =
        std::wstring(tests.begin(), tests.end()) + L"\\..\\..\\bin\\Zelkova2.exe";
    const HMODULE module = ::LoadLibraryExW(exe.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    std::vector<std::wstring> groups;
    ::EnumResourceNamesW(module, MAKEINTRESOURCEW(14), &CollectGroup,
                         reinterpret_cast<LONG_PTR>(&groups));
    EXPECT_EQ(groups, (std::vector<std::wstring>{L"AAA", L"#1"}));
    EXPECT_EQ(GroupImages(module, L"AAA"),
              (std::vector<std::pair<int, int>>{{16, 32}, {24, 32}, {32, 32}, {48, 32}}));
    EXPECT_EQ(GroupImages(module, MAKEINTRESOURCEW(1)),
              (std::vector<std::pair<int, int>>{{32, 1}, {32, 4}, {16, 4}}));
    ::FreeLibrary(module);
}

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
