// StartZelkova2.exe: the program a user double-clicks. It never makes a second Zelkova2.
#include <windows.h>

#include "diagnostics/err_log.h"
#include "launch/entry_points.h"
#include "platform/win32/win32_os.h"
#include "tool_support/start_for_user.h"
#include "winsupport/process_context.h"

ZK_ENTRY int ZkStartZelkova2(int) {
    zk::Win32Os os;
    zk::ProcessContext context(os, [&](const zk::Text& what) {
        zk::ErrLog(os).LogError(zk::LogMessage(u"StartZelkova2: " + what));
    });
    return zk::companion::StartForTheUser(os);
}
