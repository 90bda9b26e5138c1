#include "platform/win32/win32_windows.h"

#include <vector>

#include "platform/win32/last_error.h"

namespace zk::win32 {
namespace {

static_assert(sizeof(CopyDataStruct) == sizeof(COPYDATASTRUCT));
static_assert(offsetof(CopyDataStruct, cbData) == offsetof(COPYDATASTRUCT, cbData));
static_assert(offsetof(CopyDataStruct, lpData) == offsetof(COPYDATASTRUCT, lpData));
static_assert(std::is_same_v<WndProc, WNDPROC>);

}  // namespace

bool Win32Windows::SetPropA(Hwnd window, const Ansi& name, Handle data) {
    return Keep(::SetPropA(window, name.c_str(), data)) != 0;
}
Handle Win32Windows::GetPropW(Hwnd window, const Text& name) {
    return Keep(::GetPropW(window, W(name)));
}
bool Win32Windows::SetPropW(Hwnd window, const Text& name, Handle data) {
    return Keep(::SetPropW(window, W(name), data)) != 0;
}
Handle Win32Windows::RemovePropW(Hwnd window, const Text& name) {
    return Keep(::RemovePropW(window, W(name)));
}
bool Win32Windows::IsWindow(Hwnd window) {
    return Keep(::IsWindow(window)) != 0;
}
bool Win32Windows::IsWindowVisible(Hwnd window) {
    return Keep(::IsWindowVisible(window)) != 0;
}
bool Win32Windows::IsIconic(Hwnd window) {
    return Keep(::IsIconic(window)) != 0;
}
bool Win32Windows::ShowWindow(Hwnd window, int command) {
    return Keep(::ShowWindow(window, command)) != 0;
}
bool Win32Windows::SetForegroundWindow(Hwnd window) {
    return Keep(::SetForegroundWindow(window)) != 0;
}
bool Win32Windows::AllowSetForegroundWindow(std::uint32_t processId) {
    return Keep(::AllowSetForegroundWindow(processId)) != 0;
}
std::uint32_t Win32Windows::GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) {
    DWORD pid = 0;
    const DWORD tid = Keep(::GetWindowThreadProcessId(window, &pid));
    if (processId != nullptr) *processId = pid;
    return tid;
}
Text Win32Windows::GetWindowTextW(Hwnd window) {
    wchar_t text[256] = {};
    const int n = Keep(::GetWindowTextW(window, text, 256));
    return Text(reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(n > 0 ? n : 0));
}
Text Win32Windows::GetClassNameW(Hwnd window) {
    wchar_t name[256] = {};
    const int n = Keep(::GetClassNameW(window, name, 256));
    return Text(reinterpret_cast<const char16_t*>(name), static_cast<std::size_t>(n > 0 ? n : 0));
}
std::intptr_t Win32Windows::SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) {
    ::SetLastError(0);  // a previous value of 0 is only a failure when the last error says so
    return Keep(::SetWindowLongPtrW(window, index, value));
}
std::intptr_t Win32Windows::GetWindowLongPtrW(Hwnd window, int index) {
    return Keep(::GetWindowLongPtrW(window, index));
}
Lresult Win32Windows::CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message,
                                      Wparam wParam, Lparam lParam) {
    return Keep(::CallWindowProcW(previous, window, message, wParam, lParam));
}
std::vector<Hwnd> Win32Windows::EnumWindows() {
    std::vector<Hwnd> windows;
    auto collect = [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<Hwnd>*>(list)->push_back(window);
        return TRUE;
    };
    Keep(::EnumWindows(collect, reinterpret_cast<LPARAM>(&windows)));
    return windows;
}
Hwnd Win32Windows::GetWindow(Hwnd window, std::uint32_t command) {
    return Keep(::GetWindow(window, command));
}
int Win32Windows::GetSystemMetrics(int index) {
    return Keep(::GetSystemMetrics(index));
}
Handle Win32Windows::LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx,
                                int cy, std::uint32_t flags) {
    return Keep(::LoadImageA(instance, name.c_str(), type, cx, cy, flags));
}
Lresult Win32Windows::SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam,
                                   Lparam lParam) {
    return Keep(::SendMessageA(window, message, wParam, lParam));
}
std::uint16_t Win32Windows::RegisterClassW(const Text& className, WndProc procedure,
                                           Hinstance instance) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = procedure;
    wc.hInstance = instance;
    wc.lpszClassName = W(className);
    return Keep(::RegisterClassW(&wc));
}
Hwnd Win32Windows::CreateWindowExW(std::uint32_t exStyle, const Text& className,
                                   const Text& windowName, std::uint32_t style, Hwnd parent,
                                   Hinstance instance) {
    return Keep(::CreateWindowExW(exStyle, W(className), W(windowName), style, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr,
                                  instance, nullptr));
}
bool Win32Windows::DestroyWindow(Hwnd window) {
    return Keep(::DestroyWindow(window)) != 0;
}
Lresult Win32Windows::DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                                     Lparam lParam) {
    return Keep(::DefWindowProcW(window, message, wParam, lParam));
}
Lresult Win32Windows::SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam,
                                   Lparam lParam) {
    return Keep(::SendMessageW(window, message, wParam, lParam));
}
bool Win32Windows::SendMessageTimeoutW(Hwnd window, std::uint32_t message, Wparam wParam,
                                       Lparam lParam, std::uint32_t flags, std::uint32_t timeout,
                                       Lresult& result) {
    DWORD_PTR answer = 0;
    const LRESULT ok =
        Keep(::SendMessageTimeoutW(window, message, wParam, lParam, flags, timeout, &answer));
    result = static_cast<Lresult>(answer);
    return ok != 0;
}

}  // namespace zk::win32
