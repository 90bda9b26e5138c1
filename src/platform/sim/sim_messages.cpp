#include "platform/sim/sim_messages.h"

#include <algorithm>

namespace zk::sim {
namespace {

constexpr std::uint32_t kErrorInvalidTimerHandle = 1402;

}  // namespace

SimMessages::SimMessages(Session& session, SimWindows& windows)
    : session_(session), windows_(windows) {
    session_.onWindowDestroyed.push_back([this](Hwnd window) {
        std::erase_if(queue_, [&](const Msg& m) { return m.hwnd == window; });
        std::erase_if(timers_, [&](const auto& t) { return t.first.first == HandleValue(window); });
    });
    session_.onProcessEnd.push_back([this] {
        queue_.clear();
        timers_.clear();
    });
}

bool SimMessages::PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (session_.Enter("PostMessageW", Hex(window) + " " + std::to_string(message))) return false;
    if (window != nullptr && windows_.Find(window) == nullptr) {
        session_.last = ErrorInvalidWindowHandle;
        return false;
    }
    queue_.push_back(Msg{window, message, wParam, lParam});
    return true;
}

int SimMessages::GetMessageW(Msg& message) {
    (void)session_.Enter("GetMessageW");
    if (!queue_.empty()) {
        message = queue_.front();
        queue_.pop_front();
        return 1;
    }
    if (quitCode_) {
        message = Msg{nullptr, WmQuit, static_cast<Wparam>(*quitCode_), 0};
        quitCode_.reset();
        return 0;
    }
    throw MessageQueueIdle{};
}

bool SimMessages::PeekMessageW(Msg& message) {
    (void)session_.Enter("PeekMessageW");
    if (!queue_.empty()) {
        message = queue_.front();
        queue_.pop_front();
        return true;
    }
    if (quitCode_) {
        message = Msg{nullptr, WmQuit, static_cast<Wparam>(*quitCode_), 0};
        quitCode_.reset();
        return true;
    }
    return false;
}

bool SimMessages::TranslateMessage(const Msg& message) {
    (void)session_.Enter("TranslateMessage", std::to_string(message.message));
    return false;  // no character messages: the simulated keyboard types no text
}

Lresult SimMessages::DispatchMessageW(const Msg& message) {
    (void)session_.Enter("DispatchMessageW", std::to_string(message.message));
    return message.hwnd == nullptr
               ? 0
               : windows_.Deliver(message.hwnd, message.message, message.wParam, message.lParam);
}

void SimMessages::PostQuitMessage(int exitCode) {
    (void)session_.Enter("PostQuitMessage", std::to_string(exitCode));
    quitCode_ = exitCode;
}

// A signalled object ends the wait; an auto-reset event or a mutex is taken by it.
bool SimMessages::TakeSignal(Handle handle, std::uint32_t& result, std::uint32_t position) {
    const auto signalled = session_.TakeSignal(handle);
    if (signalled && !*signalled) return false;
    result = signalled ? WaitObject0 + position : WaitFailed;
    return true;
}

std::uint32_t SimMessages::MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                                     std::uint32_t milliseconds,
                                                     std::uint32_t wakeMask) {
    if (session_.Enter("MsgWaitForMultipleObjects", std::to_string(handles.size()) + " " +
                                                        std::to_string(milliseconds) + " " +
                                                        Hex(wakeMask))) {
        return WaitFailed;
    }
    const auto count = static_cast<std::uint32_t>(handles.size());
    auto ready = [&](std::uint32_t& result) {
        for (std::uint32_t i = 0; i < count; ++i) {
            if (TakeSignal(handles[i], result, i)) return true;
        }
        if (!queue_.empty() || quitCode_) {
            result = WaitObject0 + count;
            return true;
        }
        return false;
    };
    std::uint32_t result = WaitTimeout;
    if (ready(result)) return result;
    if (milliseconds == Infinite) throw MessageQueueIdle{};
    AdvanceTime(milliseconds);
    return ready(result) ? result : WaitTimeout;
}

std::uintptr_t SimMessages::SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) {
    if (session_.Enter("SetTimer", Hex(window) + " " + std::to_string(id) + " " +
                                       std::to_string(milliseconds))) {
        return 0;
    }
    if (windows_.Find(window) == nullptr) {
        session_.last = ErrorInvalidWindowHandle;
        return 0;
    }
    timers_[{HandleValue(window), id}] = Timer{milliseconds, session_.tickCount + milliseconds};
    return id;
}

bool SimMessages::KillTimer(Hwnd window, std::uintptr_t id) {
    if (session_.Enter("KillTimer", Hex(window) + " " + std::to_string(id))) return false;
    if (timers_.erase({HandleValue(window), id}) == 0) {
        session_.last = kErrorInvalidTimerHandle;
        return false;
    }
    std::erase_if(queue_, [&](const Msg& m) {
        return m.hwnd == window && m.message == WmTimer && m.wParam == id;
    });
    return true;
}

void SimMessages::AdvanceTime(std::uint64_t milliseconds) {
    session_.tickCount += milliseconds;
    for (auto& [key, timer] : timers_) {
        if (timer.due > session_.tickCount) continue;
        timer.due = session_.tickCount + timer.interval;
        const Hwnd window = HandleFrom<Hwnd>(key.first);
        const std::uintptr_t id = key.second;
        // A timer has at most one WM_TIMER waiting, as the system's do.
        const bool waiting = std::any_of(queue_.begin(), queue_.end(), [&](const Msg& m) {
            return m.hwnd == window && m.message == WmTimer && m.wParam == id;
        });
        if (!waiting) queue_.push_back(Msg{window, WmTimer, id, 0});
    }
}

std::optional<int> SimMessages::RunMessageLoop(const std::function<int()>& loop) {
    try {
        return loop();
    } catch (const MessageQueueIdle&) {
        return std::nullopt;
    }
}

}  // namespace zk::sim
