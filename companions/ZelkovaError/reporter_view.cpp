#include "ZelkovaError/reporter_view.h"

#include "diagnostics/log_reader.h"
#include "shared/hotkeys_in_force.h"

namespace zk::companion {
namespace {

constexpr std::size_t kNewest = 500;

}  // namespace

ReporterView MakeReporterView(Os& os) {
    const LogFile log = ReadLog(os);
    ReporterView view{{}, log.path};
    if (const auto notice = LogUnwritableNotice(os, log.path)) view.text = *notice + u"\r\n";
    const auto entries = log.bytes ? LogEntries(*log.bytes) : std::vector<std::string>{};
    if (entries.empty()) return ReporterView{view.text + kNothingLogged, view.logPath};
    Registry registry(os);
    const HotKeyPairs pairs = HotKeysAsTheyAre(os, registry);
    for (std::size_t i = 0; i < entries.size() && i < kNewest; ++i)
        view.text += ExplainLogEntry(os, entries[entries.size() - 1 - i], pairs) + u"\r\n";
    return view;
}

}  // namespace zk::companion
