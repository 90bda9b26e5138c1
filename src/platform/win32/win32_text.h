#pragma once
#include "platform/api/text_api.h"

namespace zk::win32 {

class Win32Text : public virtual TextApi {
  public:
    std::uint32_t FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                 std::uint32_t languageId, std::span<char16_t> buffer) override;
    Text MultiByteToWideChar(std::string_view ansi) override;
    Ansi WideCharToMultiByte(std::u16string_view text) override;
    Text ExpandEnvironmentStringsW(const Text& text) override;
    SystemTime GetLocalTime() override;
    Text GetDateFormatW(const SystemTime& time) override;
    Text GetTimeFormatW(const SystemTime& time) override;
    Hkl GetKeyboardLayout(std::uint32_t threadId) override;
    std::uint32_t MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) override;
    int GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) override;
};

}  // namespace zk::win32
