#pragma once
// Finding any window on any desktop. Windows cannot move a window between desktops, so the way
// to a window is its desktop: the finder lists the user's windows of every desktop, narrows
// them by what the user types (words of the title or of the program's name, in any case), and
// shows the chosen one: its desktop first, then the window in front there, restored if it was
// minimised. Only a thread of that desktop can bring it to the front, so the desktop's switcher
// does that part when it is asked (BringForwardIfAsked).

#include <functional>
#include <optional>
#include <vector>

#include "platform/os.h"
#include "shared/signals.h"
#include "signals/shared_state.h"

namespace zk::companion {

struct FoundWindow {
    int desk = 0;
    Hwnd window = nullptr;
    Text title;
    Text program;  // the file name of its program
    std::uint32_t processId = 0;
    bool news = false;  // shared/news.h
};

// The user's windows of every desktop, desktop 1 first, each desktop's in the system's order
// (front first); with the companions' `block`, each says whether it is news.
[[nodiscard]] std::vector<FoundWindow> AllUserWindows(Os& os, const SharedBlock* block = nullptr);

class WindowFinder {
  public:
    explicit WindowFinder(std::vector<FoundWindow> windows);

    // Narrows the list to the windows whose title or program holds every word of `query`;
    // titles that begin with the query come first, then titles with a word that begins with it,
    // and within each the news first.
    // The chosen window stays chosen while it is listed; otherwise the first is.
    void SetQuery(const Text& query);
    [[nodiscard]] const Text& Query() const { return query_; }
    [[nodiscard]] const std::vector<const FoundWindow*>& Matches() const { return matches_; }
    // The position of the chosen window among the matches; nothing when none matches.
    [[nodiscard]] std::optional<std::size_t> Chosen() const;
    // Moves the choice by `rows` (the arrows: 1 or -1; a page: more), staying within the list.
    void Move(int rows);
    void ChooseAt(std::size_t position);
    [[nodiscard]] const FoundWindow* ChosenWindow() const;

  private:
    std::vector<FoundWindow> windows_;
    Text query_;
    std::vector<const FoundWindow*> matches_;
    const FoundWindow* chosen_ = nullptr;
};

// Shows `found`: asks for its desktop (where `shown` is another) and asks that desktop's switcher
// to bring it to the front, passing on the right to do so. `switchTo` makes the switch.
void ShowFoundWindow(WindowApi& windows, Signals& signals, SharedState& state, int shown,
                     const FoundWindow& found, const std::function<void(int desk)>& switchTo);

// The switcher's side: brings the window asked for to the front, once its desktop `desk` is the
// one `shown`. Whether a window was asked for and is not yet in front.
bool BringForwardIfAsked(WindowApi& windows, SharedState& state, int desk, int shown);

}  // namespace zk::companion
