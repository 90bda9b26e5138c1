#include "winsupport/process_context.h"

#include <utility>

namespace zk {
namespace {

Os* g_os = nullptr;
std::function<void(const Text&)> g_report;

}  // namespace

Os& ProcessOs() {
    return *g_os;
}

void ReportUnhandledError(const Text& description) noexcept {
    try {
        if (g_report) g_report(description);
    } catch (...) {
        // A report that fails is dropped: nothing may leave a window procedure.
    }
}

ProcessContext::ProcessContext(Os& os, std::function<void(const Text&)> reportUnhandled) {
    g_os = &os;
    g_report = std::move(reportUnhandled);
}

ProcessContext::~ProcessContext() {
    g_os = nullptr;
    g_report = nullptr;
}

}  // namespace zk
