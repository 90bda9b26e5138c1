#pragma once
// kernel32 and user32: the system's texts, code page, clock, regional formats and keyboard.

#include "platform/api/system_api.h"

namespace zk {

class TextApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual std::uint32_t FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                                       std::uint32_t languageId,
                                                       std::span<char16_t> buffer) = 0;
    // MultiByteToWideChar / WideCharToMultiByte with the system's default ANSI code page.
    [[nodiscard]] virtual Text MultiByteToWideChar(std::string_view ansi) = 0;
    [[nodiscard]] virtual Ansi WideCharToMultiByte(std::u16string_view text) = 0;
    [[nodiscard]] virtual Text ExpandEnvironmentStringsW(const Text& text) = 0;
    [[nodiscard]] virtual SystemTime GetLocalTime() = 0;
    // The user's regional short date and long time for a local time.
    [[nodiscard]] virtual Text GetDateFormatW(const SystemTime& time) = 0;
    [[nodiscard]] virtual Text GetTimeFormatW(const SystemTime& time) = 0;
    [[nodiscard]] virtual Hkl GetKeyboardLayout(std::uint32_t threadId) = 0;
    [[nodiscard]] virtual std::uint32_t MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType,
                                                         Hkl layout) = 0;
    [[nodiscard]] virtual int GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) = 0;
};

}  // namespace zk
