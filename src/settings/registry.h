#pragma once
// Registry: typed access to single registry values. Each operation opens its key, does one
// thing and closes the key again. A failure leaves its description in LastErrorText and returns
// false; nothing is logged or raised.

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "platform/os.h"

namespace zk {

inline constexpr std::uint32_t RegSz = 1;
inline constexpr std::uint32_t RegExpandSz = 2;
inline constexpr std::uint32_t RegBinary = 3;
inline constexpr std::uint32_t RegDword = 4;
inline constexpr std::uint32_t RegDwordBigEndian = 5;
inline constexpr std::uint32_t RegLink = 6;
inline constexpr std::uint32_t RegMultiSz = 7;

// A value as the module hands it over: text, a 16- or 32-bit integer, or bytes.
using RegData = std::variant<Text, std::int16_t, std::int32_t, std::vector<std::byte>>;

class Registry {
  public:
    Registry(RegistryApi& registry, TextApi& text) : os_(registry), text_(text) {}
    explicit Registry(Os& os) : Registry(os, os) {}

    [[nodiscard]] bool KeyExists(Hkey root, const Text& keyPath);
    [[nodiscard]] bool CreateKey(Hkey root, const Text& keyPath);
    // The destination is left untouched on failure.
    [[nodiscard]] bool ReadValue(Hkey root, const Text& keyPath, const Text& valueName,
                                 std::uint32_t requestedType, RegData& destination);
    // The key must exist. `valueType` comes back as the type that was written.
    [[nodiscard]] bool WriteValue(Hkey root, const Text& keyPath, const Text& valueName,
                                  std::uint32_t& valueType, const RegData& value);
    [[nodiscard]] const Text& LastErrorText() const { return lastErrorText_; }

  private:
    bool Fail(Text text);
    bool FailWithCode(std::int32_t code);
    bool ReadData(Hkey key, const Text& valueName, std::uint32_t type, std::uint32_t size,
                  RegData& result);

    RegistryApi& os_;
    TextApi& text_;
    Text lastErrorText_;
};

}  // namespace zk
