#pragma once
// What every role of the seam shares: the thread's last error. The backend takes it right after
// each call; read it with GetLastError(), exactly as the program would read it from the system.

#include <cstdint>

#include "platform/types.h"

namespace zk {

class SystemApi {
  public:
    virtual ~SystemApi() = default;
    // The thread's last error, as taken right after the previous call through the seam.
    [[nodiscard]] virtual std::uint32_t GetLastError() const = 0;
    virtual void SetLastError(std::uint32_t code) = 0;
};

}  // namespace zk
