#include "tool_support/launcher.h"

#include "shared/shown_desktop.h"

#include <algorithm>
#include <iterator>

#include "desktop/companions.h"
#include "platform/module_path.h"
#include "shared/controller_link.h"
#include "shared/signals.h"
#include "signals/shared_state.h"
#include "vocabulary/programs.h"

namespace zk::companion {
namespace {

constexpr std::uint32_t kPoll = 50;
constexpr std::uint32_t kSettle = 1000;

Hwnd ControllerWindowAmong(WindowApi& os, const std::vector<Hwnd>& windows,
                           std::uint32_t processId) {
    for (const Hwnd window : windows) {
        std::uint32_t owner = 0;
        (void)os.GetWindowThreadProcessId(window, &owner);
        if (owner == processId && IsControllerWindow(os, window)) return window;
    }
    return nullptr;
}

}  // namespace

Hwnd FindControllerWindow(DesktopApi& desktops, WindowApi& windows, std::uint32_t processId) {
    UniqueDesktop first(desktops, desktops.OpenDesktopW(kDefaultDesktopName, 0, false,
                                                        DesktopReadObjects | DesktopEnumerate));
    if (first) {
        if (const Hwnd w = ControllerWindowAmong(windows, desktops.EnumDesktopWindows(first.get()),
                                                 processId)) {
            return w;
        }
    }
    return ControllerWindowAmong(windows, windows.EnumWindows(), processId);
}

// Where the input desktop follows the focus of the display (as under Wine 10), the focus of the
// last desktop the startup made can come after its switch back to desktop 1 and take the input
// with it; a moment after the start, desktop 1 is shown again if it has to be.
void KeepDefaultShown(DesktopApi& desktops, KernelApi& kernel) {
    for (std::uint32_t waited = 0; waited < kSettle; waited += kPoll) {
        UniqueDesktop input(desktops, desktops.OpenInputDesktop(0, false, DesktopReadObjects));
        if (input && desktops.GetUserObjectInformationW(input.get()) != kDefaultDesktopName) {
            (void)ShowDefaultDesktop(desktops);
        }
        kernel.Sleep(kPoll);
    }
}

bool ShowDefaultDesktop(DesktopApi& os) {
    UniqueDesktop first(os, os.OpenDesktopW(kDefaultDesktopName, 0, false, DesktopSwitchDesktop));
    return first && os.SwitchDesktop(first.get());
}

std::vector<Program> MissingPrograms(FileApi& files, KernelApi& kernel) {
    std::vector<Program> missing;
    for (const Program program : {Program::Controller, Program::Pilot, Program::Herald,
                                  Program::Reporter, Program::Settings}) {
        if (files.GetFileAttributesW(ProgramPath(kernel, program)) == InvalidFileAttributes)
            missing.push_back(program);
    }
    return missing;
}

Text MissingProgramsText(KernelApi& os, const std::vector<Program>& missing) {
    Text names;
    for (std::size_t i = 0; i < missing.size(); ++i) {
        names += (i == 0                    ? u""
                  : i + 1 == missing.size() ? u" and "
                                            : u", ") +
                 Text(ProgramFileName(missing[i]));
    }
    return names + (missing.size() == 1 ? u" is" : u" are") + u" missing from " +
           ExecutableFolder(os) + u". Install Zelkova2 again, or put the files back.";
}

bool ShowRunningZelkova(Os& os) {
    const auto ids = TryControllerProcessIds(os);
    if (!ids || ids->empty()) return false;
    SharedState state(os, ids->front());
    Signals signals(os, os);
    const int shown = ShownDesktop(os, state).InStep(signals);
    return state.Block().companions[PilotSlot(shown)] != 0 &&
           ShowPreview(os, signals, state.Block(), shown);
}

Launch StartZelkova(Os& os, std::uint32_t answerWithin) {
    Launch launch;
    const auto running = TryControllerProcessIds(os);
    if (!running) {  // a second Zelkova2 is not risked
        launch.error = os.GetLastError();
        return launch;
    }
    if (!running->empty()) {
        launch.result = LaunchResult::AlreadyRunning;
        return launch;
    }
    launch.notFound = MissingPrograms(os, os);
    if (!launch.notFound.empty()) {
        launch.result = LaunchResult::ProgramsMissing;
        return launch;
    }
    (void)ShowDefaultDesktop(os);
    StartupInfo si;
    si.lpDesktop = kDefaultDesktopName;
    const Text path = ProgramPath(os, Program::Controller);
    auto started = TryCreateProcess(os, path, u"\"" + path + u"\"", false, si);
    if (!started) {
        launch.error = os.GetLastError();
        return launch;
    }
    launch.process = std::move(started->process);
    // Up when its window exists and its nine companions have announced themselves: the
    // startup ends with the switch to desktop 1 right after the last of them starts.
    SharedState state(os, started->processId);
    for (std::uint32_t waited = 0;; waited += kPoll) {
        const auto& ids = state.Block().companions;
        const bool companionsUp =
            std::all_of(std::begin(ids), std::end(ids), [](std::uint32_t id) { return id != 0; });
        launch.missing = state.Block().missing & (kPilotMissing | kHeraldMissing);
        if ((companionsUp || launch.missing != 0) &&
            FindControllerWindow(os, os, started->processId) != nullptr) {
            break;
        }
        if (waited >= answerWithin ||
            os.WaitForSingleObject(launch.process.get(), kPoll) != WaitTimeout) {
            launch.result = LaunchResult::NoAnswer;
            return launch;
        }
    }
    KeepDefaultShown(os, os);
    launch.result = LaunchResult::Started;
    return launch;
}

}  // namespace zk::companion
