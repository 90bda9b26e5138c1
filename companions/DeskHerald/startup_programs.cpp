#include "DeskHerald/startup_programs.h"

#include "platform/handles.h"
#include "shared/companion_settings.h"

namespace zk::companion {
namespace {

constexpr std::intptr_t kWsVisible = 0x10000000;

// Shown by its program, as its style says: Wine hides every window of a desktop that is not
// the input desktop, and this desktop may not be shown any more when the herald looks.
bool ShowsWindows(Os& os) {
    const Hdesk own = os.GetThreadDesktop(os.GetCurrentThreadId());
    for (const Hwnd window : os.EnumDesktopWindows(own)) {
        if ((os.GetWindowLongPtrW(window, GwlStyle) & kWsVisible) != 0) return true;
    }
    return false;
}

}  // namespace

std::vector<Text> StartupPrograms(Os& os, Registry& registry, int desk) {
    if (!StartProgramsOn(registry, desk)) return {};
    const auto stored = StoredPrograms(os, desk);
    if (!stored) return {kDefaultShell};
    std::vector<Text> programs;
    for (const Text& line : *stored) {
        Text expanded = os.ExpandEnvironmentStringsW(line);
        if (!expanded.empty()) programs.push_back(std::move(expanded));
    }
    return programs;
}

int StartStartupPrograms(Os& os, Registry& registry, int desk) {
    if (ShowsWindows(os)) return 0;
    const Text desktop = os.GetUserObjectInformationW(os.GetThreadDesktop(os.GetCurrentThreadId()));
    int started = 0;
    for (const Text& line : StartupPrograms(os, registry, desk)) {
        StartupInfo si;
        si.lpDesktop = desktop;
        if (TryCreateProcess(os, std::nullopt, line, false, si)) ++started;
    }
    return started;
}

}  // namespace zk::companion
