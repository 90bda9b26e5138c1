#pragma once
// DeskPilot N, the switcher of desktop N. A switch asked for on desktop N (by the controller's
// signal, or by its own hotkey where the system lets it hold one) is shown at once by the switcher
// itself and then goes to the controller as a switch command, which keeps its record and makes
// the switch if the switcher could not: through the bridge, or on desktop 1 straight to the
// controller's window; nothing else is done first. The preview of the four desktops opens on its
// signal or hotkey. Pictures of the desktop are taken off that path: a moment after the desktop has
// been shown, again every half minute while it stays shown, and just before the preview opens.
// On desktops 2 to 4 it keeps the desktop's herald running, as that herald keeps it (on desktop
// 1 the bridge keeps the herald).

#include <memory>
#include <optional>

#include "hotkeys/hotkeys.h"
#include "resident/controller_process.h"
#include "resident/desktop_shower.h"
#include "resident/key_repeat.h"
#include "resident/own_desktop.h"
#include "resident/switch_guard.h"
#include "resident/wait_loop.h"
#include "resident/watchdog.h"
#include "settings/registry.h"
#include "shared/companion_hotkeys.h"
#include "shared/controller_link.h"
#include "shared/shown_desktop.h"
#include "shared/signals.h"
#include "shared/window_finder.h"
#include "signals/shared_state.h"

namespace zk::companion {

class Pilot {
  public:
    // What the window side does for the switcher.
    // The companions' shared state, for the views to read the news from.
    [[nodiscard]] const SharedBlock& Block() { return state_.Block(); }

    class Shell {
      public:
        virtual ~Shell() = default;
        virtual void ShowPreview() = 0;
        virtual void HidePreview() = 0;
        // Leaving this desktop: the preview and the finder, where open, go out of sight but stay
        // shown (window_base.h says why); hidden once the desktop is shown again.
        virtual void PutAway() = 0;
        virtual void HidePutAway() = 0;
        [[nodiscard]] virtual bool PreviewShown() = 0;
        // Takes a picture of what the desktop shows.
        virtual void Capture() = 0;
        // Opens the window finder on this desktop.
        virtual void ShowFinder() = 0;
    };
    enum WakeKind {
        kSwitchTo = 1,
        kPreview,
        kReadReg,
        kShutdown,
        kShown,
        kControllerEnded,
        kWatchHerald,
        kFinder,
        kBringForward,
        kWhichKey
    };
    enum Timer : std::uintptr_t { kCaptureSoon = 1, kCaptureAgain = 2, kGuardSwitch = 3 };
    // The first picture waits until the herald's banner (shown for a second) has gone.
    static constexpr std::uint32_t kMoment = 1500;
    static constexpr std::uint32_t kHalfMinute = 30000;

    // `window` is the switcher's own window on desktop N: it holds the hotkeys and timers.
    Pilot(Os& os, int desk, ControllerProcess& controller, Hwnd window, Shell& shell);
    ~Pilot();
    Pilot(const Pilot&) = delete;
    Pilot& operator=(const Pilot&) = delete;

    void Run();
    bool Woken(const Wake& wake);
    void HotKey(int id);
    void TimerFired(std::uintptr_t id);
    // The shell saw this desktop's windows change: while it is shown, a picture follows a
    // moment later, and at most every half minute. At rest nothing is taken.
    void WindowsChanged();
    // The session is about to end (a log-off): on desktop 1 the switcher shows it first, so that
    // what asks the user before the end is seen, and a cancelled log-off leaves the user there.
    void SessionEnding();
    // Shows desktop `target` and asks the controller, through the bridge, to show it.
    void RequestSwitch(int target);
    // What the finder chose: its desktop is shown and the window brought to the front there.
    void ShowFound(const FoundWindow& found);

    [[nodiscard]] const HotKeyFields& HotKeysHeld() const { return fields_; }
    [[nodiscard]] WaitSet& Set() { return set_; }

  private:
    // The desktop shown, with the controller's record brought in step with it first; where this
    // desktop is known to be shown (a key typed here), that one.
    int InStep();
    void BringInStep(int desk);
    // The desktop shown when the controller signals its hotkey.
    int ControllersKeyShown();
    [[nodiscard]] bool OwnHotKeys() const;
    [[nodiscard]] bool SendNow(int desk);
    void CompanionHotKey(int id);
    void AnswerKeyQuestion();
    void OpenFinderOn(int shown);
    bool RepeatOf(std::initializer_list<int> ids);
    void NoteMissingHerald();
    void ReportRefusedHotKeys();
    void OpenPreview();
    void TakePicture();

    Os& os_;
    int desk_;
    OwnDesktop ownDesktop_;
    DesktopShower shower_;
    Hwnd window_;
    Shell& shell_;
    Registry registry_;
    Signals signals_;
    SharedState state_;
    ShownDesktop shown_;
    WaitSet set_;
    HotKeyFields fields_;
    HotKeys hotkeys_;
    CompanionHotKeys companionHotKeys_;
    KeyRepeat keyRepeat_;
    SwitchGuard guard_;
    std::optional<Watchdog> herald_;
    std::uint64_t lastPicture_ = 0;
    bool pictureDue_ = false;
    // On the controller's own desktop a switch goes straight to its window: one process less on
    // the way than through the bridge.
    std::optional<ControllerLink> direct_;
};

}  // namespace zk::companion
