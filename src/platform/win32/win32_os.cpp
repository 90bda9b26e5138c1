#include "platform/win32/win32_os.h"

#include <windows.h>

#include <shlobj.h>

#include <cstddef>
#include <vector>

namespace zk {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));
static_assert(sizeof(CopyDataStruct) == sizeof(COPYDATASTRUCT));
static_assert(offsetof(CopyDataStruct, cbData) == offsetof(COPYDATASTRUCT, cbData));
static_assert(offsetof(CopyDataStruct, lpData) == offsetof(COPYDATASTRUCT, lpData));
static_assert(std::is_same_v<WndProc, WNDPROC>);
static_assert(sizeof(SystemTime) == sizeof(SYSTEMTIME));

const wchar_t* W(const Text& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
wchar_t* W(char16_t* text) {
    return reinterpret_cast<wchar_t*>(text);
}
const wchar_t* W(const std::optional<Text>& text) {
    return text ? W(*text) : nullptr;
}

MSG ToMsg(const Msg& m) {
    return MSG{m.hwnd, m.message, m.wParam, m.lParam, m.time, POINT{m.ptX, m.ptY}};
}

}  // namespace

void Win32Os::TakeLastError() {
    last_ = ::GetLastError();
}

Handle Win32Os::CreateEventA(bool manualReset, bool initialState, const Ansi& name) {
    return Keep(::CreateEventA(nullptr, manualReset, initialState, name.c_str()));
}
Handle Win32Os::CreateMutexA(bool initialOwner, const Ansi& name) {
    return Keep(::CreateMutexA(nullptr, initialOwner, name.c_str()));
}
Handle Win32Os::OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) {
    return Keep(::OpenEventA(desiredAccess, inherit, name.c_str()));
}
bool Win32Os::SetEvent(Handle event) {
    return Keep(::SetEvent(event)) != 0;
}
std::uint32_t Win32Os::WaitForSingleObject(Handle object, std::uint32_t milliseconds) {
    return Keep(::WaitForSingleObject(object, milliseconds));
}
bool Win32Os::CloseHandle(Handle object) {
    return Keep(::CloseHandle(object)) != 0;
}
std::uint32_t Win32Os::GetCurrentThreadId() {
    return Keep(::GetCurrentThreadId());
}
std::uint32_t Win32Os::GetCurrentProcessId() {
    return Keep(::GetCurrentProcessId());
}

bool Win32Os::CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                             bool inheritHandles, std::uint32_t creationFlags,
                             const StartupInfo& startupInfo,
                             ProcessInformation& processInformation) {
    std::vector<wchar_t> line(commandLine.begin(), commandLine.end());
    line.push_back(L'\0');
    std::optional<Text> desktop = startupInfo.lpDesktop;  // the system may write to it
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.lpDesktop = desktop ? W(desktop->data()) : nullptr;
    si.lpTitle = const_cast<wchar_t*>(W(startupInfo.lpTitle));
    si.dwFlags = startupInfo.dwFlags;
    si.wShowWindow = startupInfo.wShowWindow;
    PROCESS_INFORMATION pi{};
    const BOOL ok =
        Keep(::CreateProcessW(W(applicationName), line.data(), nullptr, nullptr, inheritHandles,
                              creationFlags, nullptr, nullptr, &si, &pi));
    processInformation = {pi.hProcess, pi.hThread, pi.dwProcessId, pi.dwThreadId};
    return ok != 0;
}
void Win32Os::ExitProcess(std::uint32_t exitCode) {
    ::ExitProcess(exitCode);
}

std::uint32_t Win32Os::FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                      std::uint32_t languageId, std::span<char16_t> buffer) {
    return Keep(::FormatMessageW(flags, nullptr, messageId, languageId, W(buffer.data()),
                                 static_cast<DWORD>(buffer.size()), nullptr));
}
std::uint32_t Win32Os::GetModuleFileNameW(std::span<char16_t> buffer) {
    return Keep(::GetModuleFileNameW(nullptr, W(buffer.data()), static_cast<DWORD>(buffer.size())));
}
Hinstance Win32Os::GetModuleHandleW() {
    return Keep(::GetModuleHandleW(nullptr));
}

Text Win32Os::MultiByteToWideChar(std::string_view ansi) {
    const int n =
        ::MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), nullptr, 0);
    Text text(static_cast<std::size_t>(n), u'\0');
    Keep(::MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()),
                               W(text.data()), n));
    return text;
}
Ansi Win32Os::WideCharToMultiByte(std::u16string_view text) {
    const auto* w = reinterpret_cast<const wchar_t*>(text.data());
    const int size = static_cast<int>(text.size());
    const int n = ::WideCharToMultiByte(CP_ACP, 0, w, size, nullptr, 0, nullptr, nullptr);
    Ansi ansi(static_cast<std::size_t>(n), '\0');
    Keep(::WideCharToMultiByte(CP_ACP, 0, w, size, ansi.data(), n, nullptr, nullptr));
    return ansi;
}
SystemTime Win32Os::GetLocalTime() {
    SYSTEMTIME st{};
    ::GetLocalTime(&st);
    TakeLastError();
    return SystemTime{st.wYear, st.wMonth,  st.wDayOfWeek, st.wDay,
                      st.wHour, st.wMinute, st.wSecond,    st.wMilliseconds};
}
Text Win32Os::GetDateFormatW(const SystemTime& time) {
    const auto* st = reinterpret_cast<const SYSTEMTIME*>(&time);
    const int n = ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, st, nullptr, nullptr, 0);
    Text text(static_cast<std::size_t>(n > 0 ? n : 1), u'\0');
    Keep(::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, st, nullptr, W(text.data()), n));
    return Text(text.c_str());
}
Text Win32Os::GetTimeFormatW(const SystemTime& time) {
    const auto* st = reinterpret_cast<const SYSTEMTIME*>(&time);
    const int n = ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, st, nullptr, nullptr, 0);
    Text text(static_cast<std::size_t>(n > 0 ? n : 1), u'\0');
    Keep(::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, st, nullptr, W(text.data()), n));
    return Text(text.c_str());
}
Handle Win32Os::CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                            std::uint32_t creationDisposition) {
    return Keep(::CreateFileW(W(path), access, shareMode, nullptr, creationDisposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}
bool Win32Os::WriteFile(Handle file, std::span<const std::byte> bytes) {
    DWORD written = 0;
    return Keep(::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                            nullptr)) != 0;
}

bool Win32Os::ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) {
    DWORD read = 0;
    const BOOL ok =
        Keep(::ReadFile(file, buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr));
    bytesRead = read;
    return ok != 0;
}
bool Win32Os::DeleteFileW(const Text& path) {
    return Keep(::DeleteFileW(W(path))) != 0;
}

std::int32_t Win32Os::SHGetFolderPathW(int csidl, std::uint32_t flags, std::span<char16_t> path) {
    return Keep(::SHGetFolderPathW(nullptr, csidl, nullptr, flags, W(path.data())));
}

Hdesk Win32Os::GetThreadDesktop(std::uint32_t threadId) {
    return Keep(::GetThreadDesktop(threadId));
}
Hdesk Win32Os::OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) {
    return Keep(::OpenInputDesktop(flags, inherit, desiredAccess));
}
Hdesk Win32Os::CreateDesktopW(const Text& name, std::uint32_t flags, std::uint32_t desiredAccess) {
    return Keep(::CreateDesktopW(W(name), nullptr, nullptr, flags, desiredAccess, nullptr));
}
bool Win32Os::SetThreadDesktop(Hdesk desktop) {
    return Keep(::SetThreadDesktop(desktop)) != 0;
}
bool Win32Os::SwitchDesktop(Hdesk desktop) {
    return Keep(::SwitchDesktop(desktop)) != 0;
}
bool Win32Os::CloseDesktop(Hdesk desktop) {
    return Keep(::CloseDesktop(desktop)) != 0;
}
Text Win32Os::GetUserObjectInformationW(Handle object) {
    char16_t name[256] = {};
    Keep(
        ::GetUserObjectInformationW(object, UOI_NAME, name, sizeof name - sizeof name[0], nullptr));
    return Text(name);
}

std::vector<Text> Win32Os::EnumDesktopsW() {
    std::vector<Text> names;
    auto collect = [](LPWSTR name, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<Text>*>(list)->emplace_back(
            reinterpret_cast<const char16_t*>(name));
        return TRUE;
    };
    Keep(::EnumDesktopsW(::GetProcessWindowStation(), collect, reinterpret_cast<LPARAM>(&names)));
    return names;
}

std::int32_t Win32Os::RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                     std::uint32_t virtualKey) {
    return Keep(::RegisterHotKey(window, id, modifiers, virtualKey));
}
bool Win32Os::UnregisterHotKey(Hwnd window, int id) {
    return Keep(::UnregisterHotKey(window, id)) != 0;
}
Hkl Win32Os::GetKeyboardLayout(std::uint32_t threadId) {
    return Keep(::GetKeyboardLayout(threadId));
}
std::uint32_t Win32Os::MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) {
    return Keep(::MapVirtualKeyExA(code, mapType, layout));
}
int Win32Os::GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) {
    return Keep(::GetKeyNameTextA(lParam, buffer.data(), static_cast<int>(buffer.size())));
}

bool Win32Os::SetPropA(Hwnd window, const Ansi& name, Handle data) {
    return Keep(::SetPropA(window, name.c_str(), data)) != 0;
}
Handle Win32Os::GetPropW(Hwnd window, const Text& name) {
    return Keep(::GetPropW(window, W(name)));
}
bool Win32Os::SetPropW(Hwnd window, const Text& name, Handle data) {
    return Keep(::SetPropW(window, W(name), data)) != 0;
}
Handle Win32Os::RemovePropW(Hwnd window, const Text& name) {
    return Keep(::RemovePropW(window, W(name)));
}
bool Win32Os::IsWindow(Hwnd window) {
    return Keep(::IsWindow(window)) != 0;
}
std::uint32_t Win32Os::GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) {
    DWORD pid = 0;
    const DWORD tid = Keep(::GetWindowThreadProcessId(window, &pid));
    if (processId != nullptr) *processId = pid;
    return tid;
}
std::intptr_t Win32Os::SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) {
    ::SetLastError(0);  // a previous value of 0 is only a failure when the last error says so
    return Keep(::SetWindowLongPtrW(window, index, value));
}
std::intptr_t Win32Os::GetWindowLongPtrW(Hwnd window, int index) {
    return Keep(::GetWindowLongPtrW(window, index));
}
Lresult Win32Os::CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message,
                                 Wparam wParam, Lparam lParam) {
    return Keep(::CallWindowProcW(previous, window, message, wParam, lParam));
}

Hwnd Win32Os::GetWindow(Hwnd window, std::uint32_t command) {
    return Keep(::GetWindow(window, command));
}
int Win32Os::GetSystemMetrics(int index) {
    return Keep(::GetSystemMetrics(index));
}
Handle Win32Os::LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx, int cy,
                           std::uint32_t flags) {
    return Keep(::LoadImageA(instance, name.c_str(), type, cx, cy, flags));
}
Lresult Win32Os::SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    return Keep(::SendMessageA(window, message, wParam, lParam));
}

std::uint16_t Win32Os::RegisterClassW(const Text& className, WndProc procedure,
                                      Hinstance instance) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = procedure;
    wc.hInstance = instance;
    wc.lpszClassName = W(className);
    return Keep(::RegisterClassW(&wc));
}
Hwnd Win32Os::CreateWindowExW(std::uint32_t exStyle, const Text& className, const Text& windowName,
                              std::uint32_t style, Hwnd parent, Hinstance instance) {
    return Keep(::CreateWindowExW(exStyle, W(className), W(windowName), style, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr,
                                  instance, nullptr));
}
bool Win32Os::DestroyWindow(Hwnd window) {
    return Keep(::DestroyWindow(window)) != 0;
}
Lresult Win32Os::DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    return Keep(::DefWindowProcW(window, message, wParam, lParam));
}
Lresult Win32Os::SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    return Keep(::SendMessageW(window, message, wParam, lParam));
}
bool Win32Os::PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    return Keep(::PostMessageW(window, message, wParam, lParam)) != 0;
}
int Win32Os::GetMessageW(Msg& message) {
    MSG m{};
    const int result = Keep(::GetMessageW(&m, nullptr, 0, 0));
    message = Msg{m.hwnd, m.message, m.wParam, m.lParam, m.time, m.pt.x, m.pt.y};
    return result;
}
Lresult Win32Os::DispatchMessageW(const Msg& message) {
    const MSG m = ToMsg(message);
    return Keep(::DispatchMessageW(&m));
}
void Win32Os::PostQuitMessage(int exitCode) {
    ::PostQuitMessage(exitCode);
    TakeLastError();
}

std::int32_t Win32Os::RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                                    std::uint32_t desiredAccess, Hkey& result) {
    return Keep(::RegOpenKeyExW(root, W(subKey), options, desiredAccess, &result));
}
std::int32_t Win32Os::RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) {
    return Keep(::RegCreateKeyW(root, W(subKey), &result));
}
std::int32_t Win32Os::RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                       std::byte* data, std::uint32_t* dataSize) {
    return Keep(::RegQueryValueExW(key, W(valueName), nullptr, reinterpret_cast<DWORD*>(type),
                                   reinterpret_cast<BYTE*>(data),
                                   reinterpret_cast<DWORD*>(dataSize)));
}
std::int32_t Win32Os::RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                     std::span<const std::byte> data) {
    return Keep(::RegSetValueExW(key, W(valueName), 0, type,
                                 reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size())));
}
std::int32_t Win32Os::RegDeleteValueW(Hkey key, const Text& valueName) {
    return Keep(::RegDeleteValueW(key, W(valueName)));
}
std::int32_t Win32Os::RegDeleteTreeW(Hkey root, const Text& subKey) {
    return Keep(::RegDeleteTreeW(root, W(subKey)));
}
std::int32_t Win32Os::RegCloseKey(Hkey key) {
    return Keep(::RegCloseKey(key));
}

}  // namespace zk
