#pragma once
// What a window procedure reaches without context: the system calls it with the window's four
// values only. The entry point sets both for the life of the process.

#include <functional>

#include "platform/os.h"

namespace zk {

// The process's Os, as the window procedures reach it.
[[nodiscard]] Os& ProcessOs();
// Reports an error that a window procedure caught so that it does not reach the system.
void ReportUnhandledError(const Text& description) noexcept;

// Sets both for as long as it lives (the entry point's lifetime, or one test's).
class ProcessContext {
  public:
    ProcessContext(Os& os, std::function<void(const Text&)> reportUnhandled = {});
    ~ProcessContext();
    ProcessContext(const ProcessContext&) = delete;
    ProcessContext& operator=(const ProcessContext&) = delete;
};

// Runs a window procedure's body; an exception is reported and the message's result is 0.
template <class Body>
Lresult GuardWindowProc(Body&& body) noexcept {
    try {
        return body();
    } catch (const std::exception& e) {
        const std::string what = e.what();
        ReportUnhandledError(Text(what.begin(), what.end()));
    } catch (...) {
        ReportUnhandledError(u"unknown error");
    }
    return 0;
}

}  // namespace zk
