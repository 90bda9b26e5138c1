#include "resident/wait_loop.h"

#include <algorithm>
#include <utility>

namespace zk::companion {

void WaitSet::Add(Handle handle, Wake wake) {
    handles_.push_back(handle);
    wakes_.push_back(wake);
}

void WaitSet::Replace(Wake wake, Handle handle) {
    const auto it = std::find(wakes_.begin(), wakes_.end(), wake);
    if (it == wakes_.end()) {
        Add(handle, wake);
        return;
    }
    handles_[static_cast<std::size_t>(it - wakes_.begin())] = handle;
}

void WaitSet::Remove(Wake wake) {
    const auto it = std::find(wakes_.begin(), wakes_.end(), wake);
    if (it == wakes_.end()) return;
    handles_.erase(handles_.begin() + (it - wakes_.begin()));
    wakes_.erase(it);
}

void WaitSet::Later(KernelApi& clock, std::uint32_t milliseconds, std::function<void()> action) {
    clock_ = &clock;
    later_ = std::move(action);
    laterAt_ = clock.GetTickCount64() + milliseconds;
}

std::uint32_t WaitSet::Timeout() const {
    if (!later_) return Infinite;
    const std::uint64_t now = clock_->GetTickCount64();
    return now >= laterAt_ ? 0 : static_cast<std::uint32_t>(laterAt_ - now);
}

void WaitSet::RunLater() {
    if (!later_ || Timeout() > 0) return;
    const std::function<void()> action = std::move(later_);
    later_ = nullptr;
    action();
}

void RunWaitLoop(MessageApi& os, WaitSet& set, const std::function<bool(Wake)>& woken) {
    for (;;) {
        const auto& handles = set.Handles();
        const auto count = static_cast<std::uint32_t>(handles.size());
        const std::uint32_t result =
            os.MsgWaitForMultipleObjects(handles, set.Timeout(), QsAllInput);
        if (result == WaitTimeout) {
            set.RunLater();
            continue;
        }
        if (result == WaitObject0 + count) {
            Msg message;
            while (os.PeekMessageW(message)) {
                if (message.message == WmQuit) return;
                (void)os.TranslateMessage(message);
                (void)os.DispatchMessageW(message);
            }
            continue;
        }
        std::uint32_t position = result - WaitObject0;
        if (result >= WaitAbandoned0 && result < WaitAbandoned0 + count) {
            position = result - WaitAbandoned0;
        } else if (result >= WaitObject0 + count) {
            return;  // the wait failed
        }
        if (!woken(set.At(position))) return;
    }
}

}  // namespace zk::companion
