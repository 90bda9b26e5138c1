// The executable of a program with windows: it calls its entry point in Zelkova2Core.dll.
#include <windows.h>

#include "launch/entry_points.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show) {
    return ZK_PROGRAM(show);
}
