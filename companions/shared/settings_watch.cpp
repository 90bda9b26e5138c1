#include "shared/settings_watch.h"

#include "vocabulary/hotkey_table.h"

namespace zk::companion {

SettingsWatch::SettingsWatch(Os& os) : os_(os) {
    Hkey key = nullptr;
    // Created where missing: a first start has no settings yet, and later ones must be seen.
    if (os.RegCreateKeyW(HkeyCurrentUser(), kSettingsKey, key) != 0) return;
    key_ = UniqueRegKey(os, key);
    event_ = UniqueKernelHandle(os, os.CreateEventA(false, false, {}));
    if (!Renew()) event_.reset();
}

bool SettingsWatch::Renew() {
    return key_ && event_ && os_.RegNotifyChangeKeyValue(key_.get(), true, event_.get()) == 0;
}

}  // namespace zk::companion
