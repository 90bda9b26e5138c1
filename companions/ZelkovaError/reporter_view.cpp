#include "ZelkovaError/reporter_view.h"

#include "diagnostics/log_reader.h"

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
    Ansi newestFirst;
    for (std::size_t i = 0; i < entries.size() && i < kNewest; ++i)
        newestFirst += entries[entries.size() - 1 - i] + "\r\n";
    view.text += os.MultiByteToWideChar(newestFirst);
    return view;
}

}  // namespace zk::companion
