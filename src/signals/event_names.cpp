#include "signals/event_names.h"

#include <string_view>

#include "diagnostics/zk_error.h"

namespace zk {
namespace {

// The twelve signals of a desktop's block, by offset; '#' stands for the desktop's digit.
constexpr std::u16string_view kBlockSignals[kSignalsPerDesktop] = {
    u"Switcher#SwitchTo1", u"Switcher#SwitchTo2", u"Switcher#SwitchTo3",   u"Switcher#SwitchTo4",
    u"Switcher#Update1",   u"Switcher#Update2",   u"Switcher#Update3",     u"Switcher#Update4",
    u"ReadRegSwitcher#",   u"ShutdownSwitcher#",  u"ShowPreviewSwitcher#", u"ShowPopupSwitcher#"};

// The controller's block, indexes 49 to 54: the command texts it accepts.
constexpr std::u16string_view kControllerSignals[] = {u"SwitchToDesktop1", u"SwitchToDesktop2",
                                                      u"SwitchToDesktop3", u"SwitchToDesktop4",
                                                      u"ReadReg",          u"Shutdown"};

std::int16_t Checked(std::int32_t value) {
    if (value < INT16_MIN || value > INT16_MAX) RaiseOverflow();
    return static_cast<std::int16_t>(value);
}

}  // namespace

void EventNames::InitEventNames() {
    std::size_t i = 0;
    for (char16_t desk = u'1'; desk <= u'4'; ++desk) {
        for (const auto pattern : kBlockSignals) {
            Text name(pattern);
            name.replace(name.find(u'#'), 1, 1, desk);
            names_[i++] = kEventPrefix + name;
        }
    }
    for (const auto signal : kControllerSignals)
        names_[i++] = kEventPrefix + Text(signal);
}

Text EventNames::EventName(std::int16_t index) const {
    if (index < 1 || index > kSignalCount) return {};
    return names_[static_cast<std::size_t>(index - 1)];
}

std::int16_t EventNames::EventIndex(std::int32_t kind, std::int16_t desk, std::int16_t target) {
    const std::int16_t base = Checked(Checked(desk - 1) * kSignalsPerDesktop);
    switch (kind) {
        case KindSwitchTo:
            return Checked(base + target);
        case KindUpdate:
            return Checked(Checked(base + 4) + target);
        case KindShowPreview:
            return Checked(base + 11);
        case KindShowPopup:
            return Checked(base + 12);
        case KindShutdown:
            return Checked(base + (desk == kControllerBlock ? 6 : 10));
        case KindReadReg:
            return Checked(base + (desk == kControllerBlock ? 5 : 9));
        default:
            return base;
    }
}

}  // namespace zk
