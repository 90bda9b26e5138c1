#pragma once
// The program's UTF-16 text as the system's wide strings: wchar_t is 16 bits on Windows, so the
// same code units are only seen through another type.

#include <optional>

#include "platform/types.h"

namespace zk::win32 {

inline const wchar_t* W(const Text& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline wchar_t* W(char16_t* text) {
    return reinterpret_cast<wchar_t*>(text);
}
inline const wchar_t* W(const std::optional<Text>& text) {
    return text ? W(*text) : nullptr;
}

}  // namespace zk::win32
