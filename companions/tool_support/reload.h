#pragma once
// The confirmation of a reload the tools ask for: "ReadReg" wakes one bridge, which passes it on
// and confirms it on the event of its own copy. The confirmations of every copy running are taken
// before the request and emptied (an old one says nothing about this request).

#include <vector>

#include "platform/os.h"
#include "shared/signals.h"

namespace zk::companion {

class Reload {
  public:
    Reload(KernelApi& os, Signals& signals);
    // Whether a copy confirmed within `within` milliseconds.
    [[nodiscard]] bool Confirmed(std::uint32_t within);

  private:
    KernelApi& os_;
    std::vector<Handle> confirmations_;
};

}  // namespace zk::companion
