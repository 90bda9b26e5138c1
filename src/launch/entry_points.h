#pragma once
// The programs of Zelkova2 share one library, Zelkova2Core.dll; each executable holds only its
// resources and a call of its own entry point here. (Built into every program, the C++ runtime
// and the seam would make each of them several times larger.)

#if defined(ZK_BUILDING_CORE)
#define ZK_ENTRY extern "C" __declspec(dllexport)
#else
#define ZK_ENTRY extern "C" __declspec(dllimport)
#endif

// `show` is the show state the program was started with.
ZK_ENTRY int ZkZelkova2(int show);
ZK_ENTRY int ZkDeskPilot(int show);
ZK_ENTRY int ZkDeskHerald(int show);
ZK_ENTRY int ZkZelkovaError(int show);
ZK_ENTRY int ZkZelkovaSettings(int show);
ZK_ENTRY int ZkZelkovactl(int argc, wchar_t** argv);
ZK_ENTRY int ZkStartZelkova2(int show);
