#pragma once
// What the companion programs share: their desktop number, the named signals, the controller's
// window, and a wait that ends with the controller.

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zk::companion {

// The number a companion was started with: the last word of its command line (" 2"), or 0
// when it is missing or not 1 to 5.
int DesktopArgument(const wchar_t* commandLine);

// The full name of signal `index` (1 to 54) as ANSI text.
std::string SignalName(std::int16_t index);
// Opens (or creates: the same auto-reset, non-signalled kind) the event of a signal.
HANDLE OpenSignal(std::int16_t index);
// Sets the event of a signal; false when it cannot be opened.
bool RaiseSignal(std::int16_t index);
// True when the controller's events exist, i.e. Zelkova2 runs in this session.
bool ControllerRunning();

// The controller window on the calling thread's desktop: caption "Zelkova 2" and the property
// "Zelkova2_APP5" = 1; nullptr when there is none.
HWND FindControllerWindow();

// A handle to the process that started this one, to wait on; nullptr when it is gone.
HANDLE OpenParentProcess();

// Waits on the handles while it dispatches this thread's window messages. Calls `signalled`
// with the position of a handle that became signalled; the wait ends when it returns false,
// when the last handle (the parent process) is signalled, or on WM_QUIT. Never polls.
void WaitLoop(const std::vector<HANDLE>& handles,
              const std::function<bool(std::size_t)>& signalled);

// The name of a desktop as the system has it, e.g. of the calling thread's.
std::wstring DesktopName(HDESK desktop);

}  // namespace zk::companion
