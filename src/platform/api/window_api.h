#pragma once
// user32: windows, their properties and procedures, messages sent to them, and icons.

#include "platform/api/system_api.h"

namespace zk {

class WindowApi : public virtual SystemApi {
  public:
    // --- window properties and procedures
    virtual bool SetPropA(Hwnd window, const Ansi& name, Handle data) = 0;
    [[nodiscard]] virtual Handle GetPropW(Hwnd window, const Text& name) = 0;
    virtual bool SetPropW(Hwnd window, const Text& name, Handle data) = 0;
    virtual Handle RemovePropW(Hwnd window, const Text& name) = 0;
    [[nodiscard]] virtual bool IsWindow(Hwnd window) = 0;
    [[nodiscard]] virtual bool IsWindowVisible(Hwnd window) = 0;
    [[nodiscard]] virtual bool IsIconic(Hwnd window) = 0;
    virtual bool ShowWindow(Hwnd window, int command) = 0;
    // Only for a window of the input desktop, and only by a process that may: it received the
    // last input, was started by the foreground process, or was given the right.
    virtual bool SetForegroundWindow(Hwnd window) = 0;
    // Lets another process bring a window to the front: only a process that may do so itself
    // (it received the last input) can pass the right on.
    virtual bool AllowSetForegroundWindow(std::uint32_t processId) = 0;
    [[nodiscard]] virtual std::uint32_t GetWindowThreadProcessId(Hwnd window,
                                                                 std::uint32_t* processId) = 0;
    [[nodiscard]] virtual Text GetWindowTextW(Hwnd window) = 0;
    [[nodiscard]] virtual Text GetClassNameW(Hwnd window) = 0;
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

    // --- hosting a window, and messages sent to it
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
};

}  // namespace zk
