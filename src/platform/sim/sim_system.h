#pragma once
// The simulated thread's last error, which every part of the session sets.

#include "platform/api/system_api.h"
#include "platform/sim/session.h"

namespace zk::sim {

class SimSystem : public virtual SystemApi {
  public:
    explicit SimSystem(Session& session) : session_(session) {}
    std::uint32_t GetLastError() const override { return session_.last; }
    void SetLastError(std::uint32_t code) override { session_.last = code; }

  private:
    Session& session_;
};

}  // namespace zk::sim
