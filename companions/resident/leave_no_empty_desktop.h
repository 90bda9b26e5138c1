#pragma once
// When Zelkova2 ends, its companions end with it, and the last handles to the desktops it made
// close with them. A made desktop that is shown then and holds none of the user's windows would
// leave the user with nothing to see and nothing to leave it by (under Wine 10, with no input
// desktop at all once the desktop is gone): each companion of that desktop shows desktop 1 as it
// ends, while its own handle still keeps the desktop alive. A desktop that holds the user's
// windows stays shown: the user is working there.

#include "platform/os.h"

namespace zk::companion {

// Shows desktop 1 where `desk` (2 to 4) is the desktop shown and none of the user's windows is
// on it; whether it did.
bool LeaveNoEmptyDesktop(Os& os, int desk);

}  // namespace zk::companion
