#include "resident/switch_notice.h"

#include "vocabulary/protocol.h"

namespace zk::companion {

void NoteSwitch(Signals& signals, WaitSet& set, KernelApi& clock, std::uint32_t controllerId,
                int desk, int wasShown) {
    if (desk == wasShown) return;
    set.Later(clock, kTellShownAfter, [&signals, controllerId, desk] {
        const auto shown = static_cast<std::int16_t>(desk);
        (void)signals.Raise(SwitcherSignal(KindUpdate, shown, shown));
        (void)signals.RaiseOwn(SharedObject::Shown, controllerId, desk);
    });
}

}  // namespace zk::companion
