#include "diagnostics/log_reader.h"

#include <array>

#include "diagnostics/err_log.h"
#include "diagnostics/win_api_error.h"
#include "platform/handles.h"
#include "support/text.h"

namespace zk {
namespace {

// The mark of a message, after the entry's date and time and their blank.
const std::string kEntryMark = " " + AsciiText(kMessageMark);

}  // namespace

LogFile ReadLog(Os& os) {
    LogFile log;
    log.path = ErrLog(os).LogFolder() + kLogFileName;
    UniqueFileHandle file(
        os, os.CreateFileW(log.path, GenericRead, FileShareRead | FileShareWrite, OpenExisting));
    if (!file) {
        log.error = os.GetLastError();
        return log;
    }
    std::string bytes;
    std::array<std::byte, 4096> buffer{};
    std::uint32_t read = 0;
    while (os.ReadFile(file.get(), buffer, read) && read > 0)
        bytes.append(reinterpret_cast<const char*>(buffer.data()), read);
    log.bytes = std::move(bytes);
    return log;
}

std::vector<std::string> LogEntries(std::string_view bytes) {
    std::vector<std::string> entries;
    for (std::size_t start = 0; start < bytes.size();) {
        const auto end = bytes.find("\r\n", start);
        const std::string_view line =
            bytes.substr(start, end == std::string_view::npos ? end : end - start);
        start = end == std::string_view::npos ? bytes.size() : end + 2;
        if (line.empty()) continue;
        if (line.find(kEntryMark) != std::string_view::npos || entries.empty()) {
            entries.emplace_back(line);
        } else {
            entries.back() += "\r\n";
            entries.back() += line;
        }
    }
    return entries;
}

std::optional<Text> LogUnwritableNotice(Os& os, const Text& path) {
    const auto error = LogWriteError(os, path);
    if (!error) return std::nullopt;
    Text reason = ApiErrorText(os, *error);
    while (!reason.empty() && (reason.back() == u'\r' || reason.back() == u'\n'))
        reason.pop_back();
    return u"Zelkova2 cannot write its error log " + path + u": " + reason +
           u"\r\nWhat failed is not recorded until the folder can be written.\r\n";
}

std::optional<std::uint32_t> LogWriteError(Os& os, const Text& path) {
    UniqueFileHandle file(
        os, os.CreateFileW(path, FileAppendData, FileShareRead | FileShareWrite, OpenAlways));
    if (file) return std::nullopt;
    return os.GetLastError();
}

}  // namespace zk
