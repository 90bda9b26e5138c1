#include "resident/wait_loop.h"

#include <algorithm>
#include <iterator>
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

void WaitSet::Later(KernelApi& clock, std::uint32_t milliseconds, std::function<void()> action,
                    int key) {
    clock_ = &clock;
    std::erase_if(later_, [key](const Pending& p) { return p.key == key; });
    later_.push_back({key, clock.GetTickCount64() + milliseconds, std::move(action)});
}

std::uint32_t WaitSet::Timeout() const {
    if (later_.empty()) return Infinite;
    const std::uint64_t now = clock_->GetTickCount64();
    std::uint64_t first = later_.front().at;
    for (const Pending& p : later_)
        first = std::min(first, p.at);
    return now >= first ? 0 : static_cast<std::uint32_t>(first - now);
}

void WaitSet::RunLater() {
    if (later_.empty()) return;
    const std::uint64_t now = clock_->GetTickCount64();
    // An action may ask for another under its own key: the due ones leave the list first.
    const auto waiting = std::stable_partition(later_.begin(), later_.end(),
                                               [now](const Pending& p) { return p.at > now; });
    std::vector<Pending> due(std::make_move_iterator(waiting),
                             std::make_move_iterator(later_.end()));
    later_.erase(waiting, later_.end());
    for (const Pending& p : due)
        p.action();
}

void RunWaitLoop(MessageApi& os, WaitSet& set, const std::function<bool(Wake)>& woken) {
    for (;;) {
        set.RunLater();
        const auto& handles = set.Handles();
        const auto count = static_cast<std::uint32_t>(handles.size());
        const std::uint32_t result =
            os.MsgWaitForMultipleObjects(handles, set.Timeout(), QsAllInput);
        if (result == WaitTimeout) continue;
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
