#pragma once
// What follows a switch command that reached the controller (which has published its record): the
// word to the new desktop's herald (its banner) and switcher (its pictures) a moment later
// (kTellShownAfter), when the notifier next runs. Woken at once, they took the processors and the
// wineserver from the end of the switch itself on a busy machine (under Wine 10 the shown desktop
// came about 0.35 ms later); a desktop shown only in passing is not told at all. A command for the
// desktop shown already changes nothing, as in the controller.

#include "resident/wait_loop.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

inline constexpr std::uint32_t kTellShownAfter = 20;  // milliseconds

// `wasShown`: the desktop the controller's record named before the command.
void NoteSwitch(Signals& signals, WaitSet& set, KernelApi& clock, std::uint32_t controllerId,
                int desk, int wasShown);

}  // namespace zk::companion
