#pragma once
// What the program fixes about its companion programs: their file names and folder (the
// program's own), the desktops they run on and the command line each one gets.

#include <cstdint>
#include <vector>

#include "platform/os.h"
#include "vocabulary/desktops.h"
#include "vocabulary/programs.h"

namespace zk {

struct CompanionStart {
    Program program;
    std::int16_t argument;
};

// The companions started on desktop 1 to 4, in order. Desktop 1 also runs the herald that
// serves the controller's own block.
[[nodiscard]] std::vector<CompanionStart> CompanionsOfDesktop(std::int16_t desk);

// A companion's argument: the number's decimal digits ("2"); its command line is a blank
// followed by them.
[[nodiscard]] Text CompanionArgument(std::int16_t argument);

}  // namespace zk
