#pragma once
// The programs a made desktop (2 to 4) starts with, so that it is not an empty screen: the
// stored command lines, or the Windows shell when none are stored; none when turned off.

#include <vector>

#include "platform/os.h"
#include "settings/registry.h"

namespace zk::companion {

// With environment references expanded, in the order of their values.
[[nodiscard]] std::vector<Text> StartupPrograms(Os& os, Registry& registry, int desk);

// Starts them on the calling thread's desktop, unless it shows windows already (an earlier run
// started them), each by the full path of its program; a program that is not found is logged.
// The number started.
int StartStartupPrograms(Os& os, Registry& registry, int desk);

}  // namespace zk::companion
