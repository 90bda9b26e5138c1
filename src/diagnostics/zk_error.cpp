#include "diagnostics/zk_error.h"

namespace zk {
namespace {

std::string Narrow(const Text& text) {
    std::string out;
    for (const char16_t c : text)
        out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    return out;
}

constexpr char16_t kSource[] = u"Zelkova2";

}  // namespace

ZkError::ZkError(std::int32_t number, Text source, Text description)
    : std::runtime_error(Narrow(source) + ": " + Narrow(description)),
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
