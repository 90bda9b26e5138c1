#include "signals/shared_state.h"

namespace zk {

SharedState::SharedState(KernelApi& os, std::uint32_t controllerId) {
    mapping_ = UniqueKernelHandle(
        os, os.CreateFileMappingW(sizeof(SharedBlock), SharedStateName(controllerId)));
    if (!mapping_) return;
    view_ = UniqueView(os, os.MapViewOfFile(mapping_.get(), sizeof(SharedBlock)));
    if (!view_) return;
    block_ = static_cast<SharedBlock*>(view_.get());
    block_->controllerId = controllerId;
}

void SharedState::RecordSwitch(int desk) {
    const int current = Current();
    if (desk == current) return;
    block_->previous = static_cast<std::int16_t>(current);
    block_->current = static_cast<std::int16_t>(desk);
}

Text SharedStateName(std::uint32_t controllerId) {
    return u"Local\\Zelkova2.State." + DecimalText(controllerId);
}

Text CompanionUpEventName(std::uint32_t controllerId, int slot) {
    return u"Zelkova2.Up." + DecimalText(controllerId) + u"." + DecimalText(slot);
}

}  // namespace zk
