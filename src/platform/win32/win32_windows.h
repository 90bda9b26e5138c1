#pragma once
#include "platform/api/window_api.h"

namespace zk::win32 {

class Win32Windows : public virtual WindowApi {
  public:
    bool SetPropA(Hwnd window, const Ansi& name, Handle data) override;
    Handle GetPropW(Hwnd window, const Text& name) override;
    bool SetPropW(Hwnd window, const Text& name, Handle data) override;
    Handle RemovePropW(Hwnd window, const Text& name) override;
    bool IsWindow(Hwnd window) override;
    bool IsWindowVisible(Hwnd window) override;
    bool IsIconic(Hwnd window) override;
    bool ShowWindow(Hwnd window, int command) override;
    bool SetForegroundWindow(Hwnd window) override;
    bool AllowSetForegroundWindow(std::uint32_t processId) override;
    std::uint32_t GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) override;
    Text GetWindowTextW(Hwnd window) override;
    Text GetClassNameW(Hwnd window) override;
    std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) override;
    std::intptr_t GetWindowLongPtrW(Hwnd window, int index) override;
    Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message, Wparam wParam,
                            Lparam lParam) override;
    std::vector<Hwnd> EnumWindows() override;
    Hwnd GetWindow(Hwnd window, std::uint32_t command) override;
    int GetSystemMetrics(int index) override;
    Handle LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx, int cy,
                      std::uint32_t flags) override;
    Lresult SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    std::uint16_t RegisterClassW(const Text& className, WndProc procedure,
                                 Hinstance instance) override;
    Hwnd CreateWindowExW(std::uint32_t exStyle, const Text& className, const Text& windowName,
                         std::uint32_t style, Hwnd parent, Hinstance instance) override;
    bool DestroyWindow(Hwnd window) override;
    Lresult DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                           Lparam lParam) override;
    Lresult SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    bool SendMessageTimeoutW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam,
                             std::uint32_t flags, std::uint32_t timeout, Lresult& result) override;
};

}  // namespace zk::win32
