#include "DeskHerald/bridge.h"

#include "desktop/desktops.h"
#include "signals/protocol.h"

namespace zk::companion {

Bridge::Bridge(Os& os, ControllerProcess& controller)
    : os_(os), signals_(os, os), state_(os, controller.Id()), link_(os, os, controller.Id()) {
    // Commands come first in the wait: the lowest signalled handle is taken first.
    for (std::int16_t index = kFirstSwitchCommand; index <= kShutdownCommand; ++index) {
        if (const Handle event = signals_.Event(index)) set_.Add(event, {kCommand, index});
    }
    set_.Add(controller.Process(), {kControllerEnded, 0});
    herald_.emplace(os, state_, signals_, controller, Program::Herald, 1, set_, kWatch);
    AnnounceSelf(os, state_, signals_, HeraldSlot(kControllerBlock));
}

void Bridge::Run() {
    RunWaitLoop(os_, set_, [this](const Wake& wake) { return Woken(wake); });
}

bool Bridge::Woken(const Wake& wake) {
    switch (wake.kind) {
        case kCommand:
            return Command(static_cast<std::int16_t>(wake.value));
        case kControllerEnded:
            return false;
        default:
            herald_->Woken(wake);
            return true;
    }
}

bool Bridge::Command(std::int16_t index) {
    const bool delivered = link_.Send(index);
    if (index == kShutdownCommand) return false;
    if (!delivered) return true;  // no controller window: its end will end the bridge too
    if (index == kReadRegCommand) {
        for (std::int16_t desk = 1; desk <= kDesktopCount; ++desk)
            (void)signals_.Raise(SwitcherSignal(KindReadReg, desk));
        (void)signals_.RaiseOwn(ReloadedEventName());
        return true;
    }
    NoteSwitch(signals_, state_, set_, os_, index - kFirstSwitchCommand + 1);
    return true;
}

}  // namespace zk::companion
