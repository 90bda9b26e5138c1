#include "resident/leave_no_empty_desktop.h"

#include "platform/handles.h"
#include "resident/own_desktop.h"
#include "shared/user_windows.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

bool LeaveNoEmptyDesktop(Os& os, int desk) {
    if (desk < 2 || desk > kDesktopCount) return false;
    if (!OwnDesktop(os).Shown() || !UserWindowsOn(os, desk).empty()) return false;
    UniqueDesktop first(os, os.OpenDesktopW(kDefaultDesktopName, 0, false, DesktopSwitchDesktop));
    return first && os.SwitchDesktop(first.get());
}

}  // namespace zk::companion
