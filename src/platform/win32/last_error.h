#pragma once
// The real backend keeps the thread's last error right after each system call, so that the
// program reads it as it was then, whatever C++ code ran in between.

#include <windows.h>

#include "platform/types.h"
#include "platform/win32/wide_text.h"

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

}  // namespace zk::win32
