#include "resident/desktop_shower.h"

namespace zk::companion {

DesktopShower::DesktopShower(DesktopApi& os) : os_(os) {}

void DesktopShower::OpenAll() {
    for (int desk = 1; desk <= kDesktopCount; ++desk)
        (void)Handle(desk);
}

Hdesk DesktopShower::Handle(int desk) {
    UniqueDesktop& handle = desktops_.at(static_cast<std::size_t>(desk - 1));
    if (!handle.valid()) {
        handle = UniqueDesktop(
            os_, os_.OpenDesktopW(kDesktopNames.at(static_cast<std::size_t>(desk - 1)), 0, false,
                                  DesktopSwitchDesktop));
    }
    return handle.get();
}

bool DesktopShower::Show(int desk) {
    if (!IsDesktopNumber(desk)) return false;
    const Hdesk handle = Handle(desk);
    return handle != nullptr && os_.SwitchDesktop(handle);
}

}  // namespace zk::companion
