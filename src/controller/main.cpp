// Zelkova2.exe: the controller on the real system. Linked for the GUI subsystem, so no console.
#include "controller/frm_zk.h"
#include "platform/win32/win32_os.h"

int main() {
    zk::Win32Os os;
    return zk::RunZelkova(os);
}
