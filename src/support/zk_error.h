#pragma once
// The project's one error type: a number, the source that raised it and a description.

#include <cstdint>
#include <stdexcept>
#include <string>

#include "support/text.h"

namespace zk {

class ZkError : public std::runtime_error {
  public:
    ZkError(std::int32_t number, Text source, Text description);
    [[nodiscard]] std::int32_t number() const { return number_; }
    [[nodiscard]] const Text& source() const { return source_; }
    [[nodiscard]] const Text& description() const { return description_; }

  private:
    std::int32_t number_;
    Text source_;
    Text description_;
};

// The run-time errors that arithmetic and indexing raise.
inline constexpr std::int32_t kErrOverflow = 6;
inline constexpr std::int32_t kErrSubscriptOutOfRange = 9;
[[noreturn]] void RaiseOverflow();
[[noreturn]] void RaiseSubscriptOutOfRange();

}  // namespace zk
