#include "platform/win32/win32_desktops.h"

#include "platform/win32/last_error.h"

namespace zk::win32 {

Hdesk Win32Desktops::GetThreadDesktop(std::uint32_t threadId) {
    return Keep(::GetThreadDesktop(threadId));
}
Hdesk Win32Desktops::OpenInputDesktop(std::uint32_t flags, bool inherit,
                                      std::uint32_t desiredAccess) {
    return Keep(::OpenInputDesktop(flags, inherit, desiredAccess));
}
Hdesk Win32Desktops::OpenDesktopW(const Text& name, std::uint32_t flags, bool inherit,
                                  std::uint32_t desiredAccess) {
    return Keep(::OpenDesktopW(W(name), flags, inherit, desiredAccess));
}
Hdesk Win32Desktops::CreateDesktopW(const Text& name, std::uint32_t flags,
                                    std::uint32_t desiredAccess) {
    return Keep(::CreateDesktopW(W(name), nullptr, nullptr, flags, desiredAccess, nullptr));
}
bool Win32Desktops::SetThreadDesktop(Hdesk desktop) {
    return Keep(::SetThreadDesktop(desktop)) != 0;
}
bool Win32Desktops::SwitchDesktop(Hdesk desktop) {
    return Keep(::SwitchDesktop(desktop)) != 0;
}
bool Win32Desktops::CloseDesktop(Hdesk desktop) {
    return Keep(::CloseDesktop(desktop)) != 0;
}
Text Win32Desktops::GetUserObjectInformationW(Handle object) {
    char16_t name[256] = {};
    Keep(
        ::GetUserObjectInformationW(object, UOI_NAME, name, sizeof name - sizeof name[0], nullptr));
    return Text(name);
}
std::vector<Text> Win32Desktops::EnumDesktopsW() {
    std::vector<Text> names;
    auto collect = [](LPWSTR name, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<Text>*>(list)->emplace_back(
            reinterpret_cast<const char16_t*>(name));
        return TRUE;
    };
    Keep(::EnumDesktopsW(::GetProcessWindowStation(), collect, reinterpret_cast<LPARAM>(&names)));
    return names;
}
std::vector<Hwnd> Win32Desktops::EnumDesktopWindows(Hdesk desktop) {
    std::vector<Hwnd> windows;
    auto collect = [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<Hwnd>*>(list)->push_back(window);
        return TRUE;
    };
    Keep(::EnumDesktopWindows(desktop, collect, reinterpret_cast<LPARAM>(&windows)));
    return windows;
}

}  // namespace zk::win32
