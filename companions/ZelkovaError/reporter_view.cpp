#include "ZelkovaError/reporter_view.h"

#include "diagnostics/log_reader.h"
#include "diagnostics/win_api_error.h"

namespace zk::companion {
namespace {

constexpr std::size_t kNewest = 500;

Text LineEnded(Text text) {
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n'))
        text.pop_back();
    return text + u"\r\n";
}

}  // namespace

ReporterView MakeReporterView(Os& os) {
    const LogFile log = ReadLog(os);
    ReporterView view{{}, log.path};
    if (const auto error = LogWriteError(os, log.path)) {
        view.text = u"Zelkova2 cannot write its error log " + log.path + u": " +
                    LineEnded(ApiErrorText(os, *error)) +
                    u"What failed is not recorded until the folder can be written.\r\n\r\n";
    }
    const auto entries = log.bytes ? LogEntries(*log.bytes) : std::vector<std::string>{};
    if (entries.empty()) return ReporterView{view.text + kNothingLogged, view.logPath};
    Ansi newestFirst;
    for (std::size_t i = 0; i < entries.size() && i < kNewest; ++i)
        newestFirst += entries[entries.size() - 1 - i] + "\r\n";
    view.text += os.MultiByteToWideChar(newestFirst);
    return view;
}

}  // namespace zk::companion
