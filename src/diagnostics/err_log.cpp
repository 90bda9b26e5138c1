#include "diagnostics/err_log.h"

#include <array>

#include "platform/handles.h"
#include "vocabulary/programs.h"

namespace zk {

Text ErrLog::LogFolder() {
    if (!cachedFolder_.empty()) return cachedFolder_;
    std::array<char16_t, 260> buffer{};
    const std::int32_t result =
        os_.SHGetFolderPathW(CsidlLocalAppData | CsidlFlagCreate, 0, buffer);
    if (result == SOk) {
        cachedFolder_ = Text(buffer.data());
        if (cachedFolder_.empty() || cachedFolder_.back() != u'\\') cachedFolder_ += u'\\';
        return cachedFolder_;
    }
    if (result == SFalse || result == EInvalidArg) return u"c:\\";
    return {};
}

// The system's general date format: short date and long time, or the date alone at exactly
// midnight.
Text ErrLog::DateTimeText() {
    const SystemTime now = os_.GetLocalTime();
    Text text = os_.GetDateFormatW(now);
    if (now.wHour != 0 || now.wMinute != 0 || now.wSecond != 0) {
        text += u' ';
        text += os_.GetTimeFormatW(now);
    }
    return text;
}

void ErrLog::LogError(const Text& message) noexcept {
    try {
        const Text path = LogFolder() + kLogFileName;
        const Ansi entry = os_.WideCharToMultiByte(DateTimeText() + u" " + message + u"\r\n");
        UniqueFileHandle file(
            os_, os_.CreateFileW(path, FileAppendData, FileShareRead | FileShareWrite, OpenAlways));
        if (!file) return;
        (void)os_.WriteFile(file.get(), std::as_bytes(std::span(entry.data(), entry.size())));
    } catch (...) {
        // A log that cannot be written is not written.
    }
}

void ErrLog::StartErrorReporter() noexcept {
    try {
        const Text commandLine = ProgramPath(os_, Program::Reporter) + u" ";
        StartupInfo si;
        si.dwFlags = StartfUseShowWindow;
        si.wShowWindow = SwShowMinimized;
        (void)TryCreateProcess(os_, std::nullopt, commandLine, false, si);
    } catch (...) {
        // A reporter that cannot be started goes unnoticed.
    }
}

}  // namespace zk
