#pragma once
// A simulated Windows session: the state the program touches and nothing more. It behaves as
// the system does (where unsure, as Wine does), keeps a journal of calls, and fails calls on
// request. The program's process is one process of the session; tests act as the others.
//
// SimOs is the composition of the session's parts, one per role of the seam, over one shared
// session; a test reaches every part's driving helpers through it.

#include "platform/os.h"
#include "platform/sim/session.h"
#include "platform/sim/sim_desktops.h"
#include "platform/sim/sim_files.h"
#include "platform/sim/sim_hotkeys.h"
#include "platform/sim/sim_kernel.h"
#include "platform/sim/sim_messages.h"
#include "platform/sim/sim_registry.h"
#include "platform/sim/sim_system.h"
#include "platform/sim/sim_text.h"
#include "platform/sim/sim_windows.h"

namespace zk::sim {

// The session comes first, so that it exists before the parts that share it.
struct SessionHolder {
    explicit SessionHolder(std::uint32_t processId) : shared_(processId) {}
    Session shared_;
};

class SimOs final : private SessionHolder,
                    public Os,
                    public SimSystem,
                    public SimFiles,
                    public SimKernel,
                    public SimDesktops,
                    public SimWindows,
                    public SimMessages,
                    public SimHotKeys,
                    public SimRegistry,
                    public SimText {
  public:
    explicit SimOs(std::uint32_t processId = 0x1A4)
        : SessionHolder(processId),
          SimSystem(shared_),
          SimFiles(shared_),
          SimKernel(shared_, *this),
          SimDesktops(shared_),
          SimWindows(shared_),
          SimMessages(shared_, *this),
          SimHotKeys(shared_, *this, *this),
          SimRegistry(shared_),
          SimText(shared_) {}

    Journal& journal() { return shared_.journal; }
    FaultPlan& faults() { return shared_.faults; }
    Session& session() { return shared_; }
    // The process that started the simulated one.
    void SetParentProcess(std::uint32_t processId) { shared_.parentProcessId = processId; }
};

}  // namespace zk::sim
