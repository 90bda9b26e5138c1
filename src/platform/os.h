#pragma once
// The platform seam: every call the program makes to the operating system goes through Os.
// One method per system call, named as the system names it, taking the arguments that vary.
// The backend takes the thread's last error right after each call; read it with GetLastError().

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The system's own handle types (on Windows these are exactly the types of <windows.h>).
struct HWND__;
struct HDESK__;
struct HKEY__;
struct HKL__;
struct HINSTANCE__;

#if defined(_WIN32)
#define ZK_CALLBACK __stdcall
#else
#define ZK_CALLBACK
#endif

namespace zk {

using Hwnd = HWND__*;
using Hdesk = HDESK__*;
using Hkey = HKEY__*;
using Hkl = HKL__*;
using Hinstance = HINSTANCE__*;
using Handle = void*;
using Lresult = std::intptr_t;
using Wparam = std::uintptr_t;
using Lparam = std::intptr_t;

// Text is UTF-16 on both platforms; Ansi is text in the system's default ANSI code page.
using Text = std::u16string;
using Ansi = std::string;

using WndProc = Lresult(ZK_CALLBACK*)(Hwnd, std::uint32_t, Wparam, Lparam);

// Handles are pointer-sized values; these turn numbers into handles and back.
template <class H>
H HandleFrom(std::intptr_t value) {
    return reinterpret_cast<H>(value);
}
template <class H>
std::intptr_t HandleValue(H handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

// Predefined registry root: a 32-bit value sign-extended to the handle's width, as the system
// defines it.
inline Hkey HkeyCurrentUser() {
    return HandleFrom<Hkey>(static_cast<std::int32_t>(0x80000001));
}
inline Handle InvalidHandleValue() {
    return HandleFrom<Handle>(-1);
}

// Window messages.
inline constexpr std::uint32_t WmCreate = 0x0001;
inline constexpr std::uint32_t WmDestroy = 0x0002;
inline constexpr std::uint32_t WmClose = 0x0010;
inline constexpr std::uint32_t WmQueryEndSession = 0x0011;
inline constexpr std::uint32_t WmQuit = 0x0012;
inline constexpr std::uint32_t WmEndSession = 0x0016;
inline constexpr std::uint32_t WmCopyData = 0x004A;
inline constexpr std::uint32_t WmGetIcon = 0x007F;
inline constexpr std::uint32_t WmSetIcon = 0x0080;
inline constexpr std::uint32_t WmNcDestroy = 0x0082;
inline constexpr std::uint32_t WmHotKey = 0x0312;
inline constexpr std::uint32_t WmUser = 0x0400;

// Win32 error codes the program meets.
inline constexpr std::uint32_t ErrorSuccess = 0;
inline constexpr std::uint32_t ErrorFileNotFound = 2;
inline constexpr std::uint32_t ErrorPathNotFound = 3;
inline constexpr std::uint32_t ErrorAccessDenied = 5;
inline constexpr std::uint32_t ErrorInvalidHandle = 6;
inline constexpr std::uint32_t ErrorNotEnoughMemory = 8;
inline constexpr std::uint32_t ErrorInvalidParameter = 87;
inline constexpr std::uint32_t ErrorInsufficientBuffer = 122;
inline constexpr std::uint32_t ErrorBusy = 170;
inline constexpr std::uint32_t ErrorAlreadyExists = 183;
inline constexpr std::uint32_t ErrorMoreData = 234;
inline constexpr std::uint32_t ErrorInvalidWindowHandle = 1400;
inline constexpr std::uint32_t ErrorHotkeyAlreadyRegistered = 1409;
inline constexpr std::uint32_t ErrorHotkeyNotRegistered = 1419;

// Other system constants used above the seam.
inline constexpr std::uint32_t WaitObject0 = 0;
inline constexpr std::uint32_t WaitTimeout = 258;
inline constexpr std::uint32_t StartfUseShowWindow = 0x00000001;
inline constexpr std::uint16_t SwShowMinimized = 2;
inline constexpr std::uint32_t FileAppendData = 0x0004;
inline constexpr std::uint32_t FileShareRead = 0x0001;
inline constexpr std::uint32_t FileShareWrite = 0x0002;
inline constexpr std::uint32_t OpenAlways = 4;
inline constexpr std::uint32_t OpenExisting = 3;
inline constexpr std::uint32_t GenericRead = 0x80000000;
inline constexpr std::uint32_t Synchronize = 0x00100000;
inline constexpr std::uint32_t EventModifyState = 0x0002;
inline constexpr std::uint32_t DesktopSwitchDesktop = 0x0100;
inline constexpr std::uint32_t GenericAll = 0x10000000;
inline constexpr int GwlpWndProc = -4;
inline constexpr int GwlpUserData = -21;
inline constexpr std::uint32_t GwOwner = 4;
inline constexpr std::uint32_t KeyQueryValue = 0x0001;
inline constexpr std::uint32_t KeySetValue = 0x0002;
inline constexpr std::uint32_t KeyRead = 0x20019;
inline constexpr std::int32_t SOk = 0;
inline constexpr std::int32_t SFalse = 1;
inline constexpr std::int32_t EInvalidArg = static_cast<std::int32_t>(0x80070057);
inline constexpr int CsidlLocalAppData = 0x001C;
inline constexpr int CsidlFlagCreate = 0x8000;

// The system's COPYDATASTRUCT, laid out as on 64-bit Windows.
struct CopyDataStruct {
    std::uintptr_t dwData;
    std::uint32_t cbData;
    const void* lpData;
};

// A queued message as GetMessageW hands it over.
struct Msg {
    Hwnd hwnd = nullptr;
    std::uint32_t message = 0;
    Wparam wParam = 0;
    Lparam lParam = 0;
    std::uint32_t time = 0;
    std::int32_t ptX = 0;
    std::int32_t ptY = 0;
};

// The fields of STARTUPINFOW that the program sets; all others are zero.
struct StartupInfo {
    std::optional<Text> lpDesktop;
    std::optional<Text> lpTitle;
    std::uint32_t dwFlags = 0;
    std::uint16_t wShowWindow = 0;
};

struct ProcessInformation {
    Handle hProcess = nullptr;
    Handle hThread = nullptr;
    std::uint32_t dwProcessId = 0;
    std::uint32_t dwThreadId = 0;
};

struct SystemTime {
    std::uint16_t wYear = 0, wMonth = 0, wDayOfWeek = 0, wDay = 0;
    std::uint16_t wHour = 0, wMinute = 0, wSecond = 0, wMilliseconds = 0;
};

class Os {
  public:
    virtual ~Os() = default;

    // The thread's last error, as taken right after the previous call through this object.
    [[nodiscard]] virtual std::uint32_t GetLastError() const = 0;

    // --- kernel32: kernel objects and processes
    [[nodiscard]] virtual Handle CreateEventA(bool manualReset, bool initialState,
                                              const Ansi& name) = 0;
    [[nodiscard]] virtual Handle CreateMutexA(bool initialOwner, const Ansi& name) = 0;
    [[nodiscard]] virtual Handle OpenEventA(std::uint32_t desiredAccess, bool inherit,
                                            const Ansi& name) = 0;
    virtual bool SetEvent(Handle event) = 0;
    [[nodiscard]] virtual std::uint32_t WaitForSingleObject(Handle object,
                                                            std::uint32_t milliseconds) = 0;
    virtual bool CloseHandle(Handle object) = 0;
    [[nodiscard]] virtual std::uint32_t GetCurrentThreadId() = 0;
    [[nodiscard]] virtual std::uint32_t GetCurrentProcessId() = 0;
    [[nodiscard]] virtual bool CreateProcessW(const std::optional<Text>& applicationName,
                                              const Text& commandLine, bool inheritHandles,
                                              std::uint32_t creationFlags,
                                              const StartupInfo& startupInfo,
                                              ProcessInformation& processInformation) = 0;
    [[noreturn]] virtual void ExitProcess(std::uint32_t exitCode) = 0;

    // --- kernel32: text, module, time, files
    [[nodiscard]] virtual std::uint32_t FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                                       std::uint32_t languageId,
                                                       std::span<char16_t> buffer) = 0;
    [[nodiscard]] virtual std::uint32_t GetModuleFileNameW(std::span<char16_t> buffer) = 0;
    [[nodiscard]] virtual Hinstance GetModuleHandleW() = 0;
    // MultiByteToWideChar / WideCharToMultiByte with the system's default ANSI code page.
    [[nodiscard]] virtual Text MultiByteToWideChar(std::string_view ansi) = 0;
    [[nodiscard]] virtual Ansi WideCharToMultiByte(std::u16string_view text) = 0;
    [[nodiscard]] virtual SystemTime GetLocalTime() = 0;
    // The user's regional short date and long time for a local time.
    [[nodiscard]] virtual Text GetDateFormatW(const SystemTime& time) = 0;
    [[nodiscard]] virtual Text GetTimeFormatW(const SystemTime& time) = 0;
    [[nodiscard]] virtual Handle CreateFileW(const Text& path, std::uint32_t access,
                                             std::uint32_t shareMode,
                                             std::uint32_t creationDisposition) = 0;
    [[nodiscard]] virtual bool WriteFile(Handle file, std::span<const std::byte> bytes) = 0;
    [[nodiscard]] virtual bool ReadFile(Handle file, std::span<std::byte> buffer,
                                        std::uint32_t& bytesRead) = 0;
    virtual bool DeleteFileW(const Text& path) = 0;

    // --- shell32
    [[nodiscard]] virtual std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                                        std::span<char16_t> path) = 0;

    // --- user32: desktops
    [[nodiscard]] virtual Hdesk GetThreadDesktop(std::uint32_t threadId) = 0;
    [[nodiscard]] virtual Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit,
                                                 std::uint32_t desiredAccess) = 0;
    [[nodiscard]] virtual Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                                               std::uint32_t desiredAccess) = 0;
    virtual bool SetThreadDesktop(Hdesk desktop) = 0;
    virtual bool SwitchDesktop(Hdesk desktop) = 0;
    virtual bool CloseDesktop(Hdesk desktop) = 0;
    // GetUserObjectInformationW with UOI_NAME.
    [[nodiscard]] virtual Text GetUserObjectInformationW(Handle object) = 0;
    // EnumDesktopsW of the process's window station: the desktops' names.
    [[nodiscard]] virtual std::vector<Text> EnumDesktopsW() = 0;

    // --- user32: hotkeys and key names
    [[nodiscard]] virtual std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                                      std::uint32_t virtualKey) = 0;
    [[nodiscard]] virtual bool UnregisterHotKey(Hwnd window, int id) = 0;
    [[nodiscard]] virtual Hkl GetKeyboardLayout(std::uint32_t threadId) = 0;
    [[nodiscard]] virtual std::uint32_t MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType,
                                                         Hkl layout) = 0;
    [[nodiscard]] virtual int GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) = 0;

    // --- user32: window properties and procedures
    virtual bool SetPropA(Hwnd window, const Ansi& name, Handle data) = 0;
    [[nodiscard]] virtual Handle GetPropW(Hwnd window, const Text& name) = 0;
    virtual bool SetPropW(Hwnd window, const Text& name, Handle data) = 0;
    virtual Handle RemovePropW(Hwnd window, const Text& name) = 0;
    [[nodiscard]] virtual bool IsWindow(Hwnd window) = 0;
    [[nodiscard]] virtual std::uint32_t GetWindowThreadProcessId(Hwnd window,
                                                                 std::uint32_t* processId) = 0;
    virtual std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) = 0;
    [[nodiscard]] virtual std::intptr_t GetWindowLongPtrW(Hwnd window, int index) = 0;
    virtual Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message,
                                    Wparam wParam, Lparam lParam) = 0;

    // --- user32: icons
    [[nodiscard]] virtual Hwnd GetWindow(Hwnd window, std::uint32_t command) = 0;
    [[nodiscard]] virtual int GetSystemMetrics(int index) = 0;
    [[nodiscard]] virtual Handle LoadImageA(Hinstance instance, const Ansi& name,
                                            std::uint32_t type, int cx, int cy,
                                            std::uint32_t flags) = 0;
    virtual Lresult SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam,
                                 Lparam lParam) = 0;

    // --- user32: hosting a window
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
    virtual bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) = 0;
    [[nodiscard]] virtual int GetMessageW(Msg& message) = 0;
    virtual Lresult DispatchMessageW(const Msg& message) = 0;
    virtual void PostQuitMessage(int exitCode) = 0;

    // --- advapi32: registry (results are Win32 error codes)
    [[nodiscard]] virtual std::int32_t RegOpenKeyExW(Hkey root, const Text& subKey,
                                                     std::uint32_t options,
                                                     std::uint32_t desiredAccess, Hkey& result) = 0;
    [[nodiscard]] virtual std::int32_t RegCreateKeyW(Hkey root, const Text& subKey,
                                                     Hkey& result) = 0;
    [[nodiscard]] virtual std::int32_t RegQueryValueExW(Hkey key, const Text& valueName,
                                                        std::uint32_t* type, std::byte* data,
                                                        std::uint32_t* dataSize) = 0;
    [[nodiscard]] virtual std::int32_t RegSetValueExW(Hkey key, const Text& valueName,
                                                      std::uint32_t type,
                                                      std::span<const std::byte> data) = 0;
    virtual std::int32_t RegDeleteValueW(Hkey key, const Text& valueName) = 0;
    virtual std::int32_t RegDeleteTreeW(Hkey root, const Text& subKey) = 0;
    virtual std::int32_t RegCloseKey(Hkey key) = 0;
};

}  // namespace zk
