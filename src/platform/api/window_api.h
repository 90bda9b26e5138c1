#pragma once
// user32: windows, their properties and procedures, messages and the thread's queue, hotkeys and
// icons.

#include "platform/api/system_api.h"

namespace zk {

class WindowApi : public virtual SystemApi {
  public:
    // --- hotkeys
    [[nodiscard]] virtual std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                                      std::uint32_t virtualKey) = 0;
    [[nodiscard]] virtual bool UnregisterHotKey(Hwnd window, int id) = 0;
    // Types keys as the user would; the number of inputs inserted (0 on failure).
    [[nodiscard]] virtual std::uint32_t SendInput(std::span<const KeyInput> keys) = 0;

    // --- window properties and procedures
    virtual bool SetPropA(Hwnd window, const Ansi& name, Handle data) = 0;
    [[nodiscard]] virtual Handle GetPropW(Hwnd window, const Text& name) = 0;
    virtual bool SetPropW(Hwnd window, const Text& name, Handle data) = 0;
    virtual Handle RemovePropW(Hwnd window, const Text& name) = 0;
    [[nodiscard]] virtual bool IsWindow(Hwnd window) = 0;
    [[nodiscard]] virtual bool IsWindowVisible(Hwnd window) = 0;
    [[nodiscard]] virtual std::uint32_t GetWindowThreadProcessId(Hwnd window,
                                                                 std::uint32_t* processId) = 0;
    [[nodiscard]] virtual Text GetWindowTextW(Hwnd window) = 0;
    virtual std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) = 0;
    [[nodiscard]] virtual std::intptr_t GetWindowLongPtrW(Hwnd window, int index) = 0;
    virtual Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message,
                                    Wparam wParam, Lparam lParam) = 0;
    // EnumWindows: the top-level windows of the calling thread's desktop.
    [[nodiscard]] virtual std::vector<Hwnd> EnumWindows() = 0;

    // --- icons
    [[nodiscard]] virtual Hwnd GetWindow(Hwnd window, std::uint32_t command) = 0;
    [[nodiscard]] virtual int GetSystemMetrics(int index) = 0;
    [[nodiscard]] virtual Handle LoadImageA(Hinstance instance, const Ansi& name,
                                            std::uint32_t type, int cx, int cy,
                                            std::uint32_t flags) = 0;
    virtual Lresult SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam,
                                 Lparam lParam) = 0;

    // --- hosting a window, and the thread's messages
    [[nodiscard]] virtual std::uint16_t RegisterClassW(const Text& className, WndProc procedure,
                                                       Hinstance instance) = 0;
    [[nodiscard]] virtual Hwnd CreateWindowExW(std::uint32_t exStyle, const Text& className,
                                               const Text& windowName, std::uint32_t style,
                                               Hwnd parent, Hinstance instance) = 0;
    virtual bool DestroyWindow(Hwnd window) = 0;
    virtual Lresult DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                                   Lparam lParam) = 0;
    virtual Lresult SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam,
                                 Lparam lParam) = 0;
    // False when the message could not be delivered within the time (or the receiver hangs).
    [[nodiscard]] virtual bool SendMessageTimeoutW(Hwnd window, std::uint32_t message,
                                                   Wparam wParam, Lparam lParam,
                                                   std::uint32_t flags, std::uint32_t timeout,
                                                   Lresult& result) = 0;
    virtual bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) = 0;
    [[nodiscard]] virtual int GetMessageW(Msg& message) = 0;
    // PeekMessageW with PM_REMOVE.
    [[nodiscard]] virtual bool PeekMessageW(Msg& message) = 0;
    virtual bool TranslateMessage(const Msg& message) = 0;
    virtual Lresult DispatchMessageW(const Msg& message) = 0;
    virtual void PostQuitMessage(int exitCode) = 0;
    // Waits until a handle is signalled (its position, from WaitObject0 or WaitAbandoned0) or
    // input of `wakeMask` is queued (WaitObject0 + the number of handles).
    [[nodiscard]] virtual std::uint32_t MsgWaitForMultipleObjects(std::span<const Handle> handles,
                                                                  std::uint32_t milliseconds,
                                                                  std::uint32_t wakeMask) = 0;
    virtual std::uintptr_t SetTimer(Hwnd window, std::uintptr_t id, std::uint32_t milliseconds) = 0;
    virtual bool KillTimer(Hwnd window, std::uintptr_t id) = 0;
};

}  // namespace zk
