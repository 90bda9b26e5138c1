#pragma once
// The simulated current user's registry hive: keys and typed values, names case-insensitive.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
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
    [[nodiscard]] bool KeyExists(const Text& path) const;
    void CreateKey(const Text& path);  // with every missing parent
    [[nodiscard]] const RegValue* FindValue(const Text& path, const Text& name) const;
    void SetValue(const Text& path, const Text& name, std::uint32_t type,
                  std::vector<std::byte> data);
    // A REG_DWORD, and text as REG_SZ with its terminator, as another program would store them.
    void SetDword(const Text& path, const Text& name, std::int32_t value);
    void SetText(const Text& path, const Text& name, const Text& value);
    // The value when it is a REG_DWORD of four bytes.
    [[nodiscard]] std::optional<std::int32_t> Dword(const Text& path, const Text& name) const;
    bool DeleteValue(const Text& path, const Text& name);
    // The key's values in the order they were first written; nullptr when the key is missing.
    [[nodiscard]] const std::vector<RegValue>* Values(const Text& path) const;
    bool DeleteTree(const Text& path);

    // Told the path of every key whose values or subkeys change, by any writer.
    std::function<void(const Text& path)> onChange;

  private:
    static Text Fold(const Text& name);
    static Text Parent(const Text& path);
    void Changed(const Text& path) const {
        if (onChange) onChange(Fold(path));
    }
    struct Key {
        std::vector<RegValue> values;  // in the order they were first written
    };
    static RegValue* In(Key& key, const Text& name);
    std::map<Text, Key> keys_;  // by folded path; "" is the root
};

}  // namespace zk::sim
