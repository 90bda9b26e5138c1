#pragma once
#include "platform/api/desktop_api.h"

namespace zk::win32 {

class Win32Desktops : public virtual DesktopApi {
  public:
    Hdesk GetThreadDesktop(std::uint32_t threadId) override;
    Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) override;
    Hdesk OpenDesktopW(const Text& name, std::uint32_t flags, bool inherit,
                       std::uint32_t desiredAccess) override;
    Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                         std::uint32_t desiredAccess) override;
    bool SetThreadDesktop(Hdesk desktop) override;
    bool SwitchDesktop(Hdesk desktop) override;
    bool CloseDesktop(Hdesk desktop) override;
    Text GetUserObjectInformationW(Handle object) override;
    std::vector<Text> EnumDesktopsW() override;
    std::vector<Hwnd> EnumDesktopWindows(Hdesk desktop) override;
};

}  // namespace zk::win32
