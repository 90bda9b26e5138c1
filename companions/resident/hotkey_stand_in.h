#pragma once
// While the switcher of a desktop is started again (a second or two, more on a busy machine),
// its herald holds the desktop's hotkeys in its place, where the system lets a desktop's programs
// hold them, so that a key typed in the gap is carried out and not lost: a switch is asked for
// and shown as the switcher shows it, and a preview opens once the switcher is back. The new
// switcher waits for the herald to let the hotkeys go before it takes them.

#include <optional>

#include "hotkeys/hotkeys.h"
#include "resident/desktop_shower.h"
#include "resident/key_repeat.h"
#include "settings/registry.h"
#include "shared/shown_desktop.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

class HotKeyStandIn {
  public:
    HotKeyStandIn(Os& os, Registry& registry, Signals& signals, SharedState& state, int desk);
    ~HotKeyStandIn();

    // The switcher has ended: the hotkeys it held are taken, on `window`.
    void SwitcherEnded(Hwnd window);
    // The switcher is back: the hotkeys are let go, for it to take.
    void SwitcherBack();
    // A hotkey held here was pressed.
    void HotKey(int id);

  private:
    void LetGo();

    Os& os_;
    Registry& registry_;
    Signals& signals_;
    SharedState& state_;
    ShownDesktop shown_;
    int desk_;
    HotKeyFields fields_{};
    std::optional<HotKeys> hotkeys_;
    KeyRepeat keyRepeat_;
    DesktopShower shower_;
    bool previewAsked_ = false;
};

// The switcher's side: before it takes the hotkeys, it waits (a moment at most) for its herald
// to let them go.
void WaitForStandInToLetGo(KernelApi& os, Signals& signals, SharedState& state, int desk);

}  // namespace zk::companion
