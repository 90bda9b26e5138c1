#pragma once
// ErrLog: the per-user error log and the error reporter. None of its operations fails: every
// failure inside them is swallowed, so that reporting a failure never causes another.

#include "platform/os.h"

namespace zk {

inline constexpr char16_t kLogFileName[] = u"ZelkovaErrors.txt";

// Every message in the log begins with this mark; all but one put a blank after it.
inline constexpr char16_t kMessageMark[] = u"Zelkova:";
// A message as the log takes it: the mark, a blank, and what happened.
[[nodiscard]] inline Text LogMessage(const Text& what) {
    return kMessageMark + (u" " + what);
}

class ErrLog {
  public:
    explicit ErrLog(Os& os) : os_(os) {}

    // The user's local application-data folder with a trailing backslash; "c:\" or empty text
    // when the system cannot say. Only a successful lookup is remembered.
    [[nodiscard]] Text LogFolder();
    // Appends "<short date> <long time> <message>" and CR LF to the log, in the ANSI code page.
    void LogError(const Text& message) noexcept;
    // Starts the reporter beside the executable, minimised; never waits for it.
    void StartErrorReporter() noexcept;

  private:
    Text DateTimeText();

    Os& os_;
    Text cachedFolder_;
};

}  // namespace zk
