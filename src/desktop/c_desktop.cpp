#include "desktop/c_desktop.h"

#include "diagnostics/win_api_error.h"
#include "platform/handles.h"

namespace zk {

namespace {
constexpr char16_t kErrorPrefix[] = u"cDesktop: ";
}  // namespace

Text cDesktop::PilotPath() {
    return ProgramPath(os_, Program::Pilot);
}

Text cDesktop::HeraldPath() {
    return ProgramPath(os_, Program::Herald);
}

void cDesktop::RecordError(std::uint32_t code) {
    sLastError = kErrorPrefix + ApiErrorText(os_, code);
}

// Every start is attempted; the last one decides the result.
bool cDesktop::StartCompanions(std::int16_t desk) {
    bool started = false;
    for (const auto& start : CompanionsOfDesktop(desk)) {
        const Text path = start.program == Program::Pilot ? PilotPath() : HeraldPath();
        started = StartProcess(path, CompanionArgument(start.argument));
    }
    return started;
}

bool cDesktop::SetAsDefault() {
    const Hdesk thread = os_.GetThreadDesktop(os_.GetCurrentThreadId());
    if (thread == nullptr) {
        RecordError(os_.GetLastError());
        return false;
    }
    hThreadDesk = thread;
    const Hdesk input = os_.OpenInputDesktop(0, false, DesktopSwitchDesktop);
    if (input == nullptr) {
        RecordError(os_.GetLastError());
        return false;
    }
    hDesk = input;
    sName = kDefaultDesktopName;
    return StartCompanions(1);
}

bool cDesktop::Create(const Text& sDesktopName, std::int16_t DeskNum) {
    const Hdesk created = os_.CreateDesktopW(sDesktopName, 0, GenericAll);
    hDesk = created;
    if (created == nullptr) {
        RecordError(os_.GetLastError());
        return false;
    }
    hThreadDesk = created;
    (void)os_.SetThreadDesktop(created);  // refused while the thread owns windows
    (void)os_.SwitchDesktop(hDesk);
    sName = sDesktopName;
    return StartCompanions(DeskNum);
}

bool cDesktop::StartProcess(const Text& sPath, const Text& CmdLine) {
    StartupInfo si;
    si.lpDesktop = sName;
    si.lpTitle = sName;
    if (!TryCreateProcess(os_, sPath, u" " + CmdLine, true, si)) {
        RecordError(os_.GetLastError());
        return false;
    }
    return true;  // its handles are closed at once
}

void cDesktop::SwitchTo() {
    if (hDesk != nullptr) (void)os_.SwitchDesktop(hDesk);
    if (hThreadDesk != nullptr) (void)os_.SetThreadDesktop(hThreadDesk);
}

void cDesktop::ClearUp() {
    if (hDesk == nullptr) return;
    (void)os_.CloseDesktop(hDesk);
    hDesk = nullptr;
}

}  // namespace zk
