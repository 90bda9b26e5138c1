#pragma once
// Where the program's own executable lives, as its companions and its error texts need it.

#include "platform/api/kernel_api.h"

namespace zk {

[[nodiscard]] Text ExecutablePath(KernelApi& os);
// The folder without a trailing backslash.
[[nodiscard]] Text ExecutableFolder(KernelApi& os);
// The file name without folder and extension ("Zelkova2").
[[nodiscard]] Text ExecutableName(KernelApi& os);

}  // namespace zk
