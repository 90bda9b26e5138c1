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
    const Text input = InputName();
    if (input == name_) return false;
    for (int desk = 2; desk <= kDesktopCount; ++desk) {
        if (input == kDesktopNames[desk - 1]) return true;
    }
    return false;
}

}  // namespace zk::companion
