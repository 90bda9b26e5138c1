#pragma once
// Starting Zelkova2 as a user expects. The controller takes whatever desktop is shown as its
// desktop 1, so "Default" is shown first; a Zelkova2 started from another desktop would make
// that desktop its first and leave "Default" out of reach.

#include <cstdint>
#include <vector>

#include "platform/handles.h"

namespace zk::companion {

// The processes of Zelkova2's controller that run now.
[[nodiscard]] std::vector<std::uint32_t> ControllerProcessIds(KernelApi& os);
// The controller window of that process, on "Default" or on the caller's desktop.
[[nodiscard]] Hwnd FindControllerWindow(DesktopApi& desktops, WindowApi& windows,
                                        std::uint32_t processId);
// Makes "Default" the input desktop; false when the system refuses.
bool ShowDefaultDesktop(DesktopApi& os);
void KeepDefaultShown(DesktopApi& desktops, KernelApi& kernel);

enum class LaunchResult { Started, AlreadyRunning, Failed, NoAnswer };
struct Launch {
    LaunchResult result = LaunchResult::Failed;
    std::uint32_t error = 0;    // why the start failed
    std::uint32_t missing = 0;  // companion programs found missing (SharedBlock::missing)
    UniqueKernelHandle process;
};

// Shows "Default", starts the controller beside this program (on "Default"), and waits up to
// `answerWithin` milliseconds for its window and companions; a companion program found missing
// ends the wait, as what it would start never comes. A running Zelkova2 is not started again.
[[nodiscard]] Launch StartZelkova(Os& os, std::uint32_t answerWithin);

}  // namespace zk::companion
