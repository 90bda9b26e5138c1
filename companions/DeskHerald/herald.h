#pragma once
// DeskHerald N (N = 1 to 4), on desktop N: the desktop's banner and tray icon, and its start-up
// programs. It keeps the desktop's switcher running (on desktops 2 to 4 the switcher keeps it in
// turn); the herald of desktop 1 and the bridge keep each other running. What it shows is drawn
// by its shell; what a click means is decided here.

#include <array>
#include <optional>

#include "DeskHerald/news_watch.h"
#include "DeskHerald/tray_menu.h"
#include "resident/controller_process.h"
#include "resident/desktop_shower.h"
#include "resident/hotkey_stand_in.h"
#include "resident/switch_guard.h"
#include "resident/wait_loop.h"
#include "resident/watchdog.h"
#include "settings/registry.h"
#include "shared/settings_watch.h"
#include "shared/shown_desktop.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

class Herald {
  public:
    // What the window side does for the herald.
    class Shell {
      public:
        virtual ~Shell() = default;
        virtual void ShowBanner(const Text& name) = 0;
        // The desktop has just been shown: a pointer already over the tray icon (the wheel
        // turned on the desktop before) may turn the wheel on.
        virtual void Arrived() = 0;
        // The tray icon's tooltip may have changed (a setting, a missing program).
        virtual void TrayChanged() = 0;
        // Asks the user; true for yes, false for no, nothing to cancel.
        virtual std::optional<bool> Ask(const Text& question) = 0;
        // Tells the user what went wrong with what they asked for.
        virtual void Tell(const Text& message) = 0;
        // Whether to have the system report the desktop's windows (WindowsChanged): only while
        // news is on.
        virtual void WatchWindows(bool on) = 0;
        // The window that holds the hotkeys while the switcher starts again.
        [[nodiscard]] virtual Hwnd HotKeyWindow() = 0;
    };
    enum WakeKind {
        kShown = 1,
        kControllerEnded,
        kWatchPilot,
        kWatchBridge,
        kSettingsChanged,
        kNewsElsewhere
    };

    Herald(Os& os, int desk, ControllerProcess& controller, Shell& shell);

    // Starts the desktop's programs (desktops 2 to 4) and notes missing companion programs.
    void Start();
    void Run();
    bool Woken(const Wake& wake);

    [[nodiscard]] Text Tooltip();
    [[nodiscard]] std::vector<TrayMenuItem> Menu();
    // Whether another desktop has news, which the icon marks.
    [[nodiscard]] bool HasNews() { return !News().empty(); }
    void Command(TrayCommand command);
    // The icon's own click: the preview of this desktop.
    void Preview();
    // The wheel turned over the icon: the next desktop or the one before, from this one.
    void ShowInOrder(bool next);
    // A hotkey pressed while the herald holds them for its switcher.
    void HotKey(int id) { standIn_.HotKey(id); }
    // The banner went away: whether to look, every SwitchGuard::kLookEvery, that the input stays
    // here (LookAfterBanner: whether to go on looking).
    [[nodiscard]] bool BannerGone() { return guard_.Watch(desk_); }
    [[nodiscard]] bool LookAfterBanner() { return guard_.Look(); }

    [[nodiscard]] std::vector<TrayNews> News();
    // The shell saw the desktop's windows change (one came, went, or was shown or hidden), or
    // `flashed` ask for attention: the herald looks for news a moment later.
    void WindowsChanged(Hwnd flashed = nullptr);
    [[nodiscard]] WaitSet& Set() { return set_; }

    // Whether this desktop is the one the system shows now.
    [[nodiscard]] bool DesktopShown() { return shown_.Now() == desk_; }

  private:
    void NoteMissingPrograms();
    void GoToNews(std::size_t position);
    void Greet();
    [[nodiscard]] bool WentHere();
    void StartProgram(Program program);

    Os& os_;
    int desk_;
    Shell& shell_;
    Registry registry_;
    Signals signals_;
    SharedState state_;
    ShownDesktop shown_;
    DesktopShower shower_;
    SwitchGuard guard_;
    SettingsWatch settings_;
    HotKeyStandIn standIn_;
    WaitSet set_;
    std::optional<Watchdog> pilot_;
    std::optional<Watchdog> bridge_;
    NewsWatch news_;
    std::uint32_t missingShown_ = 0;
};

}  // namespace zk::companion
