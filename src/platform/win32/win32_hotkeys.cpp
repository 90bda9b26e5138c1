#include "platform/win32/win32_hotkeys.h"

#include <vector>

#include "platform/win32/last_error.h"

namespace zk::win32 {

std::int32_t Win32HotKeys::RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                          std::uint32_t virtualKey) {
    return Keep(::RegisterHotKey(window, id, modifiers, virtualKey));
}
bool Win32HotKeys::UnregisterHotKey(Hwnd window, int id) {
    return Keep(::UnregisterHotKey(window, id)) != 0;
}
std::uint32_t Win32HotKeys::SendInput(std::span<const KeyInput> keys) {
    std::vector<INPUT> inputs(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        inputs[i].type = INPUT_KEYBOARD;
        inputs[i].ki.wVk = keys[i].virtualKey;
        inputs[i].ki.dwFlags = keys[i].up ? KEYEVENTF_KEYUP : 0;
    }
    return Keep(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)));
}

std::int16_t Win32HotKeys::GetAsyncKeyState(int virtualKey) {
    return Keep(::GetAsyncKeyState(virtualKey));
}
bool Win32HotKeys::SystemParametersInfoW(std::uint32_t action, std::uint32_t& value) {
    UINT number = 0;
    const bool read = Keep(::SystemParametersInfoW(action, 0, &number, 0)) != FALSE;
    value = number;
    return read;
}

}  // namespace zk::win32
