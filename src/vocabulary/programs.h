#pragma once
// The system's programs: one row each, with the file name it has in the controller's folder.
// Every start of one of them, and every check that one is there, takes its path from here.

#include "platform/api/kernel_api.h"

namespace zk {

// The launcher is what the user starts: it finds a running Zelkova2 or starts one from desktop 1.
enum class Program { Controller, Pilot, Herald, Reporter, Settings, Launcher };

// The file name ("DeskPilot.exe").
[[nodiscard]] const char16_t* ProgramFileName(Program program);
// The full path beside the running program: its folder, a backslash and the file name.
[[nodiscard]] Text ProgramPath(KernelApi& os, Program program);
// Whether a process's file name ("zelkova2.EXE") is the program's, as Windows compares file
// names: without regard to case.
[[nodiscard]] bool IsProgramFile(const Text& fileName, Program program);

}  // namespace zk
