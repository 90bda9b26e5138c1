#pragma once
// The herald's eye on its own desktop while the user is elsewhere: a window of the user's that
// comes up there (the finder's rules say which count), or one that asks for attention, is news
// (shared/news.h) until the user visits the desktop or the window goes. Its shell says when the
// desktop's windows change; the herald looks a moment later, once a burst of changes is over.

#include <vector>

#include "settings/registry.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

class NewsWatch {
  public:
    // How long after a change the herald looks: a program's windows come in a burst. It looks
    // once more a second later, for a window shown later than it was made (Wine 8 reports the
    // making of a window, not its showing).
    static constexpr std::uint32_t kSettle = 200;
    static constexpr std::uint32_t kLookAgain = 1000;

    NewsWatch(Os& os, Registry& registry, SharedState& state, Signals& signals, int desk);

    // The desktop is shown: what is on it now the user has seen, and its news goes.
    void Seen();
    // A window of the desktop asks for attention: news at the next look, while it is there.
    void Flashed(Hwnd window);
    // Looks at the desktop's windows again. While the desktop is shown, or with the setting off,
    // nothing is news.
    void Look(bool shown);

  private:
    void Publish(const std::vector<Hwnd>& news);

    Os& os_;
    Registry& registry_;
    SharedState& state_;
    Signals& signals_;
    int desk_;
    std::vector<Hwnd> seen_;
    std::vector<Hwnd> flashed_;
};

}  // namespace zk::companion
