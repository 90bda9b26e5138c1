#include "platform/win32/win32_messages.h"

#include "platform/win32/last_error.h"

namespace zk::win32 {
namespace {

MSG ToMsg(const Msg& m) {
    return MSG{m.hwnd, m.message, m.wParam, m.lParam, m.time, POINT{m.ptX, m.ptY}};
}
Msg FromMsg(const MSG& m) {
    return Msg{m.hwnd, m.message, m.wParam, m.lParam, m.time, m.pt.x, m.pt.y};
}

}  // namespace

bool Win32Messages::PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    return Keep(::PostMessageW(window, message, wParam, lParam)) != 0;
}
int Win32Messages::GetMessageW(Msg& message) {
    MSG m{};
    const int result = Keep(::GetMessageW(&m, nullptr, 0, 0));
    message = FromMsg(m);
    return result;
}
bool Win32Messages::PeekMessageW(Msg& message) {
    MSG m{};
    const BOOL got = Keep(::PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE));
    message = FromMsg(m);
    return got != 0;
}
bool Win32Messages::TranslateMessage(const Msg& message) {
    const MSG m = ToMsg(message);
    return Keep(::TranslateMessage(&m)) != 0;
}
Lresult Win32Messages::DispatchMessageW(const Msg& message) {
    const MSG m = ToMsg(message);
    return Keep(::DispatchMessageW(&m));
}
void Win32Messages::PostQuitMessage(int exitCode) {
    ::PostQuitMessage(exitCode);
    TakeLastError();
}
// MWMO_INPUTAVAILABLE: input that was already seen but not taken out of the queue wakes it too.
std::uint32_t Win32Messages::MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                                       std::uint32_t milliseconds,
                                                       std::uint32_t wakeMask) {
    return Keep(::MsgWaitForMultipleObjectsEx(static_cast<DWORD>(handles.size()), handles.data(),
                                              milliseconds, wakeMask, MWMO_INPUTAVAILABLE));
}
std::uintptr_t Win32Messages::SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) {
    return Keep(::SetTimer(window, id, milliseconds, nullptr));
}
bool Win32Messages::KillTimer(Hwnd window, std::uintptr_t id) {
    return Keep(::KillTimer(window, id)) != 0;
}

}  // namespace zk::win32
