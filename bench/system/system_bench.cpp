// The whole system measured from outside, against floors doing the same system work, as ratios
// of one run (make bench; scripts/bench-system runs each mode under its Wine).
//   bare [floors]  a bare window; with "floors", the floors' window of the switch (floors.h)
//   relay FROM TO  a relay of the chain floors
//   switch [busy]  hotkey to shown desktop, Zelkova2 against the floors beside it (Wine 10);
//                  "busy" runs two busy loops meanwhile
//   busy           a busy loop
//   roundtrip      a WM_COPYDATA to the controller against one to a bare window
//   start          start to the controller answering, against a bare window's start
//   soak           commands and hotkey chains through the real companions, with each program's
//                  memory and handles at the start, the middle and the end
//   finder         the finder's hotkey to the finder shown, with 200 windows on the four
//                  desktops (goal: within 100 ms)
#include <cstdio>
#include <string>

#include "system/floors.h"
#include "system/modes.h"

int wmain(int argc, wchar_t** argv) {
    using namespace zk::bench;
    const std::wstring mode = argc > 1 ? argv[1] : L"";
    const std::wstring option = argc > 2 ? argv[2] : L"";
    if (mode == L"bare") return Bare(option == L"floors");
    if (mode == L"relay" && argc > 3) return Relay(argv[2], argv[3]);
    if (mode == L"switch") return Switch(option == L"busy");
    if (mode == L"busy") return Busy();
    if (mode == L"roundtrip") return RoundTrip();
    if (mode == L"start") return StartTime();
    if (mode == L"soak") return Soak();
    if (mode == L"finder") return Finder();
    if (mode == L"rest") return Rest();
    std::fprintf(stderr,
                 "usage: zk_system_bench bare [floors]|relay FROM TO|switch [busy]|busy|"
                 "roundtrip|start|soak|finder\n");
    return 2;
}
