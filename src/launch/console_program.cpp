// The executable of the console tool: it calls its entry point in Zelkova2Core.dll.
#include "launch/entry_points.h"

int wmain(int argc, wchar_t** argv) {
    return ZkZelkovactl(argc, argv);
}
