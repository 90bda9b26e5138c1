#pragma once
// The real backend keeps the thread's last error right after each system call, so that the
// program reads it as it was then, whatever C++ code ran in between.

#include <windows.h>

#include <optional>

#include "platform/types.h"

namespace zk::win32 {

inline thread_local std::uint32_t t_lastError = 0;

// Called with the system call's result as argument, so the error is read right after it.
template <class T>
T Keep(T result) {
    t_lastError = ::GetLastError();
    return result;
}
inline void TakeLastError() {
    t_lastError = ::GetLastError();
}

// UTF-16 text as the system's wide strings (wchar_t is 16 bits on Windows).
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
