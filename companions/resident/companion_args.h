#pragma once
// A companion's command line. The controller starts each with its number alone (" 2"); a
// companion started again by its neighbour also names the controller it serves (" 2 4711").

#include <cstdint>
#include <string_view>

#include "support/text.h"

namespace zk::companion {

struct CompanionArgs {
    int desk = 0;                    // 1 to 5; 0 when the line holds none
    std::uint32_t controllerId = 0;  // 0: the process that started this one
};

[[nodiscard]] CompanionArgs ParseCompanionArgs(std::u16string_view commandLine);
[[nodiscard]] Text CompanionCommandLine(int desk, std::uint32_t controllerId);

}  // namespace zk::companion
