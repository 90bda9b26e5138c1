#include "tool_support/reload.h"

#include "tool_support/launcher.h"

namespace zk::companion {

Reload::Reload(KernelApi& os, Signals& signals) : os_(os) {
    for (const std::uint32_t id :
         TryControllerProcessIds(os).value_or(std::vector<std::uint32_t>{})) {
        if (const Handle confirmation = signals.OwnEvent(SharedObject::Reloaded, id)) {
            (void)os.WaitForSingleObject(confirmation, 0);
            confirmations_.push_back(confirmation);
        }
    }
}

bool Reload::Confirmed(std::uint32_t within) {
    if (confirmations_.empty()) return false;
    const std::uint32_t result = os_.WaitForMultipleObjects(confirmations_, false, within);
    return result >= WaitObject0 && result < WaitObject0 + confirmations_.size();
}

}  // namespace zk::companion
