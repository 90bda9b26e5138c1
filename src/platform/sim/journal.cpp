#include "platform/sim/journal.h"

#include <set>
#include <stdexcept>

namespace zk::sim {

void Journal::Record(std::string call, std::string detail) {
    entries_.push_back({std::move(call), std::move(detail), false});
}

void Journal::MarkLastFailed() {
    if (!entries_.empty()) entries_.back().failed = true;
}

std::vector<std::string> Journal::Details(std::string_view call) const {
    std::vector<std::string> out;
    for (const auto& e : entries_) {
        if (e.call == call) out.push_back(e.detail);
    }
    return out;
}

int Journal::Count(std::string_view call) const {
    int n = 0;
    for (const auto& e : entries_)
        n += e.call == call ? 1 : 0;
    return n;
}

std::optional<std::size_t> Journal::Find(std::string_view call, std::string_view part,
                                         std::size_t from) const {
    for (std::size_t i = from; i < entries_.size(); ++i) {
        if (entries_[i].call == call && entries_[i].detail.find(part) != std::string::npos) {
            return i;
        }
    }
    return std::nullopt;
}

namespace {

// Every call of the seam, as the sim records it.
const std::set<std::string, std::less<>>& SeamCalls() {
    static const std::set<std::string, std::less<>> calls = {
        // kernel
        "CreateEventA", "CreateMutexA", "OpenEventA", "SetEvent", "WaitForSingleObject",
        "WaitForMultipleObjects", "Sleep", "CloseHandle", "CreateFileMappingW", "GetTokenUserSid",
        "MapViewOfFile", "UnmapViewOfFile", "GetCurrentThreadId", "GetCurrentProcessId",
        "CreateProcessW", "OpenProcess", "GetProcessTimes", "CreateToolhelp32Snapshot",
        "ExitProcess", "GetModuleFileNameW", "GetModuleHandleW", "GetTickCount64",
        // files
        "CreateFileW", "WriteFile", "ReadFile", "DeleteFileW", "GetFileAttributesW",
        "SHGetFolderPathW",
        // desktops
        "GetThreadDesktop", "OpenInputDesktop", "OpenDesktopW", "CreateDesktopW",
        "SetThreadDesktop", "SwitchDesktop", "CloseDesktop", "GetUserObjectInformationW",
        "EnumDesktopsW", "EnumDesktopWindows",
        // windows, messages, hotkeys, icons
        "RegisterHotKey", "UnregisterHotKey", "SendInput", "GetAsyncKeyState",
        "SystemParametersInfoW", "SetPropA", "GetPropW", "SetPropW", "RemovePropW", "IsWindow",
        "IsWindowVisible", "AllowSetForegroundWindow", "GetWindowThreadProcessId", "GetWindowTextW",
        "GetClassNameW", "SetWindowLongPtrW", "GetWindowLongPtrW", "CallWindowProcW", "EnumWindows",
        "GetWindow", "GetSystemMetrics", "LoadImageA", "SendMessageA", "RegisterClassW",
        "CreateWindowExW", "DestroyWindow", "DefWindowProcW", "SendMessageW", "SendMessageTimeoutW",
        "PostMessageW", "GetMessageW", "PeekMessageW", "TranslateMessage", "DispatchMessageW",
        "PostQuitMessage", "MsgWaitForMultipleObjects", "SetTimer", "KillTimer",
        // registry
        "RegOpenKeyExW", "RegCreateKeyW", "RegQueryValueExW", "RegSetValueExW", "RegEnumValueW",
        "RegDeleteValueW", "RegDeleteTreeW", "RegCloseKey",
        // text
        "FormatMessageW", "MultiByteToWideChar", "WideCharToMultiByte", "ExpandEnvironmentStringsW",
        "GetLocalTime", "GetDateFormatW", "GetTimeFormatW", "GetKeyboardLayout", "MapVirtualKeyExA",
        "GetKeyNameTextA"};
    return calls;
}

}  // namespace

void FaultPlan::RequireKnown(const std::string& call) {
    if (SeamCalls().count(call) == 0) {
        throw std::invalid_argument("no call of the seam is named '" + call + "'");
    }
}

void FaultPlan::FailNth(std::string call, int nth, std::uint32_t error) {
    RequireKnown(call);
    faults_.push_back({std::move(call), nth, error});
}

void FaultPlan::FailEvery(std::string call, std::uint32_t error) {
    RequireKnown(call);
    faults_.push_back({std::move(call), 0, error});
}

std::optional<std::uint32_t> FaultPlan::Check(std::string_view call) {
    auto count = counts_.find(call);
    if (count == counts_.end()) count = counts_.emplace(std::string(call), 0).first;
    const int nth = ++count->second;
    for (const auto& f : faults_) {
        if (f.call == call && (f.nth == 0 || f.nth == nth)) return f.error;
    }
    return std::nullopt;
}

}  // namespace zk::sim
