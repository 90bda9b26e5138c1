#pragma once
// How a companion spends its life: waiting, without polling, on its events, its neighbours'
// processes and the controller's process, while its windows get their messages.

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/api/kernel_api.h"
#include "platform/api/message_api.h"

namespace zk::companion {

// What a handle of the wait stands for: a kind of the companion's own, and a number with it
// (a desktop, a hotkey, a position).
struct Wake {
    int kind = 0;
    int value = 0;
    friend bool operator==(const Wake&, const Wake&) = default;
};

class WaitSet {
  public:
    void Add(Handle handle, Wake wake);
    // Puts `handle` in place of the one that stands for `wake` (added if there is none).
    void Replace(Wake wake, Handle handle);
    void Remove(Wake wake);
    [[nodiscard]] const std::vector<Handle>& Handles() const { return handles_; }
    [[nodiscard]] Wake At(std::size_t position) const { return wakes_[position]; }
    // Runs `action` `milliseconds` from now, or at the first moment after; it takes the place of
    // one still waiting under the same `key`.
    void Later(KernelApi& clock, std::uint32_t milliseconds, std::function<void()> action,
               int key = 0);
    // How long the next wait may last; then the actions that were waiting, if they are due.
    [[nodiscard]] std::uint32_t Timeout() const;
    void RunLater();

  private:
    struct Pending {
        int key;
        std::uint64_t at;
        std::function<void()> action;
    };
    std::vector<Handle> handles_;
    std::vector<Wake> wakes_;
    KernelApi* clock_ = nullptr;
    std::vector<Pending> later_;
};

// Waits until a handle is signalled and calls `woken` with what it stands for; dispatches the
// thread's messages meanwhile, and runs what is due after each wake (a stream of messages or
// signals does not hold it back). Ends when `woken` returns
// false, on WM_QUIT, or when the wait fails. The set may change inside `woken`.
void RunWaitLoop(MessageApi& os, WaitSet& set, const std::function<bool(Wake)>& woken);

}  // namespace zk::companion
