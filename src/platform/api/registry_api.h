#pragma once
// advapi32: the registry. Results are Win32 error codes.

#include "platform/api/system_api.h"

namespace zk {

class RegistryApi : public virtual SystemApi {
  public:
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
    // The value at `index` of an open key: its name, type and data.
    [[nodiscard]] virtual std::int32_t RegEnumValueW(Hkey key, std::uint32_t index, Text& name,
                                                     std::uint32_t& type,
                                                     std::vector<std::byte>& data) = 0;
    virtual std::int32_t RegDeleteValueW(Hkey key, const Text& valueName) = 0;
    virtual std::int32_t RegDeleteTreeW(Hkey root, const Text& subKey) = 0;
    virtual std::int32_t RegCloseKey(Hkey key) = 0;
    // Sets `event` once when a value or subkey of the key (and of its subkeys, with `subtree`)
    // changes, or when the key is closed; each notice must be asked for again. The key needs
    // KEY_NOTIFY.
    [[nodiscard]] virtual std::int32_t RegNotifyChangeKeyValue(Hkey key, bool subtree,
                                                               Handle event) = 0;
};

}  // namespace zk
