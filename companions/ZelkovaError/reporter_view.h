#pragma once
// What the error reporter shows: a heading that says what the lines are and what to do, then the
// newest entries of the log first, each on one line, or that nothing has been logged; and first
// of all, when the log cannot be written, that and where it was tried.

#include "platform/os.h"

namespace zk::companion {

struct ReporterView {
    Text text;     // for the reporter's text box, lines ending in CR LF
    Text logPath;  // what "Open log file" opens
};

[[nodiscard]] ReporterView MakeReporterView(Os& os);

}  // namespace zk::companion
