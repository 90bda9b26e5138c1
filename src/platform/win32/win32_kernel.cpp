#include "platform/win32/win32_kernel.h"

#include <windows.h>

#include <sddl.h>
#include <tlhelp32.h>

#include <vector>

#include "platform/win32/last_error.h"

namespace zk::win32 {

Handle Win32Kernel::CreateEventA(bool manualReset, bool initialState, const Ansi& name) {
    return Keep(::CreateEventA(nullptr, manualReset, initialState, name.c_str()));
}
Handle Win32Kernel::CreateMutexA(bool initialOwner, const Ansi& name) {
    return Keep(::CreateMutexA(nullptr, initialOwner, name.c_str()));
}
Handle Win32Kernel::OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) {
    return Keep(::OpenEventA(desiredAccess, inherit, name.c_str()));
}
bool Win32Kernel::SetEvent(Handle event) {
    return Keep(::SetEvent(event)) != 0;
}
std::uint32_t Win32Kernel::WaitForSingleObject(Handle object, std::uint32_t milliseconds) {
    return Keep(::WaitForSingleObject(object, milliseconds));
}
std::uint32_t Win32Kernel::WaitForMultipleObjects(std::span<const Handle> handles, bool waitAll,
                                                  std::uint32_t milliseconds) {
    return Keep(::WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(),
                                         waitAll, milliseconds));
}
void Win32Kernel::Sleep(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}
bool Win32Kernel::CloseHandle(Handle object) {
    return Keep(::CloseHandle(object)) != 0;
}
Handle Win32Kernel::CreateFileMappingW(std::uint32_t size, const Text& name,
                                       const Text& securityDescriptor) {
    SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, FALSE};
    if (!Keep(::ConvertStringSecurityDescriptorToSecurityDescriptorW(
            W(securityDescriptor), SDDL_REVISION_1, &attributes.lpSecurityDescriptor, nullptr))) {
        return nullptr;
    }
    const HANDLE mapping = Keep(
        ::CreateFileMappingW(INVALID_HANDLE_VALUE, &attributes, PAGE_READWRITE, 0, size, W(name)));
    ::LocalFree(attributes.lpSecurityDescriptor);
    return mapping;
}
Text Win32Kernel::GetTokenUserSid() {
    HANDLE token = nullptr;
    if (!Keep(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token))) return {};
    alignas(TOKEN_USER) BYTE buffer[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    LPWSTR text = nullptr;
    const bool read =
        Keep(::GetTokenInformation(token, TokenUser, buffer, sizeof buffer, &size)) &&
        Keep(::ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(buffer)->User.Sid, &text));
    ::CloseHandle(token);
    if (!read) return {};
    Text sid(reinterpret_cast<const char16_t*>(text));
    ::LocalFree(text);
    return sid;
}
void* Win32Kernel::MapViewOfFile(Handle mapping, std::uint32_t size) {
    return Keep(::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, size));
}
bool Win32Kernel::UnmapViewOfFile(void* view) {
    return Keep(::UnmapViewOfFile(view)) != 0;
}
std::uint32_t Win32Kernel::GetCurrentThreadId() {
    return Keep(::GetCurrentThreadId());
}
std::uint32_t Win32Kernel::GetCurrentProcessId() {
    return Keep(::GetCurrentProcessId());
}

bool Win32Kernel::CreateProcessW(const std::optional<Text>& applicationName,
                                 const Text& commandLine, bool inheritHandles,
                                 std::uint32_t creationFlags, const StartupInfo& startupInfo,
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

Handle Win32Kernel::OpenProcess(std::uint32_t desiredAccess, bool inherit,
                                std::uint32_t processId) {
    return Keep(::OpenProcess(desiredAccess, inherit, processId));
}

bool Win32Kernel::GetProcessTimes(Handle process, std::uint64_t& creationTime) {
    FILETIME created{}, unused{};
    const BOOL ok = Keep(::GetProcessTimes(process, &created, &unused, &unused, &unused));
    creationTime = (std::uint64_t{created.dwHighDateTime} << 32) | created.dwLowDateTime;
    return ok != 0;
}

std::vector<ProcessEntry> Win32Kernel::CreateToolhelp32Snapshot() {
    std::vector<ProcessEntry> entries;
    const HANDLE snapshot = Keep(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (snapshot == INVALID_HANDLE_VALUE) return entries;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more;
         more = ::Process32NextW(snapshot, &entry)) {
        entries.push_back({entry.th32ProcessID, entry.th32ParentProcessID,
                           Text(reinterpret_cast<const char16_t*>(entry.szExeFile))});
    }
    ::CloseHandle(snapshot);
    TakeLastError();
    return entries;
}

void Win32Kernel::ExitProcess(std::uint32_t exitCode) {
    ::ExitProcess(exitCode);
}
std::uint32_t Win32Kernel::GetModuleFileNameW(std::span<char16_t> buffer) {
    return Keep(::GetModuleFileNameW(nullptr, W(buffer.data()), static_cast<DWORD>(buffer.size())));
}
Hinstance Win32Kernel::GetModuleHandleW() {
    return Keep(::GetModuleHandleW(nullptr));
}
std::uint64_t Win32Kernel::GetTickCount64() {
    return Keep(::GetTickCount64());
}

}  // namespace zk::win32
