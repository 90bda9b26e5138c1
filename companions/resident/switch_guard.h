#pragma once
// Under Wine 10 the input desktop follows the X focus, and a focus notice about the desktop just
// left can come after the switch (late, on a busy machine) and take the user back there; so can
// the end of a window on the desktop shown (the banner going away, after a window of the desktop
// left had the focus). Windows moves the input desktop only on SwitchDesktop. A switcher whose
// switch took effect, and a herald whose banner went away, therefore watch for a moment: when the
// input goes elsewhere while the record still says the target and no key has arrived since, the
// target is shown again.

#include <cstdint>
#include <functional>

#include "resident/desktop_shower.h"
#include "resident/wait_loop.h"
#include "shared/shown_desktop.h"
#include "signals/shared_state.h"

namespace zk::companion {

class SwitchGuard {
  public:
    // How often, and how long after the switch, it looks.
    static constexpr std::uint32_t kLookEvery = 50;
    static constexpr std::uint64_t kWatchFor = 300;

    SwitchGuard(KernelApi& clock, DesktopShower& shower, SharedState& state, ShownDesktop& shown);

    // After `target` was shown: whether to watch, which it does only where the system switches
    // desktops (where it does not, nothing comes back).
    [[nodiscard]] bool Watch(int target);
    // Looks once; whether to go on watching.
    [[nodiscard]] bool Look();

  private:
    KernelApi& clock_;
    DesktopShower& shower_;
    SharedState& state_;
    ShownDesktop& shown_;
    int target_ = 0;
    std::uint64_t since_ = 0;
    std::uint64_t keyTick_ = 0;
};

// Does `arrived` once the system shows `desk`, which the record names now. Right after a switch the
// input can be away for a moment (what the guard undoes): while the record still names `desk`, it
// looks again every kLookEvery until kWatchFor after `since`, under `key` in `set`; once the record
// names another desktop, the user has moved on and nothing is done.
void OnceShown(KernelApi& clock, WaitSet& set, SharedState& state, ShownDesktop& shown, int desk,
               const std::function<void()>& arrived, int key, std::uint64_t since);

}  // namespace zk::companion
