// The user's start, with what fails said in a message box (Windows only: it is a shell's part).
#include "tool_support/start_for_user.h"

#include <windows.h>

#include "diagnostics/win_api_error.h"
#include "platform/win32/wide_text.h"
#include "tool_support/launcher.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr std::uint32_t kAnswerWithin = 30000;

void Say(const Text& text, UINT icon) {
    ::MessageBoxW(nullptr, W(text), L"Zelkova2", MB_OK | icon | MB_SETFOREGROUND);
}

}  // namespace

int StartForTheUser(Os& os) {
    Launch launch = StartZelkova(os, kAnswerWithin);
    switch (launch.result) {
        case LaunchResult::Started:
            return 0;
        case LaunchResult::AlreadyRunning:
            if (!ShowRunningZelkova(os)) Say(u"Zelkova2 is already running.", MB_ICONINFORMATION);
            return 0;
        case LaunchResult::ProgramsMissing:
            Say(u"Zelkova2 cannot start: " + MissingProgramsText(os, launch.notFound),
                MB_ICONERROR);
            return 1;
        case LaunchResult::Failed:
            Say(u"Zelkova2.exe could not be started: " + ApiErrorText(os, launch.error),
                MB_ICONWARNING);
            return 1;
        case LaunchResult::NoAnswer:
            Say(u"Zelkova2 started but did not come up. Its error log says why.", MB_ICONWARNING);
            return 1;
    }
    return 1;
}

}  // namespace zk::companion
