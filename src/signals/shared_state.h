#pragma once
// What the companions of one controller share, in a small block of named memory that lives as
// long as one of them holds it:
//   - the controller's record of the desktop shown and the one before it, which it publishes
//     as it changes (and a companion ahead of it, as it sends a command), and whether the system
//     has been seen to switch desktops (what companions/shared/shown_desktop.h reads to say which
//     desktop the user sees);
//   - the process ids of the companions, so that neighbours can watch each other and the
//     controller can let the switcher it signals take the foreground;
//   - the companion programs found missing, for every tray to show;
//   - the last hotkey that reached a switcher, to tell a key held down from a new press;
//   - the hotkeys the controller holds, for the tools to show what is in force;
//   - which heralds hold their desktop's hotkeys while its switcher starts again.

#include <cstdint>

#include "platform/handles.h"
#include "vocabulary/desktops.h"
#include "vocabulary/hotkey_table.h"

namespace zk {

// The companions, by slot: the switchers of the desktops, then their heralds, then the bridge.
inline constexpr int kCompanionSlots = 2 * kDesktopCount + 1;
[[nodiscard]] constexpr int PilotSlot(int desk) {
    return desk - 1;
}
[[nodiscard]] constexpr int HeraldSlot(int desk) {
    return kDesktopCount - 1 + desk;  // the bridge, desk 5, takes the last slot
}

// The windows of a desktop the user has not seen yet, at the most.
inline constexpr int kNewsPerDesktop = 4;

inline constexpr std::uint32_t kPilotMissing = 1;
inline constexpr std::uint32_t kHeraldMissing = 2;
inline constexpr std::uint32_t kMissingLogged = 4;  // the log has been told once

struct SharedBlock {
    std::uint32_t controllerId;
    std::int16_t current;   // 0 until the first switch command: the controller starts on 1
    std::int16_t previous;  // 0 while there has been no switch
    // The desktop the bridge is to bring the controller's record to before the next command, 0
    // when none; and 1 once the system has shown a desktop other than "Default".
    std::int16_t inStep;
    std::uint32_t systemSwitches;
    // The target of a controller's signal that the switcher of the desktop shown is asked about:
    // did the user type that desktop's key or "previous"? 0 when none.
    std::int16_t keyQuestion;
    std::uint32_t companions[kCompanionSlots];
    std::uint32_t missing;  // kPilotMissing | kHeraldMissing | kMissingLogged
    // The last hotkey that reached a switcher: when, its key (or the keys that may have sent it,
    // where the keyboard was not asked), and how often it has repeated since it was pressed (a
    // key held down repeats).
    std::uint64_t hotKeyTick;
    std::int16_t hotKeyKeys[2];
    std::int16_t hotKeyRepeats;
    // The pairs the controller holds, by id from 1, as it last loaded or reloaded them; set once
    // hotKeysPublished is 1.
    std::int16_t hotKeyCodes[kControllerHotKeyCount];
    std::int16_t hotKeyModifiers[kControllerHotKeyCount];
    std::uint32_t hotKeysPublished;
    // Bit N: the herald of desktop N holds the hotkeys while its switcher starts again.
    std::uint32_t hotKeysStandIn;
    // 1 once a switcher of desktop 2 to 4 holds hotkeys of its own: the system gives each desktop
    // its hotkeys, and the controller's reach it only from desktop 1.
    std::uint32_t hotKeysPerDesktop;
    // A window that the finder has chosen, for the switcher of its desktop to bring to the front
    // once that desktop is shown; 0 when none is waiting.
    std::uint64_t bringForward;
    std::int16_t bringForwardDesk;
    // News: windows that came up, or asked for attention, on a desktop while it was not shown,
    // by desktop (its herald alone writes its row); 0 where there is none.
    std::uint64_t news[kDesktopCount][kNewsPerDesktop];
};

class SharedState {
  public:
    SharedState(KernelApi& os, std::uint32_t controllerId);

    // When the memory could not be had, the block reads as empty and keeps nothing.
    [[nodiscard]] SharedBlock& Block() { return *block_; }
    // The desktop shown now, as far as the companions know (1 before the first switch).
    [[nodiscard]] int Current() const { return block_->current == 0 ? 1 : block_->current; }
    [[nodiscard]] int Previous() const { return block_->previous; }
    [[nodiscard]] std::uint32_t ControllerId() const { return block_->controllerId; }
    // The controller's rule: a switch to another desktop makes the current one the previous.
    void RecordSwitch(int desk);
    // The controller's own record, as it changes.
    void PublishShown(std::int16_t current, std::int16_t previous);
    // The controller's pairs in force, for the companions and tools to read.
    void PublishHotKeys(const HotKeyFields& fields);

  private:
    UniqueKernelHandle mapping_;
    UniqueView view_;
    SharedBlock fallback_{};
    SharedBlock* block_ = &fallback_;
};

// Named memory that only this user and the system may open, as the pictures of the desktops and
// the companions' state are: a program of another user sees neither.
[[nodiscard]] Handle CreateUserOnlyMapping(KernelApi& os, std::uint32_t size, const Text& name);

}  // namespace zk
