// What a Windows user sees of Zelkova2 under Wine: the tray icon of each desktop, the settings
// window, the desktops' names, and the installer.

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include "DeskHerald/tray_icon.h"
#include "ZelkovaSettings/settings_resources.h"
#include "e2e/system_test.h"
#include "support/recorder_file.h"

#include <tuple>

namespace zk::e2e {
namespace {

using support::Caption;
using support::ProcessesNamed;
using support::RunProgram;
using support::WindowOn;
using support::Within;

constexpr UINT kTrayMessage = WM_APP + 1;

class Product : public SystemTest {};

TEST_F(Product, EachDesktopsTrayIconNamesItAndItsMenuAndClickSwitchAndPreview) {
    support::SetDword(L"Software\\Zelkova", L"ShowBanner", 1);
    support::SetText(L"Software\\Zelkova\\Desktop3", L"Name", L"Mail");
    ASSERT_TRUE(Start());
    for (int desk = 1; desk <= 4; ++desk) {
        const HWND tray = WindowOn(kDesks[desk - 1], L"Zelkova2Tray", false);
        ASSERT_NE(tray, nullptr) << desk;
        EXPECT_EQ(Caption(tray), L"Zelkova2 \u2014 desktop " + std::to_wstring(desk) +
                                     (desk == 3 ? L": Mail" : L""));
    }
    // The menu of desktop 1's icon, and its access key for desktop 3.
    ::PostMessageW(WindowOn(L"Default", L"Zelkova2Tray", false), kTrayMessage, 0, WM_CONTEXTMENU);
    ASSERT_TRUE(Within(5000, [] { return WindowOn(L"Default", L"#32768"); })) << "the menu";
    ::Sleep(200);
    ASSERT_TRUE(Type(1, {'3'}));
    EXPECT_TRUE(Shown(3));
    // A click on desktop 3's icon opens the preview there, whose desktops a screen reader reads.
    ::PostMessageW(WindowOn(L"desk3", L"Zelkova2Tray", false), kTrayMessage, 0, NIN_SELECT);
    HWND preview = nullptr;
    ASSERT_TRUE(Within(5000, [&] { return (preview = WindowOn(L"desk3", L"Zelkova2Preview")); }));
    EXPECT_EQ(support::AccessibleItems(preview),
              (std::vector<std::wstring>{L"Zelkova2 desktops", L"1 Desktop 1", L"2 Desktop 2",
                                         L"3 Mail, shown [selected]", L"4 Desktop 4"}));
    ASSERT_TRUE(TypeInto(3, L"Zelkova2Preview", {VK_RIGHT}));
    EXPECT_TRUE(Within(3000, [&] {
        return support::AccessibleItems(preview).back() == L"4 Desktop 4 [selected]";
    }));
    ASSERT_TRUE(TypeInto(3, L"Zelkova2Preview", {VK_ESCAPE}));
    EXPECT_TRUE(Within(3000, [] { return !WindowOn(L"desk3", L"Zelkova2Preview"); }));
    // The tooltip follows a rename at once, and tells of a hotkey stored as no key.
    support::SetText(L"Software\\Zelkova\\Desktop3", L"Name", L"Post");
    support::SetDword(L"Software\\Zelkova", L"Desktop4Key", 0);
    support::SetDword(L"Software\\Zelkova", L"Desktop4KeyMod", 3);
    const std::wstring tip =
        L"Zelkova2 \u2014 desktop 3: Post\nHotkey 4 is stored as no key: see Settings";
    EXPECT_TRUE(Within(3000, [&] {
        return Caption(WindowOn(L"desk3", L"Zelkova2Tray", false)) == tip;
    })) << Caption(WindowOn(L"desk3", L"Zelkova2Tray", false));
}

// The next desktop and the one before by the wheel over the tray icon (by key: the random walk).
TEST_F(Product, TheWheelOverTheTrayIconShowsTheNextDesktopAndTheOneBefore) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Arrive(3));
    for (const auto& [from, delta, to] : {std::tuple{3, -WHEEL_DELTA, 4}, {4, WHEEL_DELTA, 3}}) {
        ASSERT_TRUE(support::WheelOverIconOn(kDesks[from - 1], companion::kTrayClass,
                                             companion::kTrayMessage, delta));
        EXPECT_TRUE(Shown(to)) << "the wheel from " << from << " to " << to;
    }
}

// A window that opens on desktop 2 while the user works on desktop 3 is named there at once, and
// the finder offers it first, and still as the user types: Enter goes to it.
TEST_F(Product, AWindowOpenedOnADesktopNotShownIsToldWhereTheUserIsAndOneKeyGoesThere) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Arrive(3));
    const auto figures = support::StartStandIn(
        L"desk2",
        {{L"ZK_WINDOW", L"Quarterly figures - Stand-in"}, {L"ZK_FOREGROUND_WAIT_MS", L"30000"}});
    ASSERT_TRUE(Within(10000, [] { return WindowOn(L"desk2", L"ZkStandInWindow"); }));
    // Under Wine 10 the new window took the input to desktop 2 (Windows leaves it where it is).
    if (support::DesktopsSwitch()) e2e::ShowDesktop(3);
    std::string status;
    EXPECT_TRUE(Within(2000, [&] {
        status = Ctl(L"status").output;
        return status.find("New on desktop 2 (Desktop 2): Quarterly figures - Stand-in") !=
               std::string::npos;
    })) << status;
    ASSERT_TRUE(Type(3, {VK_CONTROL, VK_MENU, VK_SPACE}));
    HWND finder = nullptr;
    ASSERT_TRUE(Within(5000, [&] { return (finder = WindowOn(L"desk3", L"Zelkova2Finder")); }));
    const std::wstring told =
        L"New: Quarterly figures - Stand-in, recorder.exe, Desktop 2 [selected]";
    EXPECT_TRUE(Within(3000, [&] {
        const auto items = support::AccessibleItems(finder);
        return items.size() > 1 && items[1] == told;
    })) << "first, and what a screen reader reads of it";
    ASSERT_TRUE(TypeInto(3, L"Zelkova2Finder", {'Q', 'U', 'A', 'R'}));
    std::vector<std::wstring> items;
    EXPECT_TRUE(Within(3000,
                       [&] {
                           items = support::AccessibleItems(finder);
                           return items == std::vector<std::wstring>{L"Find a window: quar", told};
                       }))
        << (items.empty() ? std::string("nothing told")
                          : std::string(items[0].begin(), items[0].end()));
    ASSERT_TRUE(Type(3, {VK_RETURN}));
    EXPECT_TRUE(Shown(2));
    EXPECT_TRUE(figures->WaitForExit(10000));
    EXPECT_EQ(figures->ExitCode() & 16, 16u) << "restored and in front";
}

TEST_F(Product, SettingsFlagATakenCombinationAndApplyChangesAHotKeyWithoutARestart) {
    const auto holder = support::HoldHotKey(MOD_CONTROL | MOD_SHIFT, VK_F11);  // another program
    ASSERT_TRUE(Start());
    support::Running window(support::ProgramFolder() + L"\\ZelkovaSettings.exe");
    HWND dialog = nullptr;
    ASSERT_TRUE(Within(10000, [&] {  // shown once it has loaded the settings
        dialog = ::FindWindowW(nullptr, L"Zelkova2 settings");
        return dialog != nullptr && ::IsWindowVisible(dialog);
    }));
    // The first row is chosen: its key is picked from the list and its boxes, as a user does.
    const HWND keys = ::GetDlgItem(dialog, IDC_KEYLIST);
    auto pick = [&](WORD key, bool alt, bool shift) {
        const LRESULT count = ::SendMessageW(keys, CB_GETCOUNT, 0, 0);
        for (LRESULT at = 0; at < count; ++at) {
            if (::SendMessageW(keys, CB_GETITEMDATA, static_cast<WPARAM>(at), 0) == key)
                ::SendMessageW(keys, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
        }
        ::CheckDlgButton(dialog, IDC_ALT, alt ? BST_CHECKED : 0);
        ::CheckDlgButton(dialog, IDC_SHIFT, shift ? BST_CHECKED : 0);
        ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_KEYLIST, CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(keys));
        return Caption(::GetDlgItem(dialog, IDC_STATUS));
    };
    EXPECT_NE(pick(VK_F11, false, true).find(L"Another program holds"), std::wstring::npos);
    EXPECT_EQ(pick(VK_NUMPAD1, true, false), L"") << "Zelkova2's own";
    EXPECT_EQ(pick(VK_F9, false, true), L"");
    ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_APPLY, BN_CLICKED), 0);
    EXPECT_EQ(Caption(::GetDlgItem(dialog, IDC_RESULT)), L"Saved. Zelkova2 uses the new hotkeys.");
    // Closed first: under Wine 10 its window on desktop 1 would take the input back there.
    ::PostMessageW(dialog, WM_CLOSE, 0, 0);
    EXPECT_TRUE(window.WaitForExit(5000));
    // Desktop 3's switcher takes the new combination too, where it holds its own hotkeys.
    ASSERT_TRUE(Arrive(3));
    ASSERT_TRUE(Type(3, {VK_CONTROL, VK_SHIFT, VK_F9}));
    EXPECT_TRUE(Shown(1)) << "the new combination works on desktop 3 without a restart";
}

std::wstring Folder(int csidl) {
    wchar_t path[MAX_PATH] = {};
    ::SHGetFolderPathW(nullptr, csidl, nullptr, 0, path);
    return path;
}

std::wstring RunValue() {
    wchar_t value[512] = {};
    DWORD size = sizeof value;
    ::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run",
                   L"Zelkova2", RRF_RT_REG_SZ, nullptr, value, &size);
    return value;
}

TEST_F(Product, TheInstallerInstallsPerUserStartsFromTheStartMenuAndUninstallsCleanly) {
    const Text tests = support::TestFolder();
    const std::wstring setup =
        std::wstring(tests.begin(), tests.end()) + L"\\..\\..\\dist\\Zelkova2-2.0.0-setup.exe";
    ASSERT_EQ(RunProgram(setup, L"/S").exitCode, 0u);
    const std::wstring folder = Folder(CSIDL_LOCAL_APPDATA) + L"\\Programs\\Zelkova2";
    // The programs that run below are there; these the user starts by hand.
    for (const wchar_t* file : {L"ZelkovaError.exe", L"zelkovactl.exe", L"README.txt"}) {
        EXPECT_NE(::GetFileAttributesW((folder + L"\\" + file).c_str()), INVALID_FILE_ATTRIBUTES)
            << std::string(file, file + wcslen(file));
    }
    EXPECT_EQ(RunValue(), L"\"" + folder + L"\\ZelkovaSettings.exe\" --start");
    support::SetDword(L"Software\\Zelkova", L"ShowBanner", 0);  // a setting of the user's
    // The Start menu's shortcut, opened as a click opens it: the launcher starts Zelkova2, and
    // a second click finds it running and makes no second one.
    const std::wstring link = Folder(CSIDL_PROGRAMS) + L"\\Zelkova2\\Zelkova2.lnk";
    const auto click = [&] {
        return reinterpret_cast<INT_PTR>(::ShellExecuteW(nullptr, nullptr, link.c_str(), nullptr,
                                                         nullptr, SW_SHOWNORMAL)) > 32;
    };
    ASSERT_TRUE(click());
    EXPECT_TRUE(Within(30000, [] { return CompanionCount() == 9; }));
    EXPECT_TRUE(Within(10000, [] { return ProcessesNamed({L"StartZelkova2.exe"}).empty(); }))
        << "the launcher ends once Zelkova2 runs";
    ASSERT_TRUE(click());
    EXPECT_TRUE(Within(10000, [] { return ProcessesNamed({L"StartZelkova2.exe"}).empty(); }));
    EXPECT_EQ(ProcessesNamed({L"Zelkova2.exe"}).size(), 1u);
    EXPECT_EQ(CompanionCount(), 9);

    // The uninstaller goes on as a copy of itself in the temporary folder; its last step removes
    // the program folder.
    EXPECT_EQ(RunProgram(folder + L"\\Uninstall.exe", L"/S").exitCode, 0u);
    EXPECT_TRUE(Within(20000, [&] {
        return ::GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES;
    })) << "the folder is gone";
    EXPECT_TRUE(Within(5000, [] {
        return ProcessesNamed({L"Zelkova2.exe", L"DeskPilot.exe", L"DeskHerald.exe"}).empty();
    })) << "nothing of Zelkova2 runs";
    EXPECT_EQ(RunValue(), L"");
    EXPECT_EQ(::GetFileAttributesW((Folder(CSIDL_PROGRAMS) + L"\\Zelkova2").c_str()),
              INVALID_FILE_ATTRIBUTES);
    HKEY kept = nullptr;
    EXPECT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Zelkova", 0, KEY_READ, &kept), 0)
        << "the user's settings stay";
    ::RegCloseKey(kept);
}

}  // namespace
}  // namespace zk::e2e
