#pragma once
// The floors that Zelkova2's switch is measured against, each doing the system work of a way to a
// shown desktop and nothing else:
//   - the single window: a window that shows desk2 on its own hotkey (Ctrl+Alt+Num 5);
//   - the chain: the hops the controller's design fixes. On Ctrl+Alt+Num 6 the window reads three
//     properties and sets a named event; a second process, woken by it, sends the window a
//     WM_COPYDATA; the window reads three properties and shows desk2;
//   - the chain with the bridge's hop: on Ctrl+Alt+Num 7 the event wakes a process that sets
//     another event, and the process woken by that one sends the WM_COPYDATA.
// The bare window without hotkeys is the floor of the round trip, the start and the memory.

#include <windows.h>

#include <vector>

namespace zk::bench {

// Keys of the keypad, as Zelkova2's are: under Wine 10 they take a little longer than others.
inline constexpr WORD kSingleKey = VK_NUMPAD5;
inline constexpr WORD kChainKey = VK_NUMPAD6;
inline constexpr WORD kChainAndBridgeKey = VK_NUMPAD7;
// The floor's window in the controller's place: on this key it sets desk1's switcher's signal.
inline constexpr WORD kSwitcherSignalKey = VK_NUMPAD8;

// The bare window's process; with `floors`, it holds the three floors' hotkeys.
int Bare(bool floors);
// A relay of the chain: waits for event `from` and sets event `to`, or sends the floor's window
// its WM_COPYDATA when `to` is "window".
int Relay(const wchar_t* from, const wchar_t* to);

// The floors' window and relays, each a process of its own, running beside Zelkova2 while this
// lives.
class Floors {
  public:
    Floors();
    ~Floors();
    Floors(const Floors&) = delete;
    Floors& operator=(const Floors&) = delete;
    [[nodiscard]] bool Ready() const { return ready_; }

  private:
    std::vector<HANDLE> processes_;
    bool ready_ = false;
};

}  // namespace zk::bench
