#include "shared/user_windows.h"

#include <algorithm>
#include <array>

#include "platform/handles.h"
#include "vocabulary/desktops.h"
#include "vocabulary/programs.h"

namespace zk::companion {
namespace {

// The shell's own windows: the taskbar, the desktop behind the windows, and Wine's tray.
bool OfTheShell(const Text& className) {
    constexpr std::array<std::u16string_view, 5> kShell = {
        u"Shell_TrayWnd", u"Shell_SecondaryTrayWnd", u"Progman", u"WorkerW",
        u"__winex11_standalone_tray"};
    return std::find(kShell.begin(), kShell.end(), className) != kShell.end();
}

bool OneOfOurs(const Text& program) {
    constexpr std::array kOurs = {Program::Controller, Program::Pilot,    Program::Herald,
                                  Program::Reporter,   Program::Settings, Program::Launcher};
    return std::any_of(kOurs.begin(), kOurs.end(),
                       [&](Program ours) { return IsProgramFile(program, ours); });
}

}  // namespace

// Each question about a window is a trip to the system: the ones that rule most windows out come
// first, and one snapshot of the processes serves every desktop.
std::vector<UserWindow> UserWindowsOn(Os& os, int desk,
                                      const std::vector<ProcessEntry>& processes) {
    UniqueDesktop desktop(os, os.OpenDesktopW(kDesktopNames.at(static_cast<std::size_t>(desk - 1)),
                                              0, false, DesktopReadObjects | DesktopEnumerate));
    if (!desktop) return {};
    std::vector<UserWindow> windows;
    for (const Hwnd window : os.EnumDesktopWindows(desktop.get())) {
        if ((os.GetWindowLongPtrW(window, GwlStyle) & WsVisible) == 0 ||
            (os.GetWindowLongPtrW(window, GwlExStyle) & WsExToolWindow) != 0) {
            continue;
        }
        UserWindow user{window, {}, 0, {}};
        (void)os.GetWindowThreadProcessId(window, &user.processId);
        for (const ProcessEntry& process : processes) {
            if (process.processId == user.processId) user.program = process.exeFile;
        }
        if (OneOfOurs(user.program)) continue;
        if (OfTheShell(os.GetClassNameW(window))) continue;
        user.title = os.GetWindowTextW(window);
        if (!user.title.empty()) windows.push_back(std::move(user));
    }
    return windows;
}

std::vector<UserWindow> UserWindowsOn(Os& os, int desk) {
    return UserWindowsOn(os, desk, os.CreateToolhelp32Snapshot());
}

}  // namespace zk::companion
