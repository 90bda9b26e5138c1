#pragma once
// What follows a switch command that reached the controller: the companions' record of the
// desktop shown and the one before it, and the word to the new desktop's herald (its banner)
// and switcher (its pictures). A command for the desktop shown already changes nothing, as in
// the controller.

#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

void NoteSwitch(Signals& signals, SharedState& state, int desk);

}  // namespace zk::companion
