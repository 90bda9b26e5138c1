#pragma once
// The simulated thread's message queue: posted messages, timers, quitting, and waits that end on
// a kernel object or on a message. Time passes only when a test lets it (AdvanceTime) or a wait
// with a timeout runs out.

#include <deque>
#include <map>

#include "platform/api/message_api.h"
#include "platform/sim/session.h"
#include "platform/sim/sim_windows.h"

namespace zk::sim {

class SimMessages : public virtual MessageApi {
  public:
    SimMessages(Session& session, SimWindows& windows);

    bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    int GetMessageW(Msg& message) override;
    bool PeekMessageW(Msg& message) override;
    bool TranslateMessage(const Msg& message) override;
    Lresult DispatchMessageW(const Msg& message) override;
    void PostQuitMessage(int exitCode) override;
    std::uint32_t MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                            std::uint32_t milliseconds,
                                            std::uint32_t wakeMask) override;
    std::uintptr_t SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) override;
    bool KillTimer(Hwnd window, std::uintptr_t id) override;

    // ----- for the other parts of the session
    void Post(const Msg& message) { queue_.push_back(message); }

    // ----- driving from a test
    [[nodiscard]] std::size_t QueuedMessageCount() const { return queue_.size(); }
    // Lets time pass: the clock moves on and timers that come due post WM_TIMER.
    void AdvanceTime(std::uint64_t milliseconds);
    // Runs `loop` (a message loop of the program) until it returns or nothing is left to do;
    // returns its result, or nothing if it went idle.
    std::optional<int> RunMessageLoop(const std::function<int()>& loop);

  private:
    struct Timer {
        std::uint32_t interval;
        std::uint64_t due;
    };
    bool TakeSignal(Handle handle, std::uint32_t& result, std::uint32_t position);

    Session& session_;
    SimWindows& windows_;
    std::deque<Msg> queue_;
    std::optional<int> quitCode_;
    std::map<std::pair<std::intptr_t, std::uintptr_t>, Timer> timers_;
};

}  // namespace zk::sim
