// Drives the running Zelkova2 under Wine for scripts/screenshots: it opens what a user sees, one
// thing at a time, and names each on standard output when it is on the screen, so that the
// script can take its picture; then it closes it and goes on.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

constexpr UINT kTrayMessage = WM_APP + 1;

// The programs as built, beside the driver's own folder.
std::wstring Folder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    return folder.substr(0, folder.find_last_of(L'\\')) + L"\\..\\bin";
}

HWND WindowOf(const wchar_t* desktop, const wchar_t* className) {
    struct Search {
        const wchar_t* className;
        HWND found;
    } search{className, nullptr};
    const HDESK handle = ::OpenDesktopW(desktop, 0, FALSE, DESKTOP_READOBJECTS | DESKTOP_ENUMERATE);
    ::EnumDesktopWindows(
        handle,
        [](HWND window, LPARAM lParam) {
            auto* s = reinterpret_cast<Search*>(lParam);
            wchar_t name[64] = {};
            ::GetClassNameW(window, name, 64);
            if (std::wstring(name) != s->className) return TRUE;
            s->found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    ::CloseDesktop(handle);
    return search.found;
}

HWND WaitFor(const wchar_t* desktop, const wchar_t* className) {
    for (int i = 0; i < 100; ++i) {
        if (const HWND window = WindowOf(desktop, className)) {
            ::Sleep(700);  // drawn
            return window;
        }
        ::Sleep(100);
    }
    return nullptr;
}

// Says what is on the screen now, and where, and waits for the picture to be taken.
void Shoot(const char* name, HWND window) {
    RECT r{};  // what the program draws: without a window manager no frame is drawn
    ::GetClientRect(window, &r);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&r), 2);
    std::printf("shot %s %ld %ld %ld %ld\n", name, r.left, r.top, r.right - r.left,
                r.bottom - r.top);
    std::fflush(stdout);
    char line[16];
    (void)std::fgets(line, sizeof line, stdin);
}

std::wstring InputDesktop() {
    wchar_t name[64] = {};
    if (const HDESK input = ::OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS)) {
        ::GetUserObjectInformationW(input, UOI_NAME, name, sizeof name, nullptr);
        ::CloseDesktop(input);
    }
    return name;
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

HANDLE Start(const std::wstring& program, const std::wstring& arguments) {
    STARTUPINFOW si{};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi{};
    std::wstring line = L"\"" + program + L"\" " + arguments;
    if (!::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                          nullptr, &si, &pi)) {
        return nullptr;
    }
    ::CloseHandle(pi.hThread);
    return pi.hProcess;
}

void Run(const std::wstring& program, const std::wstring& arguments) {
    const HANDLE process = Start(program, arguments);
    ::WaitForSingleObject(process, 60000);
    ::CloseHandle(process);
}

void Close(HWND window) {
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    ::Sleep(500);
}

}  // namespace

int wmain() {
    Prepare();
    const std::wstring ctl = Folder() + L"\\zelkovactl.exe";
    Run(ctl, L"start");
    // Each desktop shown, twice: the second time its programs have settled, and its picture
    // is taken a moment later.
    for (int round = 0; round < 2; ++round) {
        for (const wchar_t* desk : {L"2", L"3", L"4", L"1"}) {
            Run(ctl, std::wstring(L"switch ") + desk);
            ::Sleep(2500);
            std::printf("shown %ls, input desktop %ls\n", desk, InputDesktop().c_str());
            std::fflush(stdout);
        }
    }
    const HWND tray = WaitFor(L"Default", L"Zelkova2Tray");
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
    Run(ctl, L"switch 3");
    if (const HWND banner = WaitFor(L"desk3", L"Zelkova2Banner")) Shoot("banner", banner);
    Run(ctl, L"switch 1");
    ::Sleep(1500);

    const HANDLE settings = Start(Folder() + L"\\ZelkovaSettings.exe", L"");
    HWND dialog = nullptr;
    for (int i = 0; i < 100 && dialog == nullptr; ++i, ::Sleep(100))
        dialog = ::FindWindowW(nullptr, L"Zelkova2 settings");
    if (dialog != nullptr) {
        ::Sleep(700);  // drawn
        Shoot("settings", dialog);
        Close(dialog);
    }
    ::CloseHandle(settings);

    const HANDLE reporter = Start(Folder() + L"\\ZelkovaError.exe", L"");
    if (const HWND window = WaitFor(L"Default", L"Zelkova2ErrorReporter")) {
        Shoot("reporter", window);
        Close(window);
    }
    ::CloseHandle(reporter);
    Run(ctl, L"shutdown");
    std::printf("done\n");  // the programs that the desktops started are still running
    std::fflush(stdout);
    return 0;
}
