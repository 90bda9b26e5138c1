#include "platform/sim/journal.h"

namespace zk::sim {

void Journal::Record(std::string call, std::string detail) {
    entries_.push_back({std::move(call), std::move(detail), false});
}

void Journal::MarkLastFailed() {
    if (!entries_.empty()) entries_.back().failed = true;
}

std::vector<std::string> Journal::Details(std::string_view call) const {
    std::vector<std::string> out;
    for (const auto& e : entries_) {
        if (e.call == call) out.push_back(e.detail);
    }
    return out;
}

int Journal::Count(std::string_view call) const {
    int n = 0;
    for (const auto& e : entries_)
        n += e.call == call ? 1 : 0;
    return n;
}

std::optional<std::size_t> Journal::Find(std::string_view call, std::string_view part,
                                         std::size_t from) const {
    for (std::size_t i = from; i < entries_.size(); ++i) {
        if (entries_[i].call == call && entries_[i].detail.find(part) != std::string::npos) {
            return i;
        }
    }
    return std::nullopt;
}

void FaultPlan::FailNth(std::string call, int nth, std::uint32_t error) {
    faults_.push_back({std::move(call), nth, error});
}

void FaultPlan::FailEvery(std::string call, std::uint32_t error) {
    faults_.push_back({std::move(call), 0, error});
}

std::optional<std::uint32_t> FaultPlan::Check(std::string_view call, int nth) const {
    for (const auto& f : faults_) {
        if (f.call == call && (f.nth == 0 || f.nth == nth)) return f.error;
    }
    return std::nullopt;
}

}  // namespace zk::sim
