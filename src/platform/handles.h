#pragma once
// The owning handles of the program: each closes through the seam, with the role that made it.

#include "platform/os.h"
#include "support/unique_handle.h"

namespace zk {

// Closes through a role of the seam and gives the caller's last error back afterwards.
template <class Api, auto Close>
struct SeamCloser {
    Api* api = nullptr;
    template <class H>
    void operator()(H handle) const {
        const std::uint32_t saved = api->GetLastError();
        (void)(api->*Close)(handle);
        api->SetLastError(saved);
    }
};

template <class H, class Api, auto Close, std::intptr_t Invalid = 0>
class SeamHandle : public UniqueHandle<H, SeamCloser<Api, Close>, Invalid> {
  public:
    SeamHandle() = default;
    SeamHandle(Api& api, H handle)
        : UniqueHandle<H, SeamCloser<Api, Close>, Invalid>(handle, SeamCloser<Api, Close>{&api}) {}
};

// Events, mutexes, sections, processes and threads.
using UniqueKernelHandle = SeamHandle<Handle, KernelApi, &KernelApi::CloseHandle>;
using UniqueView = SeamHandle<void*, KernelApi, &KernelApi::UnmapViewOfFile>;
using UniqueFileHandle = SeamHandle<Handle, KernelApi, &KernelApi::CloseHandle, -1>;
using UniqueDesktop = SeamHandle<Hdesk, DesktopApi, &DesktopApi::CloseDesktop>;
using UniqueRegKey = SeamHandle<Hkey, RegistryApi, &RegistryApi::RegCloseKey>;

}  // namespace zk
