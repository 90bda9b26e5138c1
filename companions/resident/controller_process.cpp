#include "resident/controller_process.h"

namespace zk::companion {
namespace {

std::uint32_t ParentOf(KernelApi& os, std::uint32_t self) {
    for (const ProcessEntry& entry : os.CreateToolhelp32Snapshot()) {
        if (entry.processId == self) return entry.parentProcessId;
    }
    return 0;
}

}  // namespace

ControllerProcess::ControllerProcess(KernelApi& os, std::uint32_t named) : os_(os) {
    const std::uint32_t self = os.GetCurrentProcessId();
    id_ = named != 0 ? named : ParentOf(os, self);
    if (id_ == 0) return;
    process_ = UniqueKernelHandle(
        os, os.OpenProcess(Synchronize | ProcessQueryLimitedInformation, false, id_));
    // A process id can be used again once its process is gone: the controller must be older.
    UniqueKernelHandle own(os, os.OpenProcess(ProcessQueryLimitedInformation, false, self));
    std::uint64_t controllerStart = 0, ownStart = 0;
    if (process_ && own && os.GetProcessTimes(process_.get(), controllerStart) &&
        os.GetProcessTimes(own.get(), ownStart) && controllerStart > ownStart) {
        process_.reset();
    }
}

bool ControllerProcess::Running() {
    return process_ && os_.WaitForSingleObject(process_.get(), 0) == WaitTimeout;
}

}  // namespace zk::companion
