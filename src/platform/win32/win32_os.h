#pragma once
// The real backend: each method calls the system once and keeps its last error.

#include "platform/os.h"

namespace zk {

class Win32Os final : public Os {
  public:
    std::uint32_t GetLastError() const override { return last_; }

    Handle CreateEventA(bool manualReset, bool initialState, const Ansi& name) override;
    Handle CreateMutexA(bool initialOwner, const Ansi& name) override;
    Handle OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) override;
    bool SetEvent(Handle event) override;
    std::uint32_t WaitForSingleObject(Handle object, std::uint32_t milliseconds) override;
    bool CloseHandle(Handle object) override;
    std::uint32_t GetCurrentThreadId() override;
    std::uint32_t GetCurrentProcessId() override;
    bool CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                        bool inheritHandles, std::uint32_t creationFlags,
                        const StartupInfo& startupInfo,
                        ProcessInformation& processInformation) override;
    [[noreturn]] void ExitProcess(std::uint32_t exitCode) override;

    std::uint32_t FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                 std::uint32_t languageId, std::span<char16_t> buffer) override;
    std::uint32_t GetModuleFileNameW(std::span<char16_t> buffer) override;
    Hinstance GetModuleHandleW() override;
    Text MultiByteToWideChar(std::string_view ansi) override;
    Ansi WideCharToMultiByte(std::u16string_view text) override;
    SystemTime GetLocalTime() override;
    Text GetDateFormatW(const SystemTime& time) override;
    Text GetTimeFormatW(const SystemTime& time) override;
    Handle CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                       std::uint32_t creationDisposition) override;
    bool WriteFile(Handle file, std::span<const std::byte> bytes) override;
    bool ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) override;
    bool DeleteFileW(const Text& path) override;

    std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                  std::span<char16_t> path) override;

    Hdesk GetThreadDesktop(std::uint32_t threadId) override;
    Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) override;
    Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                         std::uint32_t desiredAccess) override;
    bool SetThreadDesktop(Hdesk desktop) override;
    bool SwitchDesktop(Hdesk desktop) override;
    bool CloseDesktop(Hdesk desktop) override;
    Text GetUserObjectInformationW(Handle object) override;
    std::vector<Text> EnumDesktopsW() override;

    std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                std::uint32_t virtualKey) override;
    bool UnregisterHotKey(Hwnd window, int id) override;
    Hkl GetKeyboardLayout(std::uint32_t threadId) override;
    std::uint32_t MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) override;
    int GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) override;

    bool SetPropA(Hwnd window, const Ansi& name, Handle data) override;
    Handle GetPropW(Hwnd window, const Text& name) override;
    bool SetPropW(Hwnd window, const Text& name, Handle data) override;
    Handle RemovePropW(Hwnd window, const Text& name) override;
    bool IsWindow(Hwnd window) override;
    std::uint32_t GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) override;
    std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) override;
    std::intptr_t GetWindowLongPtrW(Hwnd window, int index) override;
    Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message, Wparam wParam,
                            Lparam lParam) override;

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
    bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    int GetMessageW(Msg& message) override;
    Lresult DispatchMessageW(const Msg& message) override;
    void PostQuitMessage(int exitCode) override;

    std::int32_t RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                               std::uint32_t desiredAccess, Hkey& result) override;
    std::int32_t RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) override;
    std::int32_t RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                  std::byte* data, std::uint32_t* dataSize) override;
    std::int32_t RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                std::span<const std::byte> data) override;
    std::int32_t RegDeleteValueW(Hkey key, const Text& valueName) override;
    std::int32_t RegDeleteTreeW(Hkey root, const Text& subKey) override;
    std::int32_t RegCloseKey(Hkey key) override;

  private:
    // Called with the system call's result as argument, so the error is read right after it.
    template <class T>
    T Keep(T result) {
        TakeLastError();
        return result;
    }
    void TakeLastError();
    std::uint32_t last_ = 0;
};

}  // namespace zk
