#pragma once
// A start by the user (StartZelkova2.exe, the Start menu, the log-on entry, the settings' Start
// button): Zelkova2 starts from desktop 1, or where it runs already the preview opens on the
// desktop shown. What fails is said in a message box on that desktop.

#include "platform/os.h"

namespace zk::companion {

// 0 when Zelkova2 runs afterwards.
int StartForTheUser(Os& os);

}  // namespace zk::companion
