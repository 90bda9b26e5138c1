#pragma once
// Reading back what the recorder stand-in wrote (tests under Wine only).

#include <string>
#include <vector>

#include "platform/os.h"

namespace zk::support {

struct Record {
    Text program;
    Text commandLine;
    Text desktop;
    Text title;
    int showWindow = 0;
};

// The recorder beside the running test executable.
Text RecorderPath();
Text TestFolder();
// Points ZK_RECORD_FILE (inherited by programs started from now on) at a fresh, empty file.
void StartRecording();
std::vector<Record> ReadRecords();

}  // namespace zk::support
