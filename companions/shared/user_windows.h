#pragma once
// The windows a user has on a desktop: shown top-level windows with a title that are not tool
// windows, not the shell's own (its taskbar, its desktop) and not Zelkova2's. Windows cannot move a
// window to another desktop: these stay where they are when Zelkova2 ends.

#include <vector>

#include "platform/os.h"

namespace zk::companion {

struct UserWindow {
    Hwnd window = nullptr;
    Text title;
    std::uint32_t processId = 0;
    Text program;  // the file name of its program
};

// Of desktop N (1 to the number of desktops); none when the desktop cannot be opened.
[[nodiscard]] std::vector<UserWindow> UserWindowsOn(Os& os, int desk);
// The same, with the processes of one snapshot, for a caller that asks of every desktop.
[[nodiscard]] std::vector<UserWindow> UserWindowsOn(Os& os, int desk,
                                                    const std::vector<ProcessEntry>& processes);

}  // namespace zk::companion
