#pragma once
// The simulated registry: the current user's hive and the keys the program holds open.

#include <map>

#include "platform/api/registry_api.h"
#include "platform/sim/registry_hive.h"
#include "platform/sim/session.h"

namespace zk::sim {

class SimRegistry : public virtual RegistryApi {
  public:
    explicit SimRegistry(Session& session);

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

    // ----- driving from a test
    // Registry values as another program wrote them.
    RegistryHive& registry() { return hive_; }
    [[nodiscard]] std::size_t OpenKeyCount() const { return keys_.size(); }

  private:
    struct KeyHandle {
        Text path;
        std::uint32_t access;
    };
    std::int32_t OpenKey(Hkey root, const Text& subKey, std::uint32_t access, bool create,
                         Hkey& result);
    const KeyHandle* LookupKey(Hkey key) const;
    [[nodiscard]] std::int32_t Failed() const { return static_cast<std::int32_t>(session_.last); }
    // Sets the events of the notices that a change at `path` answers, and forgets them.
    void Notify(const std::function<bool(const Text& watched, bool subtree)>& answers);

    struct Notice {
        std::intptr_t key;
        Text path;
        bool subtree;
        int event;  // the event object, kept alive until the notice is answered
    };
    std::vector<Notice> notices_;

    Session& session_;
    RegistryHive hive_;
    std::map<std::intptr_t, KeyHandle> keys_;
    std::intptr_t nextKey_ = 0x100;
};

}  // namespace zk::sim
