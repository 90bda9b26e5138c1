#include "DeskHerald/startup_programs.h"

#include "DeskHerald/program_search.h"
#include "diagnostics/err_log.h"
#include "platform/handles.h"
#include "shared/companion_settings.h"

namespace zk::companion {
namespace {

// Shown by its program, as its style says: Wine hides every window of a desktop that is not
// the input desktop, and this desktop may not be shown any more when the herald looks.
bool ShowsWindows(Os& os) {
    const Hdesk own = os.GetThreadDesktop(os.GetCurrentThreadId());
    for (const Hwnd window : os.EnumDesktopWindows(own)) {
        if ((os.GetWindowLongPtrW(window, GwlStyle) & WsVisible) != 0) return true;
    }
    return false;
}

}  // namespace

std::vector<Text> StartupPrograms(Os& os, Registry& registry, int desk) {
    if (!StartProgramsOn(registry, desk)) return {};
    const auto stored = StoredPrograms(os, desk);
    std::vector<Text> programs;
    for (const Text& line : stored.value_or(std::vector<Text>{kDefaultShell})) {
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
        const auto program = TryFindProgram(os, line);
        if (!program) {
            ErrLog(os).LogError(LogMessage(u"The start-up program of desktop " + DecimalText(desk) +
                                           u" was not found: " + line +
                                           u" (give its full path in the settings)"));
            continue;
        }
        StartupInfo si;
        si.lpDesktop = desktop;
        if (TryCreateProcess(os, program->application, program->commandLine, false, si)) {
            ++started;
        }
    }
    return started;
}

}  // namespace zk::companion
