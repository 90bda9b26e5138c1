#pragma once
// Where the program's own executable lives, as its companions and its error texts need it.

#include "platform/os.h"

namespace zk {

[[nodiscard]] Text ExecutablePath(Os& os);
// The folder without a trailing backslash.
[[nodiscard]] Text ExecutableFolder(Os& os);
// The file name without folder and extension ("Zelkova2").
[[nodiscard]] Text ExecutableName(Os& os);

}  // namespace zk
