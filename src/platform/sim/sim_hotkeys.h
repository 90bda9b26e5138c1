#pragma once
// The simulated hotkey table and keyboard input. Whether a hotkey belongs to the whole session
// or only to the desktop of the window that registered it is not settled for Windows (Wine 10
// scopes it to the desktop); the part models both, and tests choose.

#include <set>

#include "platform/api/hotkey_api.h"
#include "platform/sim/session.h"
#include "platform/sim/sim_messages.h"
#include "platform/sim/sim_windows.h"

namespace zk::sim {

enum class HotKeyScope { Session, Desktop };

class SimHotKeys : public virtual HotKeyApi {
  public:
    SimHotKeys(Session& session, SimWindows& windows, SimMessages& messages);

    std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                std::uint32_t virtualKey) override;
    bool UnregisterHotKey(Hwnd window, int id) override;
    // Input reaches the input desktop only from a thread of that desktop (else error 5).
    std::uint32_t SendInput(std::span<const KeyInput> keys) override;
    std::int16_t GetAsyncKeyState(int virtualKey) override;
    // The keyboard's settings: the delay before a held key repeats is 1 (500 ms), the speed 31
    // (about 30 repeats a second), as Windows sets them.
    bool SystemParametersInfoW(std::uint32_t action, std::uint32_t& value) override;

    // ----- driving from a test
    void SetHotKeyScope(HotKeyScope scope) { scope_ = scope; }
    // The user clicks a window of the simulated process: the last input went to it.
    void ClickProgramWindow() { session_.hasLastInput = true; }
    // The user started the simulated process from the shell, the foreground process.
    void StartFromTheShell() { session_.startedByForeground = true; }
    // Another process holds a combination, with a window on the named desktop (the input
    // desktop if none); false when the system refuses it.
    bool HoldHotKeyInOtherProcess(std::uint32_t modifiers, std::uint32_t virtualKey,
                                  std::optional<Text> desktop = std::nullopt);
    [[nodiscard]] bool IsHotKeyRegistered(std::uint32_t modifiers, std::uint32_t virtualKey) const;
    [[nodiscard]] std::size_t RegisteredHotKeyCount() const { return hotkeys_.size(); }
    // The user presses a combination on the input desktop; true if a registration took it
    // (WM_HOTKEY is posted when it is one of the simulated process's).
    bool PressHotKey(std::uint32_t modifiers, std::uint32_t virtualKey);
    // The user presses a combination and keeps it down: as PressHotKey, then the keys stay held
    // (GetAsyncKeyState) until ReleaseKeys. RepeatHeldKey is the keyboard repeating the key
    // after `milliseconds`: another WM_HOTKEY unless the registration asked for MOD_NOREPEAT
    // (RegisterHotKey, Remarks).
    bool HoldHotKey(std::uint32_t modifiers, std::uint32_t virtualKey);
    void RepeatHeldKey(std::uint64_t milliseconds);
    void ReleaseKeys();

  private:
    struct HotKey {
        Hwnd window;
        int id;
        std::uint32_t modifiers;
        std::uint32_t virtualKey;
        std::uint32_t processId;
        int desktop;
    };
    [[nodiscard]] bool Conflicts(std::uint32_t modifiers, std::uint32_t virtualKey,
                                 int desktop) const;
    // The registration a combination typed now reaches, if any.
    [[nodiscard]] const HotKey* Holder(std::uint32_t modifiers, std::uint32_t virtualKey) const;
    void Deliver(const HotKey& hotkey, std::uint32_t modifiers);

    Session& session_;
    SimWindows& windows_;
    SimMessages& messages_;
    HotKeyScope scope_ = HotKeyScope::Session;
    std::vector<HotKey> hotkeys_;
    std::uint32_t heldModifiers_ = 0;
    std::set<std::uint32_t> heldKeys_;  // not modifiers
};

}  // namespace zk::sim
