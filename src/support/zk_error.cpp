#include "support/zk_error.h"

#include "support/text.h"

namespace zk {
namespace {

constexpr char16_t kSource[] = u"Zelkova2";

}  // namespace

ZkError::ZkError(std::int32_t number, Text source, Text description)
    : std::runtime_error(AsciiText(source) + ": " + AsciiText(description)),
      number_(number),
      source_(std::move(source)),
      description_(std::move(description)) {}

void RaiseOverflow() {
    throw ZkError(kErrOverflow, kSource, u"Overflow");
}

void RaiseSubscriptOutOfRange() {
    throw ZkError(kErrSubscriptOutOfRange, kSource, u"Subscript out of range");
}

}  // namespace zk
