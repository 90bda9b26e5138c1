#include "resident/own_desktop.h"

#include "platform/handles.h"

namespace zk::companion {

OwnDesktop::OwnDesktop(Os& os)
    : os_(os), name_(os.GetUserObjectInformationW(os.GetThreadDesktop(os.GetCurrentThreadId()))) {}

Text OwnDesktop::InputName() {
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, DesktopReadObjects));
    return input ? os_.GetUserObjectInformationW(input.get()) : Text();
}

}  // namespace zk::companion
