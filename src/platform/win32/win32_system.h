#pragma once
#include "platform/api/system_api.h"
#include "platform/win32/last_error.h"

namespace zk::win32 {

class Win32System : public virtual SystemApi {
  public:
    std::uint32_t GetLastError() const override { return t_lastError; }
    void SetLastError(std::uint32_t code) override { t_lastError = code; }
};

}  // namespace zk::win32
