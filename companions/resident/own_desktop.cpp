#include "resident/own_desktop.h"

#include "desktop/desktops.h"
#include "platform/handles.h"

namespace zk::companion {

OwnDesktop::OwnDesktop(Os& os)
    : os_(os), name_(os.GetUserObjectInformationW(os.GetThreadDesktop(os.GetCurrentThreadId()))) {}

Text OwnDesktop::InputName() {
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, DesktopReadObjects));
    return input ? os_.GetUserObjectInformationW(input.get()) : Text();
}

bool OwnDesktop::AnotherShown() {
    const int shown = MadeDesktopShown();
    return shown != 0 && name_ != kDesktopNames[shown - 1];
}

int OwnDesktop::MadeDesktopShown() {
    const Text input = InputName();
    for (int desk = 2; desk <= kDesktopCount; ++desk) {
        if (input == kDesktopNames[desk - 1]) return desk;
    }
    return 0;
}

}  // namespace zk::companion
