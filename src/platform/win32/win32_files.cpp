#include "platform/win32/win32_files.h"

#include <windows.h>

#include <shlobj.h>

#include "platform/win32/last_error.h"

namespace zk::win32 {

Handle Win32Files::CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                               std::uint32_t creationDisposition) {
    return Keep(::CreateFileW(W(path), access, shareMode, nullptr, creationDisposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}
bool Win32Files::WriteFile(Handle file, std::span<const std::byte> bytes) {
    DWORD written = 0;
    return Keep(::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                            nullptr)) != 0;
}
bool Win32Files::ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) {
    DWORD read = 0;
    const BOOL ok =
        Keep(::ReadFile(file, buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr));
    bytesRead = read;
    return ok != 0;
}
bool Win32Files::DeleteFileW(const Text& path) {
    return Keep(::DeleteFileW(W(path))) != 0;
}
std::uint32_t Win32Files::GetFileAttributesW(const Text& path) {
    return Keep(::GetFileAttributesW(W(path)));
}
std::int32_t Win32Files::SHGetFolderPathW(int csidl, std::uint32_t flags,
                                          std::span<char16_t> path) {
    return Keep(::SHGetFolderPathW(nullptr, csidl, nullptr, flags, W(path.data())));
}

}  // namespace zk::win32
