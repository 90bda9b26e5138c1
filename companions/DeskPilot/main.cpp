// DeskPilot.exe N: the switcher of desktop N. It waits on its desktop's signals: a switch hotkey
// pressed here becomes a request to the controller (after a picture of this desktop is taken
// for the preview), the preview hotkey shows the preview, and it ends with the controller.
#include <windows.h>

#include "DeskPilot/preview_window.h"
#include "common/companion.h"
#include "common/thumbnails.h"
#include "signals/event_names.h"

using namespace zk;
using namespace zk::companion;

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const int desk = DesktopArgument(::GetCommandLineW());
    if (desk < 1 || desk > 4) return 2;
    const HANDLE parent = OpenParentProcess();
    if (parent == nullptr) return 0;  // the controller is gone already

    const auto n = static_cast<std::int16_t>(desk);
    std::vector<HANDLE> handles;
    for (std::int16_t target = 1; target <= 4; ++target) {
        handles.push_back(OpenSignal(EventNames::EventIndex(KindSwitchTo, n, target)));
    }
    for (const std::int32_t kind : {KindShowPreview, KindShowPopup, KindReadReg, KindShutdown}) {
        handles.push_back(OpenSignal(EventNames::EventIndex(kind, n, 0)));
    }
    handles.push_back(parent);

    SharedThumbnail own(desk);
    auto requestSwitch = [](int target) {
        (void)RaiseSignal(EventNames::EventIndex(KindSwitchTo, kControllerBlock,
                                                 static_cast<std::int16_t>(target)));
    };
    PreviewWindow preview(desk, requestSwitch);
    WaitLoop(handles, [&](std::size_t signal) {
        if (signal < 4) {  // switch hotkey: this desktop is still the one shown
            own.Capture();
            preview.Hide();
            requestSwitch(static_cast<int>(signal) + 1);
        } else if (signal == 4 || signal == 5) {  // the preview, or the popup switcher
            own.Capture();
            preview.Show();
        } else if (signal == 7) {
            return false;  // ShutdownSwitcherN
        }
        return true;  // ReadRegSwitcherN: the switcher keeps no settings
    });
    for (const HANDLE h : handles)
        ::CloseHandle(h);
    return 0;
}
