#include "shared/signals.h"

#include "vocabulary/protocol.h"

namespace zk::companion {

Signals::Signals(KernelApi& kernel, TextApi& text) : os_(kernel), text_(text) {
    names_.InitEventNames();
}

Handle Signals::Open(const Text& fullName) {
    auto it = events_.find(fullName);
    if (it == events_.end()) {
        const Handle event = os_.CreateEventA(false, false, text_.WideCharToMultiByte(fullName));
        if (event == nullptr) return nullptr;  // tried again next time
        it = events_.emplace(fullName, UniqueKernelHandle(os_, event)).first;
    }
    return it->second.get();
}

Handle Signals::Event(std::int16_t index) {
    const Text name = names_.EventName(index);
    return name.empty() ? nullptr : Open(name);
}

Handle Signals::OwnEvent(SharedObject object, std::uint32_t controllerId, int number) {
    return Open(SharedObjectName(object, controllerId, number));
}

bool Signals::Raise(std::int16_t index) {
    const Handle event = Event(index);
    return event != nullptr && os_.SetEvent(event);
}

bool Signals::RaiseOwn(SharedObject object, std::uint32_t controllerId, int number) {
    const Handle event = OwnEvent(object, controllerId, number);
    return event != nullptr && os_.SetEvent(event);
}

bool ShowPreview(WindowApi& windows, Signals& signals, const SharedBlock& block, int desk) {
    const std::uint32_t switcher = block.companions[PilotSlot(desk)];
    if (switcher != 0) (void)windows.AllowSetForegroundWindow(switcher);
    return signals.Raise(SwitcherSignal(KindShowPreview, static_cast<std::int16_t>(desk)));
}

}  // namespace zk::companion
