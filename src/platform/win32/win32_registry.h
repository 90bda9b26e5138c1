#pragma once
#include "platform/api/registry_api.h"

namespace zk::win32 {

class Win32Registry : public virtual RegistryApi {
  public:
    std::int32_t RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                               std::uint32_t desiredAccess, Hkey& result) override;
    std::int32_t RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) override;
    std::int32_t RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                  std::byte* data, std::uint32_t* dataSize) override;
    std::int32_t RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                std::span<const std::byte> data) override;
    std::int32_t RegEnumValueW(Hkey key, std::uint32_t index, Text& name, std::uint32_t& type,
                               std::vector<std::byte>& data) override;
    std::int32_t RegDeleteValueW(Hkey key, const Text& valueName) override;
    std::int32_t RegDeleteTreeW(Hkey root, const Text& subKey) override;
    std::int32_t RegCloseKey(Hkey key) override;
    std::int32_t RegNotifyChangeKeyValue(Hkey key, bool subtree, Handle event) override;
};

}  // namespace zk::win32
