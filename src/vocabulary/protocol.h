#pragma once
// What the controller and its companions agree on besides the signal names: how the controller
// window is told apart, and the signals of the controller's block that are its commands.

#include <cstdint>

#include "vocabulary/event_names.h"

namespace zk {

// The controller window: its caption, and the property it carries with the value 1.
inline constexpr char16_t kControllerCaption[] = u"Zelkova 2";
inline constexpr char16_t kWindowMark[] = u"Zelkova2_APP5";

// The commands: the signals of the controller's block. Their full event names are the texts
// that the controller accepts by WM_COPYDATA.
[[nodiscard]] constexpr std::int16_t SwitchCommand(std::int16_t desktop) {
    return EventNames::EventIndex(KindSwitchTo, kControllerBlock, desktop);
}
inline constexpr std::int16_t kFirstSwitchCommand = SwitchCommand(1);
inline constexpr std::int16_t kLastSwitchCommand = SwitchCommand(4);
inline constexpr std::int16_t kReadRegCommand =
    EventNames::EventIndex(KindReadReg, kControllerBlock, 0);
inline constexpr std::int16_t kShutdownCommand =
    EventNames::EventIndex(KindShutdown, kControllerBlock, 0);

// The signals of desktop N's block that its companions wait on.
[[nodiscard]] constexpr std::int16_t SwitcherSignal(std::int32_t kind, std::int16_t desktop,
                                                    std::int16_t target = 0) {
    return EventNames::EventIndex(kind, desktop, target);
}

}  // namespace zk
