#pragma once
// The names of the kernel objects one copy of Zelkova2 shares among its programs, besides the 54
// signals, whose names are fixed (event_names.h). Each is "Local\Zelkova2.<what>.<the controller's
// process id>", and ".<desktop or slot>" where there is one for each: a second copy's programs
// never meet the first's.

#include <cstdint>

#include "support/text.h"

namespace zk {

enum class SharedObject {
    State,     // the companions' block (shared_state.h)
    Up,        // a companion has put its process id in its slot; by slot
    InStep,    // the record was brought in step with the screen: the bridge tells the controller
    WhichKey,  // a switcher asks the one of the desktop shown which key is held; by desktop
    Shown,     // a switcher: its desktop has been shown; by desktop
    News,      // a herald: a window opened on another desktop; by desktop
    BringForward,  // a switcher: bring the window the finder chose to the front; by desktop
    Finder,        // a switcher: open the finder; by desktop
    LetGo,         // a herald lets go of the hotkeys it held while its switcher started; by desktop
    Thumbnail,     // the picture of a desktop; by desktop
    Reloaded,      // the bridge has passed a reload on to the controller and the switchers
};

// `number` is the desktop or the slot, for the objects there is one of for each.
[[nodiscard]] Text SharedObjectName(SharedObject object, std::uint32_t controllerId,
                                    int number = 0);

}  // namespace zk
