#pragma once
// News: a window that came up, or asked for attention, on a desktop the user was not looking at.
// Windows cannot move it to the desktop shown (a program that runs once per user opens its new
// windows where it first started), so the herald of its desktop notes it in the shared state, and
// the desktop shown tells of it: its tray icon, the preview, the finder and the control tool.
// The news of a desktop goes when the user visits it, and a window's when the window goes.

#include <vector>

#include "platform/os.h"
#include "signals/shared_state.h"

namespace zk::companion {

struct NewsWindow {
    int desk = 0;
    Hwnd window = nullptr;
    Text title;
};

// Whether `window` is news of desktop `desk`.
[[nodiscard]] bool IsNews(const SharedBlock& block, int desk, Hwnd window);
// The news of every desktop but `shown`, in desktop order, of windows that are still there.
[[nodiscard]] std::vector<NewsWindow> NewsBesides(WindowApi& windows, const SharedBlock& block,
                                                  int shown);
// Puts `news` (the first kNewsPerDesktop) in desktop `desk`'s row; whether the row changed.
[[nodiscard]] bool PublishNews(SharedBlock& block, int desk, const std::vector<Hwnd>& news);

}  // namespace zk::companion
