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

// A process that CreateProcessW started, holding the process and thread handles it gave.
struct StartedProcess {
    UniqueKernelHandle process;
    UniqueKernelHandle thread;
    std::uint32_t processId = 0;
};

// CreateProcessW with owning handles; nothing when the system refuses (its last error says why).
[[nodiscard]] inline std::optional<StartedProcess> TryCreateProcess(
    KernelApi& os, const std::optional<Text>& applicationName, const Text& commandLine,
    bool inheritHandles, const StartupInfo& startupInfo) {
    ProcessInformation pi;
    if (!os.CreateProcessW(applicationName, commandLine, inheritHandles, 0, startupInfo, pi)) {
        return std::nullopt;
    }
    return StartedProcess{UniqueKernelHandle(os, pi.hProcess), UniqueKernelHandle(os, pi.hThread),
                          pi.dwProcessId};
}

}  // namespace zk
