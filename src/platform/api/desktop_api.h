#pragma once
// user32: the desktops of the process's window station.

#include "platform/api/system_api.h"

namespace zk {

class DesktopApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual Hdesk GetThreadDesktop(std::uint32_t threadId) = 0;
    [[nodiscard]] virtual Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit,
                                                 std::uint32_t desiredAccess) = 0;
    [[nodiscard]] virtual Hdesk OpenDesktopW(const Text& name, std::uint32_t flags, bool inherit,
                                             std::uint32_t desiredAccess) = 0;
    [[nodiscard]] virtual Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                                               std::uint32_t desiredAccess) = 0;
    virtual bool SetThreadDesktop(Hdesk desktop) = 0;
    virtual bool SwitchDesktop(Hdesk desktop) = 0;
    virtual bool CloseDesktop(Hdesk desktop) = 0;
    // GetUserObjectInformationW with UOI_NAME.
    [[nodiscard]] virtual Text GetUserObjectInformationW(Handle object) = 0;
    // EnumDesktopsW of the process's window station: the desktops' names.
    [[nodiscard]] virtual std::vector<Text> EnumDesktopsW() = 0;
    // EnumDesktopWindows: the top-level windows of a desktop.
    [[nodiscard]] virtual std::vector<Hwnd> EnumDesktopWindows(Hdesk desktop) = 0;
};

}  // namespace zk
