#pragma once
// Where a start-up program's file is. A command line whose program is a bare name would be
// looked for in the current folder first, where anyone's file may lie: the herald finds the
// program itself, never there, and starts it by its full path.

#include <optional>

#include "platform/os.h"

namespace zk::companion {

struct ProgramCommand {
    Text application;  // the full path
    Text commandLine;  // the quoted full path and the arguments as given
};

// The program of `line`: a full path as given, or a name found in the system folder, the
// Windows folder or a folder of PATH (".exe" added to a name without an extension). An unquoted
// path with blanks is taken at its longest part that names a file. Nothing when no file is found.
[[nodiscard]] std::optional<ProgramCommand> TryFindProgram(Os& os, const Text& line);

}  // namespace zk::companion
