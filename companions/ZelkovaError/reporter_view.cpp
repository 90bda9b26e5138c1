#include "ZelkovaError/reporter_view.h"

#include "diagnostics/log_reader.h"
#include "shared/hotkeys_in_force.h"

namespace zk::companion {
namespace {

constexpr std::size_t kNewest = 500;

constexpr char16_t kHeading[] =
    u"What Zelkova2 could not do, newest first. For a hotkey that another program holds, choose "
    u"another combination in Settings; for a desktop that could not be made, start Zelkova2 "
    u"again.\r\n\r\n";

// An entry on one line: the system's own text of an error ends in a line break.
Text OneLine(Text entry) {
    std::erase_if(entry, [](char16_t c) { return c == u'\r' || c == u'\n'; });
    return entry;
}

}  // namespace

ReporterView MakeReporterView(Os& os) {
    const LogFile log = ReadLog(os);
    ReporterView view{{}, log.path};
    if (const auto notice = LogUnwritableNotice(os, log.path)) view.text = *notice + u"\r\n";
    const auto entries = log.bytes ? LogEntries(*log.bytes) : std::vector<std::string>{};
    if (entries.empty()) return ReporterView{view.text + kNothingLogged, view.logPath};
    Registry registry(os);
    const HotKeyPairs pairs = HotKeysAsTheyAre(os, registry);
    view.text += kHeading;
    for (std::size_t i = 0; i < entries.size() && i < kNewest; ++i)
        view.text += OneLine(ExplainLogEntry(os, entries[entries.size() - 1 - i], pairs)) + u"\r\n";
    return view;
}

}  // namespace zk::companion
