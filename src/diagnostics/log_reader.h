#pragma once
// The error log as its readers see it (the control tool, the reporter, the settings window):
// its entries, newest last. An entry is the line that holds the message mark after its date and
// time, with the lines that follow it until the next entry: a system text in a message ends with a
// line break of its own, so one entry can span two lines.

#include <optional>
#include <string>
#include <vector>

#include "platform/os.h"

namespace zk {

struct LogFile {
    Text path;
    std::optional<std::string> bytes;  // nothing when it cannot be read
    std::uint32_t error = 0;           // why not
};

// The log of this user, where the controller writes it.
[[nodiscard]] LogFile ReadLog(Os& os);
// The entries in the log's bytes (ANSI), oldest first; empty lines are dropped.
[[nodiscard]] std::vector<std::string> LogEntries(std::string_view bytes);
// Whether the log can be written: the same open the controller makes, and why not.
[[nodiscard]] std::optional<std::uint32_t> LogWriteError(Os& os, const Text& path);
// What the readers show when the log holds no entry.
inline constexpr char16_t kNothingLogged[] = u"Nothing has been logged.";
// What the readers tell the user when the log cannot be written (two lines, each ending in
// CR LF); nothing when it can.
[[nodiscard]] std::optional<Text> LogUnwritableNotice(Os& os, const Text& path);

}  // namespace zk
