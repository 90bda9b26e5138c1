#include "vocabulary/hotkey_table.h"

#include "vocabulary/desktops.h"
#include "vocabulary/event_names.h"

namespace zk {

std::optional<HotKeyRequest> HotKeyRequestOf(int id, std::int16_t previousDesk) {
    if (!IsControllerHotKeyId(id)) return std::nullopt;
    const HotKeySetting& setting = HotKeySettingOf(id);
    switch (setting.action) {
        case HotKeyAction::ShowDesktop:
            return HotKeyRequest{KindSwitchTo, setting.desk};
        case HotKeyAction::ShowPreviousDesktop:
            if (!IsDesktopNumber(previousDesk)) return std::nullopt;
            return HotKeyRequest{KindSwitchTo, previousDesk};
        case HotKeyAction::ShowPreview:
            return HotKeyRequest{KindShowPreview, 0};
        default:  // the companions' own
            return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace zk
