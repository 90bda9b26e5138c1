#include "signals/shared_state.h"

#include "vocabulary/shared_names.h"

namespace zk {

Handle CreateUserOnlyMapping(KernelApi& os, std::uint32_t size, const Text& name) {
    // SYSTEM and the token's user, or its owner where the token does not say who that is.
    const Text user = os.GetTokenUserSid();
    return os.CreateFileMappingW(
        size, name, u"D:P(A;;GA;;;SY)(A;;GA;;;" + (user.empty() ? u"OW" : user) + u")");
}

SharedState::SharedState(KernelApi& os, std::uint32_t controllerId) {
    mapping_ = UniqueKernelHandle(
        os, CreateUserOnlyMapping(os, sizeof(SharedBlock),
                                  SharedObjectName(SharedObject::State, controllerId)));
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

void SharedState::PublishShown(std::int16_t current, std::int16_t previous) {
    block_->previous = previous;
    block_->current = current;
}

void SharedState::PublishHotKeys(const HotKeyFields& fields) {
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        block_->hotKeyCodes[id - 1] = fields.HotKeyCode[id];
        block_->hotKeyModifiers[id - 1] = fields.HotKeyMod[id];
    }
    block_->hotKeysPublished = 1;
}

}  // namespace zk
