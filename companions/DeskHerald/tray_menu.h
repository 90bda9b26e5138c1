#pragma once
// What the tray icon of desktop N offers: its tooltip and its menu (the four desktops with their
// names and the shown one checked, the preview, the settings, the error log, the way out).

#include <array>
#include <cstdint>
#include <vector>

#include "support/text.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

enum class TrayCommand : int {
    ShowDesktop1 = 1,  // to ShowDesktop1 + 3
    Preview = 10,
    Settings,
    ErrorLog,
    Exit,
    GoToNews = 20,  // to GoToNews + the news listed - 1
};

// A window of another desktop that is news (shared/news.h), as the tray names it.
struct TrayNews {
    Text desktopName;
    Text title;
};

struct TrayMenuItem {
    TrayCommand command;
    Text label;  // with its access key
    bool checked = false;
    bool separatorBefore = false;
};

// `names` are the desktops' names ("Desktop N" when they have none); `shown` is the desktop the
// menu is on, which is the one shown while the user uses it. The news comes first, each item
// going to its window.
[[nodiscard]] std::vector<TrayMenuItem> TrayMenu(const std::array<Text, kDesktopCount>& names,
                                                 int shown, const std::vector<TrayNews>& news = {});

// "Zelkova2 — desktop N", and its name when it has one of its own; then the news, what is
// missing, and the hotkeys stored as no key (by id).
[[nodiscard]] Text TrayTooltip(int desk, const Text& name, std::uint32_t missing,
                               const std::vector<TrayNews>& news = {},
                               const std::vector<int>& notAKey = {});

// What "Exit Zelkova2" on desktop N says first, if anything: the windows of desktops 2 to 4 stay
// where they are until Zelkova2 is started again.
[[nodiscard]] Text ExitQuestion(int desk);

}  // namespace zk::companion
