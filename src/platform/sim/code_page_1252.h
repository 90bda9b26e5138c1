#pragma once
// Windows-1252, the simulated session's ANSI code page.

#include "platform/os.h"

namespace zk::sim {

Text DecodeCp1252(std::string_view ansi);
// Characters outside the code page become '?', the system's default character.
Ansi EncodeCp1252(std::u16string_view text);
// For journal lines and test messages.
std::string Utf8(std::u16string_view text);
Text Utf16(std::string_view utf8);

}  // namespace zk::sim
