// DeskHerald.exe N. With N = 5, on the controller's desktop, it is the bridge: window messages
// do not cross desktops but named events do, so it turns each of the controller block's signals
// into the WM_COPYDATA command of the same name, and after a switch tells the new desktop's
// herald that its desktop is shown. With N = 1 to 4, on desktop N, it shows a brief indicator
// when its desktop is shown and, on desktops 2 to 4, starts the user's programs there once.
#include <windows.h>

#include "DeskHerald/indicator_window.h"
#include "DeskHerald/startup_programs.h"
#include "common/companion.h"
#include "signals/event_names.h"

using namespace zk;
using namespace zk::companion;

namespace {

constexpr std::int16_t kFirstCommand = 49;  // SwitchToDesktop1
constexpr std::size_t kSwitchCommands = 4;
constexpr std::size_t kShutdownCommand = 5;  // position of "Shutdown" among 49 to 54
constexpr UINT kSendTimeout = 30000;

void Forward(std::int16_t index) {
    const HWND controller = FindControllerWindow();
    if (controller == nullptr) return;
    std::string text = SignalName(index);
    COPYDATASTRUCT data{0, static_cast<DWORD>(text.size()), text.data()};
    DWORD_PTR result = 0;
    ::SendMessageTimeoutW(controller, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                          SMTO_ABORTIFHUNG, kSendTimeout, &result);
}

void Bridge(HANDLE parent) {
    std::vector<HANDLE> handles;
    for (std::int16_t i = kFirstCommand; i <= kSignalCount; ++i)
        handles.push_back(OpenSignal(i));
    handles.push_back(parent);
    WaitLoop(handles, [&](std::size_t signal) {
        Forward(static_cast<std::int16_t>(kFirstCommand + signal));
        if (signal < kSwitchCommands) {
            const auto shown = static_cast<std::int16_t>(signal + 1);
            (void)RaiseSignal(EventNames::EventIndex(KindUpdate, shown, shown));
        }
        return signal != kShutdownCommand;
    });
    for (const HANDLE h : handles)
        ::CloseHandle(h);
}

void Herald(int desk, HANDLE parent) {
    if (desk >= 2) StartStartupPrograms(desk);
    IndicatorWindow indicator(desk);
    const auto n = static_cast<std::int16_t>(desk);
    std::vector<HANDLE> handles;
    for (std::int16_t shown = 1; shown <= 4; ++shown) {
        handles.push_back(OpenSignal(EventNames::EventIndex(KindUpdate, n, shown)));
    }
    handles.push_back(parent);
    WaitLoop(handles, [&](std::size_t signal) {
        if (static_cast<int>(signal) + 1 == desk) indicator.Show();
        return true;
    });
    for (const HANDLE h : handles)
        ::CloseHandle(h);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const int desk = DesktopArgument(::GetCommandLineW());
    if (desk < 1 || desk > 5) return 2;
    const HANDLE parent = OpenParentProcess();
    if (parent == nullptr) return 0;
    if (desk == kControllerBlock) {
        Bridge(parent);
    } else {
        Herald(desk, parent);
    }
    return 0;
}
