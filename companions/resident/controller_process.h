#pragma once
// The controller a companion serves: the process named on its command line, or else the one
// that started it. Companions wait on it, and end when it ends.

#include <cstdint>

#include "platform/handles.h"

namespace zk::companion {

class ControllerProcess {
  public:
    // `named` is the controller's id from the command line, or 0 for the parent process.
    ControllerProcess(KernelApi& os, std::uint32_t named);

    // False when the process is gone already (or the id was taken by a newer process).
    [[nodiscard]] bool Found() const { return process_.valid(); }
    [[nodiscard]] std::uint32_t Id() const { return id_; }
    // Signalled when the controller ends.
    [[nodiscard]] Handle Process() const { return process_.get(); }
    [[nodiscard]] bool Running();

  private:
    KernelApi& os_;
    std::uint32_t id_ = 0;
    UniqueKernelHandle process_;
};

}  // namespace zk::companion
