#pragma once
// The simulated session's texts and locale: the system's English message texts, the ANSI code
// page (1252), environment variables, the clock, regional formats of English (United States)
// and a US keyboard.

#include <map>

#include "platform/api/text_api.h"
#include "platform/sim/session.h"

namespace zk::sim {

class SimText : public virtual TextApi {
  public:
    explicit SimText(Session& session);

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

    // ----- driving from a test
    void SetSystemText(std::uint32_t code, const Text& text) { systemTexts_[code] = text; }
    void SetLocalTime(const SystemTime& time) { localTime_ = time; }
    void SetEnvironmentVariable(const Text& name, const Text& value);

  private:
    Session& session_;
    std::map<std::uint32_t, Text> systemTexts_;
    std::map<Text, Text> environment_;  // by upper-case name
    SystemTime localTime_{2026, 11, 0, 22, 14, 5, 9, 0};
};

}  // namespace zk::sim
