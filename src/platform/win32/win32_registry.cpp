#include "platform/win32/win32_registry.h"

#include "platform/win32/last_error.h"

namespace zk::win32 {

std::int32_t Win32Registry::RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                                          std::uint32_t desiredAccess, Hkey& result) {
    return Keep(::RegOpenKeyExW(root, W(subKey), options, desiredAccess, &result));
}
std::int32_t Win32Registry::RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) {
    return Keep(::RegCreateKeyW(root, W(subKey), &result));
}
std::int32_t Win32Registry::RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                             std::byte* data, std::uint32_t* dataSize) {
    return Keep(::RegQueryValueExW(key, W(valueName), nullptr, reinterpret_cast<DWORD*>(type),
                                   reinterpret_cast<BYTE*>(data),
                                   reinterpret_cast<DWORD*>(dataSize)));
}
std::int32_t Win32Registry::RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                           std::span<const std::byte> data) {
    return Keep(::RegSetValueExW(key, W(valueName), 0, type,
                                 reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size())));
}
// Value names are at most 16383 characters; the data are fetched with the size the first
// query reports.
std::int32_t Win32Registry::RegEnumValueW(Hkey key, std::uint32_t index, Text& name,
                                          std::uint32_t& type, std::vector<std::byte>& data) {
    std::vector<wchar_t> buffer(16384);
    DWORD nameLength = static_cast<DWORD>(buffer.size());
    DWORD size = 0;
    DWORD valueType = 0;
    LSTATUS status = ::RegEnumValueW(key, index, buffer.data(), &nameLength, nullptr, &valueType,
                                     nullptr, &size);
    if (status == ERROR_SUCCESS) {
        data.assign(size, std::byte{0});
        nameLength = static_cast<DWORD>(buffer.size());
        status = ::RegEnumValueW(key, index, buffer.data(), &nameLength, nullptr, &valueType,
                                 reinterpret_cast<BYTE*>(data.data()), &size);
        data.resize(size);
    }
    TakeLastError();
    name.assign(reinterpret_cast<const char16_t*>(buffer.data()), nameLength);
    type = valueType;
    return status;
}
std::int32_t Win32Registry::RegDeleteValueW(Hkey key, const Text& valueName) {
    return Keep(::RegDeleteValueW(key, W(valueName)));
}
std::int32_t Win32Registry::RegDeleteTreeW(Hkey root, const Text& subKey) {
    return Keep(::RegDeleteTreeW(root, W(subKey)));
}
std::int32_t Win32Registry::RegCloseKey(Hkey key) {
    return Keep(::RegCloseKey(key));
}
std::int32_t Win32Registry::RegNotifyChangeKeyValue(Hkey key, bool subtree, Handle event) {
    return Keep(::RegNotifyChangeKeyValue(key, subtree ? TRUE : FALSE,
                                          REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET,
                                          event, TRUE));
}

}  // namespace zk::win32
