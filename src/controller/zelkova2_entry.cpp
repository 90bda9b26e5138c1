// Zelkova2.exe's entry point: the controller on the real system.
#include "controller/frm_zk.h"
#include "launch/entry_points.h"
#include "platform/win32/win32_os.h"

ZK_ENTRY int ZkZelkova2(int) {
    zk::Win32Os os;
    return zk::RunZelkova(os);
}
