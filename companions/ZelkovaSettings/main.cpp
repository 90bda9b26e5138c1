// ZelkovaSettings.exe: the settings window (settings_model.h decides what it means). With
// --start it does what StartZelkova2.exe does, for the log-on entries that name it.
#include <windows.h>

#include <commctrl.h>

#include "ZelkovaSettings/settings_dialog.h"
#include "diagnostics/err_log.h"
#include "diagnostics/win_api_error.h"
#include "launch/entry_points.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_os.h"
#include "tool_support/launcher.h"
#include "tool_support/start_for_user.h"

using zk::win32::W;

using namespace zk;
using namespace zk::companion;

namespace {

// The hotkeys' list and the tabs come from the common controls, which no other window of Zelkova2
// uses. They are loaded here, for the life of this process, and not imported by Zelkova2Core.dll:
// every program maps that library, and under Wine the common controls cost each process about 1.8
// MB.
bool LoadCommonControls() {
    const HMODULE library = ::LoadLibraryW(L"comctl32.dll");
    if (library == nullptr) return false;
    using Initialize = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto initialize = reinterpret_cast<Initialize>(
        reinterpret_cast<void*>(::GetProcAddress(library, "InitCommonControlsEx")));
    INITCOMMONCONTROLSEX controls{sizeof controls,
                                  ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES | ICC_TAB_CLASSES};
    return initialize != nullptr && initialize(&controls) != FALSE;
}

}  // namespace

ZK_ENTRY int ZkZelkovaSettings(int show) {
    const wchar_t* commandLine = ::GetCommandLineW();
    Win32Os os;
    ProcessContext context(os, [&](const Text& what) {
        ErrLog(os).LogError(LogMessage(u"ZelkovaSettings: " + what));
    });
    if (std::wstring(commandLine).find(L"--start") != std::wstring::npos) {
        return StartForTheUser(os);
    }
    if (!LoadCommonControls()) {
        const Text why =
            u"The settings window needs the system's common controls (comctl32.dll): " +
            ApiErrorText(os, ::GetLastError());
        ::MessageBoxW(nullptr, W(why), L"Zelkova2 settings", MB_OK | MB_ICONERROR);
        return 1;
    }
    SettingsDialog dialog(os);
    if (dialog.Window() == nullptr) return 1;
    ::ShowWindow(dialog.Window(), show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (dialog.IsDialogMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}
