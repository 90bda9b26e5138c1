#pragma once
// A hotkey held down: the keyboard repeats its key, and every repeat that reaches Zelkova2 (the
// controller's registration repeats, and under Wine every one does) would switch again; a held
// "previous" would go back and forth. A repeat is the same key again while it is held, sooner
// after the last arrival than the keyboard's delay (after a press) or its interval (after a
// repeat) gives, with a little more for the way to the switcher. The switchers share the record,
// as a repeat may reach the switcher of the desktop just shown.

#include <cstdint>
#include <span>

#include "platform/api/hotkey_api.h"
#include "platform/api/kernel_api.h"
#include "signals/shared_state.h"

namespace zk::companion {

class KeyRepeat {
  public:
    KeyRepeat(HotKeyApi& keyboard, KernelApi& clock, SharedState& state);

    // Records an arrival of a hotkey whose key is one of `keys` (at most two; the held one
    // counts); whether it is a repeat of the last one.
    [[nodiscard]] bool IsRepeat(std::span<const std::int16_t> keys);

  private:
    HotKeyApi& keyboard_;
    KernelApi& clock_;
    SharedState& state_;
    std::uint64_t delay_ = 500;     // milliseconds before a held key repeats
    std::uint64_t interval_ = 100;  // milliseconds between repeats
};

}  // namespace zk::companion
