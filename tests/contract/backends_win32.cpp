#include <windows.h>

#include <fstream>
#include <sstream>

#include "contract/backends.h"
#include "platform/win32/win32_os.h"
#include "support/recorder_file.h"

namespace zk::contract {

Backend SimBackend();

namespace {

bool RunningUnderWine() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

Backend Win32Backend() {
    Backend b;
    b.name = "Win32";
    b.make = [] { return std::make_unique<Win32Os>(); };
    b.switchDesktopLeavesInputDesktop = RunningUnderWine();
    b.registryTerminatesText = RunningUnderWine();
    b.keyNamesFromX = RunningUnderWine();
    b.recorderPath = [](Os&) {
        support::StartRecording();
        return support::RecorderPath();
    };
    b.observe = [](Os& os, const ProcessInformation& pi) -> std::optional<Recorded> {
        if (os.WaitForSingleObject(pi.hProcess, 20000) != WaitObject0) return std::nullopt;
        const auto records = support::ReadRecords();
        if (records.empty()) return std::nullopt;
        const auto& r = records.back();
        return Recorded{r.commandLine, r.desktop, r.title};
    };
    return b;
}

}  // namespace

std::vector<Backend> Backends() {
    return {SimBackend(), Win32Backend()};
}

}  // namespace zk::contract
