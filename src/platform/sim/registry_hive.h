#pragma once
// The simulated current user's registry hive: keys and typed values, names case-insensitive.

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/os.h"

namespace zk::sim {

struct RegValue {
    Text name;
    std::uint32_t type = 0;
    std::vector<std::byte> data;
};

class RegistryHive {
  public:
    RegistryHive();
    // Paths are relative to the hive's root, separated by backslashes.
    static Text Join(const Text& parent, const Text& child);
    bool KeyExists(const Text& path) const;
    void CreateKey(const Text& path);  // with every missing parent
    const RegValue* FindValue(const Text& path, const Text& name) const;
    void SetValue(const Text& path, const Text& name, std::uint32_t type,
                  std::vector<std::byte> data);
    bool DeleteValue(const Text& path, const Text& name);
    bool DeleteTree(const Text& path);

  private:
    static Text Fold(const Text& name);
    struct Key {
        std::map<Text, RegValue> values;  // by folded name
    };
    std::map<Text, Key> keys_;  // by folded path; "" is the root
};

}  // namespace zk::sim
