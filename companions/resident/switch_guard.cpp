#include "resident/switch_guard.h"

#include "vocabulary/desktops.h"

namespace zk::companion {

SwitchGuard::SwitchGuard(KernelApi& clock, DesktopShower& shower, SharedState& state,
                         ShownDesktop& shown)
    : clock_(clock), shower_(shower), state_(state), shown_(shown) {}

bool SwitchGuard::Watch(int target) {
    target_ = 0;
    if (!IsDesktopNumber(target)) return false;
    // Asked until the answer is yes, which holds for good: three calls to the system on the way
    // of every switch took the processors from the switch's end on a busy machine.
    if (!shown_.SystemSwitches() && shown_.InputDesk() != target) return false;
    target_ = target;
    since_ = clock_.GetTickCount64();
    keyTick_ = state_.Block().hotKeyTick;
    return true;
}

bool SwitchGuard::Look() {
    if (target_ == 0) return false;
    // The user, or a program, has moved on: a key arrived, or the record says another desktop.
    const bool movedOn = state_.Block().hotKeyTick != keyTick_ || state_.Current() != target_;
    if (movedOn || clock_.GetTickCount64() - since_ > kWatchFor) {
        target_ = 0;
        return false;
    }
    // Where the system does not switch desktops, showing the target again changes nothing.
    if (const int shown = shown_.InputDesk(); shown == target_ || shown == 0) return true;
    (void)shower_.Show(target_);
    target_ = 0;
    return false;
}

void OnceShown(KernelApi& clock, WaitSet& set, SharedState& state, ShownDesktop& shown, int desk,
               const std::function<void()>& arrived, int key, std::uint64_t since) {
    if (shown.Now() == desk) {
        arrived();
    } else if (state.Current() == desk && clock.GetTickCount64() - since < SwitchGuard::kWatchFor) {
        set.Later(
            clock, SwitchGuard::kLookEvery,
            [&clock, &set, &state, &shown, desk, arrived, key, since] {
                OnceShown(clock, set, state, shown, desk, arrived, key, since);
            },
            key);
    }
}

}  // namespace zk::companion
