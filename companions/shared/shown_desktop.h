#pragma once
// Which desktop the user sees: the one place that every companion asks before it acts on "the
// desktop shown" (which switcher opens the finder or the preview, where the next desktop and the
// one before lead, whether a found window's desktop must be shown, what the tray and the banner
// say).
//
// The system knows best where it can say: the input desktop, by name, once the system has been
// seen to show one of the made desktops to a program of another desktop. A system that does not
// switch desktops, as Wine 8, keeps "Default" as the input desktop whatever was asked, which then
// says nothing; Wine 8 also names a program's own desktop as the input desktop to some programs
// after a SwitchDesktop to it (a switcher started again there did), which is not taken as seen.
// Otherwise, and while the input desktop is none of the four (a lock screen, the secure desktop of
// Ctrl+Alt+Del or of an elevation prompt, another program's desktop: OpenInputDesktop is refused or
// names another), the record says: the controller's CurrentDesk and PreviousDesk, which it
// publishes in the companions' shared state.
//
// Who writes the record: the controller, as its record changes on a switch command (also one sent
// straight to its window, past every companion). A companion that finds the system showing
// another desktop than the record (moved behind our back: another program, or a take-back under
// Wine 10) brings the record in step before it acts: the record follows the system at once, and
// the controller gets the switch command for the desktop shown ahead of any command sent after
// it, and publishes its own record again. A lock screen or a secure desktop says nothing: the
// record holds until the user is back.

#include <functional>

#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

class ShownDesktop {
  public:
    ShownDesktop(Os& os, SharedState& state);

    // The desktop the user sees now, 1 to 4.
    [[nodiscard]] int Now();
    // The one seen before it, as the controller's record has it; 0 before the first switch.
    [[nodiscard]] int Previous() const { return state_.Previous(); }
    // Which of the four desktops the system shows; 0 where it cannot say.
    [[nodiscard]] int SystemShows();
    // Which of the four the system names as the input desktop now, whether or not it has been seen
    // to switch; 0 for none of them.
    [[nodiscard]] int InputDesk();
    // Whether the system has been seen to switch desktops (then it says, from then on).
    [[nodiscard]] bool SystemSwitches() const { return state_.Block().systemSwitches != 0; }
    // Before a companion acts: where the system shows another desktop than the record, the record
    // follows, and the controller is sent the switch command for it, by `sendNow` where the caller
    // talks to the controller's window itself, else by the bridge ahead of the commands that
    // follow. Returns the desktop shown.
    int InStep(Signals& signals, const std::function<bool(int desk)>& sendNow = nullptr);
    // The same for a desktop known to be shown: a key typed on it, a click on its tray icon.
    void BringInStep(int desk, Signals& signals,
                     const std::function<bool(int desk)>& sendNow = nullptr);

  private:
    DesktopApi& os_;
    SharedState& state_;
    int own_;  // the caller's own desktop, 1 to 4; 0 for another
};

// The number of the desktop of this name, 1 to 4; 0 for a desktop that is not one of them.
[[nodiscard]] int DesktopNumberOf(const Text& name);

}  // namespace zk::companion
