// Drives the running Zelkova2 under Wine for scripts/screenshots: it opens what a user sees, one
// thing at a time, and names each on standard output when it is on the screen, so that the
// script can take its picture; then it closes it and goes on. It reads the screen in physical
// pixels (per-monitor DPI aware), so that at any scale each picture is cut where its window is;
// its argument is added to each picture's name ("-150" for the pictures at 150 %).
#include <windows.h>

#include <shellapi.h>

#include "ZelkovaSettings/settings_resources.h"
#include "support/windows_driver.h"

#include <cstdio>
#include <string>

namespace {

using zk::support::InputDesktop;
using zk::support::ProgramFolder;
using zk::support::Running;

constexpr UINT kTrayMessage = WM_APP + 1;

// A window of the class on the desktop, once it is there and drawn.
HWND WaitFor(const wchar_t* desktop, const wchar_t* className, bool mustBeShown = true) {
    HWND window = nullptr;
    if (!zk::support::Within(10000, [&] {
            return (window = zk::support::WindowOn(desktop, className, mustBeShown)) != nullptr;
        })) {
        return nullptr;
    }
    ::Sleep(700);
    return window;
}

void Ctl(const std::wstring& arguments) {
    (void)zk::support::RunProgram(ProgramFolder() + L"\\zelkovactl.exe", arguments);
}

std::string g_suffix;

// Says what is on the screen now, and where, and waits for the picture to be taken.
void Shoot(const char* shot, HWND window) {
    const std::string name = shot + g_suffix;
    RECT r{};  // what the program draws: without a window manager no frame is drawn
    ::GetClientRect(window, &r);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&r), 2);
    std::printf("shot %s %ld %ld %ld %ld\n", name.c_str(), r.left, r.top, r.right - r.left,
                r.bottom - r.top);
    std::fflush(stdout);
    char line[16];
    (void)std::fgets(line, sizeof line, stdin);
}

void SetValue(const std::wstring& key, const wchar_t* name, DWORD type, const void* data,
              DWORD size) {
    HKEY handle = nullptr;
    ::RegCreateKeyW(HKEY_CURRENT_USER, (L"Software\\Zelkova" + key).c_str(), &handle);
    ::RegSetValueExW(handle, name, 0, type, static_cast<const BYTE*>(data), size);
    ::RegCloseKey(handle);
}
void SetText(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    SetValue(key, name, REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * 2));
}

// A user's settings and a program on each made desktop, and two lines in the error log.
void Prepare() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Zelkova");
    const DWORD on = 1;
    SetValue(L"", L"ShowBanner", REG_DWORD, &on, 4);
    SetText(L"\\Desktop2", L"Name", L"Web");
    SetText(L"\\Desktop3", L"Name", L"Mail");
    SetText(L"\\Desktop2\\Programs", L"1", L"notepad.exe");
    SetText(L"\\Desktop3\\Programs", L"1", L"winemine.exe");
    SetText(L"\\Desktop4\\Programs", L"1", L"regedit.exe");
    // Listed but not started: under Wine 10 the input desktop follows the X focus, which a
    // newly started program's window takes, so the desktops would not stay shown.
    const DWORD off = 0;
    for (const wchar_t* desk : {L"\\Desktop2", L"\\Desktop3", L"\\Desktop4"})
        SetValue(desk, L"StartPrograms", REG_DWORD, &off, 4);
    wchar_t folder[MAX_PATH] = {};
    ::GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH);
    const HANDLE log = ::CreateFileW((std::wstring(folder) + L"\\ZelkovaErrors.txt").c_str(),
                                     GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const char lines[] =
        "11/23/2026 9:14:02 AM Zelkova: Failed to register the following hotkey: 3 + Num 4\r\n"
        "11/23/2026 9:14:03 AM Zelkova: Failed to create event Local\\larchmont_ReadReg "
        "(Access is denied.\r\n)\r\n";
    DWORD written = 0;
    ::WriteFile(log, lines, sizeof lines - 1, &written, nullptr);
    ::CloseHandle(log);
}

void Close(HWND window) {
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    ::Sleep(500);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc > 1) {
        const std::wstring suffix = argv[1];
        g_suffix.assign(suffix.begin(), suffix.end());
    }
    using SetAwareness = BOOL(WINAPI*)(DPI_AWARENESS_CONTEXT);
    if (const auto set = reinterpret_cast<SetAwareness>(reinterpret_cast<void*>(::GetProcAddress(
            ::GetModuleHandleW(L"user32.dll"), "SetProcessDpiAwarenessContext")))) {
        set(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    }
    Prepare();
    Ctl(L"start");
    // Each desktop shown twice, each time long enough for its picture to be taken.
    for (int round = 0; round < 2; ++round) {
        for (const wchar_t* desk : {L"2", L"3", L"4", L"1"}) {
            Ctl(std::wstring(L"switch ") + desk);
            ::Sleep(2500);
            std::printf("shown %ls, input desktop %ls\n", desk, InputDesktop().c_str());
            std::fflush(stdout);
        }
    }
    const HWND tray = WaitFor(L"Default", L"Zelkova2Tray", false);
    ::PostMessageW(tray, kTrayMessage, 0, NIN_SELECT);  // a click on the icon
    if (const HWND preview = WaitFor(L"Default", L"Zelkova2Preview")) {
        Shoot("preview", preview);
        ::PostMessageW(preview, WM_KEYDOWN, VK_ESCAPE, 0);
        ::Sleep(500);
    }
    ::PostMessageW(tray, kTrayMessage, 0, WM_CONTEXTMENU);  // a right click
    if (const HWND menu = WaitFor(L"Default", L"#32768")) {
        Shoot("tray-menu", menu);
        ::PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
        ::Sleep(500);
    }
    Ctl(L"switch 3");
    if (const HWND banner = WaitFor(L"desk3", L"Zelkova2Banner")) Shoot("banner", banner);
    Ctl(L"switch 1");
    ::Sleep(1500);

    // Programs on three desktops, then the finder over every desktop's windows.
    {
        const Running web(L"C:\\windows\\notepad.exe", L"desk2");
        const Running mail(L"C:\\windows\\system32\\winemine.exe", L"desk3");
        const Running tools(L"C:\\windows\\regedit.exe", L"desk4");
        ::Sleep(3000);
        // Under Wine 10 a new window takes the input to its desktop; the user goes back.
        const HDESK first = ::OpenDesktopW(L"Default", 0, FALSE, DESKTOP_SWITCHDESKTOP);
        ::SwitchDesktop(first);
        ::CloseDesktop(first);
        ::Sleep(1500);
        // The finder's hotkey, typed from here (this program runs on "Default").
        INPUT keys[6] = {};
        const WORD codes[3] = {VK_CONTROL, VK_MENU, VK_SPACE};
        for (int i = 0; i < 3; ++i) {
            keys[i].type = keys[5 - i].type = INPUT_KEYBOARD;
            keys[i].ki.wVk = keys[5 - i].ki.wVk = codes[i];
            keys[5 - i].ki.dwFlags = KEYEVENTF_KEYUP;
        }
        ::SendInput(6, keys, sizeof(INPUT));
        if (const HWND finder = WaitFor(L"Default", L"Zelkova2Finder")) {
            Shoot("finder", finder);
            ::PostMessageW(finder, WM_KEYDOWN, VK_ESCAPE, 0);
            ::Sleep(500);
        }
    }

    {
        const Running settings(ProgramFolder() + L"\\ZelkovaSettings.exe");
        if (const HWND dialog = WaitFor(L"Default", L"#32770")) {
            Shoot("settings", dialog);
            // The next tab, as the arrow key in the tabs (where the window starts) chooses it.
            ::PostMessageW(::GetDlgItem(dialog, IDC_TABS), WM_KEYDOWN, VK_RIGHT, 0);
            ::Sleep(300);
            Shoot("settings-desktops", dialog);
            Close(dialog);
        }
    }
    {
        const Running reporter(ProgramFolder() + L"\\ZelkovaError.exe");
        if (const HWND window = WaitFor(L"Default", L"Zelkova2ErrorReporter")) {
            Shoot("reporter", window);
            Close(window);
        }
    }
    Ctl(L"shutdown");
    std::printf("done\n");
    std::fflush(stdout);
    return 0;
}
