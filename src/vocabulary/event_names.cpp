#include "vocabulary/event_names.h"

#include <string_view>

namespace zk {
namespace {

// The signal names by index, written out so that each can be found as it is spelt. Four blocks
// of twelve (one per desktop, the desktop's digit after "Switcher"), then the controller's own
// six, whose full names are its command texts.
// clang-format off
constexpr std::u16string_view kSignalNames[kSignalCount] = {
    u"Switcher1SwitchTo1", u"Switcher1SwitchTo2", u"Switcher1SwitchTo3", u"Switcher1SwitchTo4",
    u"Switcher1Update1",   u"Switcher1Update2",   u"Switcher1Update3",   u"Switcher1Update4",
    u"ReadRegSwitcher1",   u"ShutdownSwitcher1",  u"ShowPreviewSwitcher1", u"ShowPopupSwitcher1",
    u"Switcher2SwitchTo1", u"Switcher2SwitchTo2", u"Switcher2SwitchTo3", u"Switcher2SwitchTo4",
    u"Switcher2Update1",   u"Switcher2Update2",   u"Switcher2Update3",   u"Switcher2Update4",
    u"ReadRegSwitcher2",   u"ShutdownSwitcher2",  u"ShowPreviewSwitcher2", u"ShowPopupSwitcher2",
    u"Switcher3SwitchTo1", u"Switcher3SwitchTo2", u"Switcher3SwitchTo3", u"Switcher3SwitchTo4",
    u"Switcher3Update1",   u"Switcher3Update2",   u"Switcher3Update3",   u"Switcher3Update4",
    u"ReadRegSwitcher3",   u"ShutdownSwitcher3",  u"ShowPreviewSwitcher3", u"ShowPopupSwitcher3",
    u"Switcher4SwitchTo1", u"Switcher4SwitchTo2", u"Switcher4SwitchTo3", u"Switcher4SwitchTo4",
    u"Switcher4Update1",   u"Switcher4Update2",   u"Switcher4Update3",   u"Switcher4Update4",
    u"ReadRegSwitcher4",   u"ShutdownSwitcher4",  u"ShowPreviewSwitcher4", u"ShowPopupSwitcher4",
    u"SwitchToDesktop1",   u"SwitchToDesktop2",   u"SwitchToDesktop3",   u"SwitchToDesktop4",
    u"ReadReg",            u"Shutdown"};
// clang-format on

// Whether `name` is `before`, the digit `a`, `after`, then the digit `b` if there is one.
constexpr bool Spelt(std::u16string_view name, std::u16string_view before, int a,
                     std::u16string_view after, int b = 0) {
    const std::u16string_view digits = u"0123456789";
    const std::size_t length = before.size() + 1 + after.size() + (b != 0 ? 1 : 0);
    return name.size() == length && name.starts_with(before) &&
           name[before.size()] == digits[static_cast<std::size_t>(a)] &&
           name.substr(before.size() + 1, after.size()) == after &&
           (b == 0 || name.back() == digits[static_cast<std::size_t>(b)]);
}

constexpr std::u16string_view Named(std::int32_t kind, std::int16_t desk, std::int16_t target) {
    return kSignalNames[static_cast<std::size_t>(EventNames::EventIndex(kind, desk, target) - 1)];
}

// The written-out table follows the index rule: each name of block N carries the desktop's
// digit after "Switcher", and every kind sits where EventIndex puts it.
static_assert([] {
    for (std::int16_t d = 1; d <= 4; ++d) {
        for (std::int16_t t = 1; t <= 4; ++t) {
            if (!Spelt(Named(KindSwitchTo, d, t), u"Switcher", d, u"SwitchTo", t) ||
                !Spelt(Named(KindUpdate, d, t), u"Switcher", d, u"Update", t))
                return false;
            if (!Spelt(Named(KindSwitchTo, kControllerBlock, t), u"SwitchToDesktop", t, u""))
                return false;
        }
        if (!Spelt(Named(KindReadReg, d, 9), u"ReadRegSwitcher", d, u"") ||
            !Spelt(Named(KindShutdown, d, 9), u"ShutdownSwitcher", d, u"") ||
            !Spelt(Named(KindShowPreview, d, 9), u"ShowPreviewSwitcher", d, u"") ||
            !Spelt(Named(KindShowPopup, d, 9), u"ShowPopupSwitcher", d, u""))
            return false;
    }
    return Named(KindReadReg, kControllerBlock, 0) == u"ReadReg" &&
           Named(KindShutdown, kControllerBlock, 0) == u"Shutdown";
}());

}  // namespace

void EventNames::InitEventNames() {
    for (std::size_t i = 0; i < names_.size(); ++i)
        names_[i] = kEventPrefix + Text(kSignalNames[i]);
}

Text EventNames::EventName(std::int16_t index) const {
    if (index < 1 || index > kSignalCount) return {};
    return names_[static_cast<std::size_t>(index - 1)];
}

}  // namespace zk
