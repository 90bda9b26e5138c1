#include "DeskHerald/bridge.h"

#include <utility>

#include "shared/shown_desktop.h"
#include "vocabulary/desktops.h"
#include "vocabulary/protocol.h"

namespace zk::companion {

Bridge::Bridge(Os& os, ControllerProcess& controller)
    : os_(os), signals_(os, os), state_(os, controller.Id()), link_(os, os, controller.Id()) {
    // The record brought in step comes before the commands sent after it, and the commands come
    // before the rest: the lowest signalled handle is taken first.
    if (const Handle e = signals_.OwnEvent(SharedObject::InStep, controller.Id())) {
        set_.Add(e, {kInStep, 0});
    }
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
        case kInStep:
            if (const int desk = std::exchange(state_.Block().inStep, std::int16_t{0})) {
                if (IsDesktopNumber(desk))
                    (void)link_.Send(SwitchCommand(static_cast<std::int16_t>(desk)));
            }
            return true;
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
    const int wasShown = state_.Current();
    const bool delivered = link_.Send(index);
    if (index == kShutdownCommand) return false;
    if (!delivered) return true;  // no controller window: its end will end the bridge too
    if (index == kReadRegCommand) {
        for (std::int16_t desk = 1; desk <= kDesktopCount; ++desk)
            (void)signals_.Raise(SwitcherSignal(KindReadReg, desk));
        (void)signals_.RaiseOwn(SharedObject::Reloaded, state_.ControllerId());
        return true;
    }
    NoteSwitch(signals_, set_, os_, state_.ControllerId(), index - kFirstSwitchCommand + 1,
               wasShown);
    return true;
}

}  // namespace zk::companion
