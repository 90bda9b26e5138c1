#pragma once
// The simulated session's record of calls, and the faults a test asks it to inject.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zk::sim {

struct JournalEntry {
    std::string call;     // the system call's name, e.g. "CreateEventA"
    std::string detail;   // its arguments that vary, as text
    bool failed = false;  // an injected fault made it fail
};

class Journal {
  public:
    void Record(std::string call, std::string detail);
    void MarkLastFailed();
    [[nodiscard]] const std::vector<JournalEntry>& Entries() const { return entries_; }
    // The details of every call of one function, in order.
    [[nodiscard]] std::vector<std::string> Details(std::string_view call) const;
    [[nodiscard]] int Count(std::string_view call) const;
    // Position of the first entry at or after `from` of that call whose detail contains `part`.
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view call, std::string_view part = {},
                                                  std::size_t from = 0) const;
    void Clear() { entries_.clear(); }

  private:
    std::vector<JournalEntry> entries_;
};

// Faults are asked for by the name of a call of the seam; a name that is no such call is refused
// (std::invalid_argument), so that a misspelt fault cannot silently never fire.
class FaultPlan {
  public:
    // The nth call (counted from the start of the session, from 1) of `call` fails with `error`.
    void FailNth(std::string call, int nth, std::uint32_t error);
    // Every call of `call` from now on fails with `error`.
    void FailEvery(std::string call, std::uint32_t error);
    void Clear() { faults_.clear(); }
    // Counts one call of `call`; the error it must fail with, if any.
    std::optional<std::uint32_t> Check(std::string_view call);

  private:
    static void RequireKnown(const std::string& call);
    std::map<std::string, int, std::less<>> counts_;
    struct Fault {
        std::string call;
        int nth;  // 0: every call
        std::uint32_t error;
    };
    std::vector<Fault> faults_;
};

}  // namespace zk::sim
