#include "platform/sim/sim_desktops.h"

#include "platform/sim/code_page_1252.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kErrorBadPathname = 161;

}  // namespace

Hdesk SimDesktops::Open(int desktop, std::uint32_t access) {
    return static_cast<Hdesk>(session_.NewHandle(session_.desktops[desktop].object, access));
}

int SimDesktops::Desktop(Hdesk desktop) {
    const HandleEntry* entry = session_.Lookup(desktop, Kind::Desktop);
    return entry == nullptr ? -1 : session_.Object(entry->object).desktop;
}

Hdesk SimDesktops::GetThreadDesktop(std::uint32_t threadId) {
    if (session_.Enter("GetThreadDesktop", std::to_string(threadId))) return nullptr;
    if (threadId != session_.threadId) {
        session_.last = ErrorInvalidParameter;
        return nullptr;
    }
    return static_cast<Hdesk>(session_.threadDesktopHandle);
}

Hdesk SimDesktops::OpenInputDesktop(std::uint32_t flags, bool inherit,
                                    std::uint32_t desiredAccess) {
    if (session_.Enter("OpenInputDesktop", std::to_string(flags) + " " + std::to_string(inherit) +
                                               " " + Hex(desiredAccess))) {
        return nullptr;
    }
    return Open(session_.inputDesktop, desiredAccess);
}

Hdesk SimDesktops::OpenDesktopW(const Text& name, std::uint32_t flags, bool inherit,
                                std::uint32_t desiredAccess) {
    if (session_.Enter("OpenDesktopW", Utf8(name) + " " + std::to_string(flags) + " " +
                                           std::to_string(inherit) + " " + Hex(desiredAccess))) {
        return nullptr;
    }
    const int desktop = session_.DesktopByName(name);
    if (desktop < 0) {
        session_.last = ErrorFileNotFound;
        return nullptr;
    }
    return Open(desktop, desiredAccess);
}

Hdesk SimDesktops::CreateDesktopW(const Text& name, std::uint32_t flags,
                                  std::uint32_t desiredAccess) {
    if (session_.Enter("CreateDesktopW",
                       Utf8(name) + " " + std::to_string(flags) + " " + Hex(desiredAccess))) {
        return nullptr;
    }
    if (name.empty() || name.find(u'\\') != Text::npos) {
        session_.last = kErrorBadPathname;
        return nullptr;
    }
    // A success leaves the last error as it was, as under Wine, whether made or opened.
    if (const int existing = session_.DesktopByName(name); existing >= 0) {
        return Open(existing, desiredAccess);
    }
    KernelObject object{Kind::Desktop};
    object.desktop = static_cast<int>(session_.desktops.size());
    session_.desktops.push_back({name, session_.NewObject(std::move(object))});
    return Open(static_cast<int>(session_.desktops.size()) - 1, desiredAccess);
}

bool SimDesktops::SetThreadDesktop(Hdesk desktop) {
    if (session_.Enter("SetThreadDesktop", Hex(desktop))) return false;
    const int target = Desktop(desktop);
    if (target < 0) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    // A thread that owns windows stays on its desktop.
    if (target != session_.threadDesktop && session_.threadOwnsWindows &&
        session_.threadOwnsWindows()) {
        session_.last = ErrorBusy;
        return false;
    }
    session_.threadDesktop = target;
    session_.threadDesktopHandle = desktop;
    return true;
}

bool SimDesktops::SwitchDesktop(Hdesk desktop) {
    if (session_.Enter("SwitchDesktop", Hex(desktop))) return false;
    const HandleEntry* entry = session_.Lookup(desktop, Kind::Desktop);
    if (entry == nullptr) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    if ((entry->access & (DesktopSwitchDesktop | GenericAll)) == 0) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    session_.inputDesktop = session_.Object(entry->object).desktop;
    return true;
}

bool SimDesktops::CloseDesktop(Hdesk desktop) {
    if (session_.Enter("CloseDesktop", Hex(desktop))) return false;
    if (session_.Lookup(desktop, Kind::Desktop) == nullptr) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    if (desktop == session_.threadDesktopHandle) {
        session_.last = ErrorBusy;  // the thread's own desktop is in use
        return false;
    }
    return session_.CloseHandle(desktop);
}

Text SimDesktops::GetUserObjectInformationW(Handle object) {
    if (session_.Enter("GetUserObjectInformationW", Hex(object))) return {};
    const int desktop = Desktop(static_cast<Hdesk>(object));
    if (desktop < 0) {
        session_.last = ErrorInvalidHandle;
        return {};
    }
    return session_.desktops[desktop].name;
}

std::vector<Text> SimDesktops::EnumDesktopsW() {
    (void)session_.Enter("EnumDesktopsW");
    std::vector<Text> names;
    for (const auto& d : session_.desktops) {
        if (!d.name.empty()) names.push_back(d.name);
    }
    return names;
}

std::vector<Hwnd> SimDesktops::EnumDesktopWindows(Hdesk desktop) {
    if (session_.Enter("EnumDesktopWindows", Hex(desktop))) return {};
    const int index = Desktop(desktop);
    const HandleEntry* entry = session_.Lookup(desktop, Kind::Desktop);
    if (index < 0 || entry == nullptr || !entry->Grants(DesktopReadObjects)) {
        session_.last = index < 0 ? ErrorInvalidHandle : ErrorAccessDenied;
        return {};
    }
    return session_.windowsOfDesktop ? session_.windowsOfDesktop(index) : std::vector<Hwnd>{};
}

Text SimDesktops::InputDesktopName() const {
    return session_.desktops[session_.inputDesktop].name;
}

Text SimDesktops::ThreadDesktopName() const {
    return session_.desktops[session_.threadDesktop].name;
}

void SimDesktops::CreateDesktopInOtherProcess(const Text& name) {
    if (DesktopExists(name)) return;
    KernelObject object{Kind::Desktop};
    object.desktop = static_cast<int>(session_.desktops.size());
    object.references = 1;
    session_.desktops.push_back({name, session_.NewObject(std::move(object))});
}

void SimDesktops::StartOnDesktop(const Text& name) {
    CreateDesktopInOtherProcess(name);
    const int desktop = session_.DesktopByName(name);
    session_.threadDesktop = desktop;
    session_.threadDesktopHandle =
        session_.NewHandle(session_.desktops[desktop].object, GenericAll, true);
}

void SimDesktops::ActOnDesktop(const Text& name) {
    CreateDesktopInOtherProcess(name);
    const int desktop = session_.DesktopByName(name);
    Handle& handle = actingOn_[desktop];
    if (handle == nullptr)
        handle = session_.NewHandle(session_.desktops[desktop].object, GenericAll, true);
    session_.threadDesktop = desktop;
    session_.threadDesktopHandle = handle;
}

void SimDesktops::ShowDesktopInOtherProcess(const Text& name) {
    CreateDesktopInOtherProcess(name);
    session_.inputDesktop = session_.DesktopByName(name);
}

}  // namespace zk::sim
