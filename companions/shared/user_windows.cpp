#include "shared/user_windows.h"

#include <algorithm>
#include <array>

#include "desktop/desktops.h"
#include "platform/handles.h"
#include "programs/programs.h"

namespace zk::companion {
namespace {

// The shell's own windows: the taskbar, the desktop behind the windows, and Wine's tray.
bool OfTheShell(const Text& className) {
    constexpr std::array<std::u16string_view, 4> kShell = {
        u"Shell_TrayWnd", u"Shell_SecondaryTrayWnd", u"Progman", u"WorkerW"};
    return std::find(kShell.begin(), kShell.end(), className) != kShell.end();
}

bool OneOfOurs(const Text& program) {
    constexpr std::array kOurs = {Program::Controller, Program::Pilot,    Program::Herald,
                                  Program::Reporter,   Program::Settings, Program::Launcher};
    return std::any_of(kOurs.begin(), kOurs.end(),
                       [&](Program ours) { return IsProgramFile(program, ours); });
}

}  // namespace

std::vector<UserWindow> UserWindowsOn(Os& os, int desk) {
    UniqueDesktop desktop(os, os.OpenDesktopW(kDesktopNames.at(static_cast<std::size_t>(desk - 1)),
                                              0, false, DesktopReadObjects | DesktopEnumerate));
    if (!desktop) return {};
    const std::vector<ProcessEntry> processes = os.CreateToolhelp32Snapshot();
    std::vector<UserWindow> windows;
    for (const Hwnd window : os.EnumDesktopWindows(desktop.get())) {
        if ((os.GetWindowLongPtrW(window, GwlStyle) & WsVisible) == 0 ||
            (os.GetWindowLongPtrW(window, GwlExStyle) & WsExToolWindow) != 0 ||
            OfTheShell(os.GetClassNameW(window))) {
            continue;
        }
        UserWindow user{window, os.GetWindowTextW(window), 0, {}};
        (void)os.GetWindowThreadProcessId(window, &user.processId);
        for (const ProcessEntry& process : processes) {
            if (process.processId == user.processId) user.program = process.exeFile;
        }
        if (!user.title.empty() && !OneOfOurs(user.program)) windows.push_back(std::move(user));
    }
    return windows;
}

}  // namespace zk::companion
