#pragma once
// Companions keep each other running, each watched by one other: the herald and the switcher of
// desktops 2 to 4 watch each other; on desktop 1 the herald watches the switcher, and the herald
// and the bridge watch each other. When a watched companion's process ends while the controller
// still runs, it is started again at once, on its desktop and with its number, and told which
// controller it serves.

#include <cstdint>

#include "diagnostics/err_log.h"
#include "resident/companion_args.h"
#include "resident/controller_process.h"
#include "resident/wait_loop.h"
#include "shared/signals.h"
#include "signals/shared_state.h"
#include "vocabulary/programs.h"

namespace zk::companion {

// Puts this companion's process id into its slot and tells its watcher.
void AnnounceSelf(KernelApi& os, SharedState& state, Signals& signals, int slot);

class Watchdog {
  public:
    // Watches `program` N; its wakes in `set` are {wakeKind, 0} (the companion announced itself)
    // and {wakeKind, 1} (its process ended).
    Watchdog(Os& os, SharedState& state, Signals& signals, ControllerProcess& controller,
             Program program, int desk, WaitSet& set, int wakeKind);

    void Woken(const Wake& wake);

  private:
    void Watch(std::uint32_t processId);
    void Restart();

    Os& os_;
    SharedState& state_;
    ControllerProcess& controller_;
    Program program_;
    int desk_;
    int slot_;
    WaitSet& set_;
    int wakeKind_;
    std::uint32_t watched_ = 0;
    UniqueKernelHandle process_;
    int restarts_ = 0;
    std::uint64_t firstRestart_ = 0;
    bool gaveUp_ = false;
};

}  // namespace zk::companion
