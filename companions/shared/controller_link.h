#pragma once
// Finding Zelkova2's controllers, and a companion's line to its own: the controller window of
// that process on this desktop, found once and checked before each use, and the commands sent to
// it by WM_COPYDATA.

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/api/kernel_api.h"
#include "platform/api/text_api.h"
#include "platform/api/window_api.h"
#include "vocabulary/event_names.h"

namespace zk::companion {

class ControllerLink {
  public:
    ControllerLink(WindowApi& windows, TextApi& text, std::uint32_t controllerId);

    // Sends the full name of signal `index` (49 to 54) as the controller's command; false when
    // no window of the controller takes it.
    bool Send(std::int16_t index);
    // The controller window: caption "Zelkova 2", mark "Zelkova2_APP5" = 1, and the controller's
    // process; nullptr when there is none.
    [[nodiscard]] Hwnd Window();

  private:
    WindowApi& os_;
    std::uint32_t controllerId_;
    std::array<Ansi, 6> commands_;  // the texts of signals 49 to 54, made once
    Hwnd window_ = nullptr;
};

// The processes of Zelkova2's controller that run now; nothing when the system gave no list of
// processes (a list always holds the caller's own, so one without it is tried again): then
// whether Zelkova2 runs cannot be told, and a caller says so rather than "not running".
[[nodiscard]] std::optional<std::vector<std::uint32_t>> TryControllerProcessIds(KernelApi& os);
// Whether a window is a controller window (of any process).
[[nodiscard]] bool IsControllerWindow(WindowApi& os, Hwnd window);

}  // namespace zk::companion
