#pragma once
// DeskHerald 5, the bridge, beside the controller on desktop 1. Window messages do not cross
// desktops but named events do: it turns each signal of the controller's block into the
// WM_COPYDATA command of the same name for its own controller. It brings the controller's record
// in step with the system when a companion asks it to (ahead of the commands that follow), tells a
// desktop's herald and switcher when their desktop is shown, and tells the switchers to read
// their hotkeys again after a reload. It keeps the herald of desktop 1 running, as that one keeps
// the bridge.

#include <optional>

#include "resident/controller_process.h"
#include "resident/switch_notice.h"
#include "resident/wait_loop.h"
#include "resident/watchdog.h"
#include "shared/controller_link.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

class Bridge {
  public:
    enum WakeKind { kInStep = 1, kCommand, kControllerEnded, kWatch };

    Bridge(Os& os, ControllerProcess& controller);

    // Waits for commands until the controller ends or is shut down.
    void Run();
    // One command signal, 49 to 54: false once the controller was told to shut down.
    bool Command(std::int16_t index);
    bool Woken(const Wake& wake);

    [[nodiscard]] WaitSet& Set() { return set_; }

  private:
    Os& os_;
    Signals signals_;
    SharedState state_;
    ControllerLink link_;
    WaitSet set_;
    std::optional<Watchdog> herald_;
};

}  // namespace zk::companion
