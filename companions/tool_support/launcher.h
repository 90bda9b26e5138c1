#pragma once
// Starting Zelkova2 as a user expects. The controller takes whatever desktop is shown as its
// desktop 1, so "Default" is shown first; a Zelkova2 started from another desktop would make
// that desktop its first and leave "Default" out of reach.

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/handles.h"
#include "shared/controller_link.h"
#include "vocabulary/programs.h"

namespace zk::companion {

// The controller window of that process, on "Default" or on the caller's desktop.
[[nodiscard]] Hwnd FindControllerWindow(DesktopApi& desktops, WindowApi& windows,
                                        std::uint32_t processId);
// Makes "Default" the input desktop; false when the system refuses.
bool ShowDefaultDesktop(DesktopApi& os);
void KeepDefaultShown(DesktopApi& desktops, KernelApi& kernel);

// The programs a running Zelkova2 uses, in the order of Program, that are not beside this one.
[[nodiscard]] std::vector<Program> MissingPrograms(FileApi& files, KernelApi& kernel);
// "DeskHerald.exe is missing from C:\...\Zelkova2", with what to do.
[[nodiscard]] Text MissingProgramsText(KernelApi& os, const std::vector<Program>& missing);

enum class LaunchResult { Started, AlreadyRunning, ProgramsMissing, Failed, NoAnswer };
struct Launch {
    LaunchResult result = LaunchResult::Failed;
    std::uint32_t error = 0;        // why the start failed
    std::vector<Program> notFound;  // programs missing before the start: none was started
    std::uint32_t missing = 0;      // companion programs found missing (SharedBlock::missing)
    UniqueKernelHandle process;
};

// Shows "Default", starts the controller beside this program (on "Default"), and waits up to
// `answerWithin` milliseconds for its window and companions; a companion program found missing
// ends the wait, as what it would start never comes. A running Zelkova2 is not started again,
// nor one whose programs are not all there.
[[nodiscard]] Launch StartZelkova(Os& os, std::uint32_t answerWithin);

// What a user's start does when Zelkova2 runs already: the preview opens on the desktop shown.
// False when it cannot (no switcher there to show it).
bool ShowRunningZelkova(Os& os);

}  // namespace zk::companion
