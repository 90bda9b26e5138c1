#include "shared/shown_desktop.h"

#include "platform/handles.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

ShownDesktop::ShownDesktop(Os& os, SharedState& state)
    : os_(os),
      state_(state),
      own_(DesktopNumberOf(
          os.GetUserObjectInformationW(os.GetThreadDesktop(os.GetCurrentThreadId())))) {}

int ShownDesktop::InputDesk() {
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, DesktopReadObjects));
    if (!input) return 0;  // a secure desktop: the system does not say
    const int desk = DesktopNumberOf(os_.GetUserObjectInformationW(input.get()));
    if (desk >= 2 && desk != own_) state_.Block().systemSwitches = 1;
    return desk;
}

int ShownDesktop::SystemShows() {
    const int desk = InputDesk();
    return SystemSwitches() ? desk : 0;
}

int ShownDesktop::Now() {
    const int system = SystemShows();
    return system != 0 ? system : state_.Current();
}

int ShownDesktop::InStep(Signals& signals, const std::function<bool(int desk)>& sendNow) {
    const int system = SystemShows();
    if (system != 0) BringInStep(system, signals, sendNow);
    return state_.Current();
}

void ShownDesktop::BringInStep(int desk, Signals& signals,
                               const std::function<bool(int desk)>& sendNow) {
    if (!IsDesktopNumber(desk) || desk == state_.Current()) return;
    state_.RecordSwitch(desk);
    if (sendNow && sendNow(desk)) return;
    state_.Block().inStep = static_cast<std::int16_t>(desk);
    (void)signals.RaiseOwn(SharedObject::InStep, state_.ControllerId());
}

int DesktopNumberOf(const Text& name) {
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        if (name == kDesktopNames[desk - 1]) return desk;
    }
    return 0;
}

}  // namespace zk::companion
