#include "DeskPilot/thumbnail_store.h"

#include "signals/shared_state.h"
#include "vocabulary/shared_names.h"

namespace zk::companion {

ThumbnailStore::ThumbnailStore(KernelApi& os, std::uint32_t controllerId) {
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        const Text name = SharedObjectName(SharedObject::Thumbnail, controllerId, desk);
        mappings_[desk - 1] =
            UniqueKernelHandle(os, CreateUserOnlyMapping(os, sizeof(Thumbnail), name));
        if (!mappings_[desk - 1]) continue;
        owned_[desk - 1] =
            UniqueView(os, os.MapViewOfFile(mappings_[desk - 1].get(), sizeof(Thumbnail)));
        views_[desk - 1] = static_cast<Thumbnail*>(owned_[desk - 1].get());
    }
}

}  // namespace zk::companion
