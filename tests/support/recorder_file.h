#pragma once
// The recorder stand-in beside the tests, and what it wrote of how it was started.

#include <optional>

#include "platform/os.h"

namespace zk::support {

struct Record {
    Text commandLine, desktop, title;
};

Text TestFolder();
Text RecorderPath();
// Points ZK_RECORD_FILE (inherited by programs started from now on) at a fresh, empty file.
void StartRecording();
// The last record written there.
std::optional<Record> LastRecord();

}  // namespace zk::support
