#pragma once
// kernel32: kernel objects (events, mutexes, shared memory), processes and the program's module.

#include "platform/api/system_api.h"

namespace zk {

class KernelApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual Handle CreateEventA(bool manualReset, bool initialState,
                                              const Ansi& name) = 0;
    [[nodiscard]] virtual Handle CreateMutexA(bool initialOwner, const Ansi& name) = 0;
    [[nodiscard]] virtual Handle OpenEventA(std::uint32_t desiredAccess, bool inherit,
                                            const Ansi& name) = 0;
    virtual bool SetEvent(Handle event) = 0;
    [[nodiscard]] virtual std::uint32_t WaitForSingleObject(Handle object,
                                                            std::uint32_t milliseconds) = 0;
    // Waits for any one of the handles (waitAll false); its position from WaitObject0.
    [[nodiscard]] virtual std::uint32_t WaitForMultipleObjects(std::span<const Handle> handles,
                                                               bool waitAll,
                                                               std::uint32_t milliseconds) = 0;
    virtual void Sleep(std::uint32_t milliseconds) = 0;
    virtual bool CloseHandle(Handle object) = 0;
    // Named memory of the paging file, created with the security descriptor given in SDDL (a
    // mapping of that name that exists already is opened as it is).
    [[nodiscard]] virtual Handle CreateFileMappingW(std::uint32_t size, const Text& name,
                                                    const Text& securityDescriptor) = 0;
    // The user of the process's token, as SDDL writes a SID ("S-1-5-21-..."); empty when the
    // system does not say.
    [[nodiscard]] virtual Text GetTokenUserSid() = 0;
    [[nodiscard]] virtual void* MapViewOfFile(Handle mapping, std::uint32_t size) = 0;
    virtual bool UnmapViewOfFile(void* view) = 0;

    [[nodiscard]] virtual std::uint32_t GetCurrentThreadId() = 0;
    [[nodiscard]] virtual std::uint32_t GetCurrentProcessId() = 0;
    [[nodiscard]] virtual bool CreateProcessW(const std::optional<Text>& applicationName,
                                              const Text& commandLine, bool inheritHandles,
                                              std::uint32_t creationFlags,
                                              const StartupInfo& startupInfo,
                                              ProcessInformation& processInformation) = 0;
    [[nodiscard]] virtual Handle OpenProcess(std::uint32_t desiredAccess, bool inherit,
                                             std::uint32_t processId) = 0;
    // GetProcessTimes' creation time, in 100 ns units.
    [[nodiscard]] virtual bool GetProcessTimes(Handle process, std::uint64_t& creationTime) = 0;
    // CreateToolhelp32Snapshot of the processes, walked with Process32FirstW / Process32NextW.
    [[nodiscard]] virtual std::vector<ProcessEntry> CreateToolhelp32Snapshot() = 0;
    [[noreturn]] virtual void ExitProcess(std::uint32_t exitCode) = 0;

    [[nodiscard]] virtual std::uint32_t GetModuleFileNameW(std::span<char16_t> buffer) = 0;
    [[nodiscard]] virtual Hinstance GetModuleHandleW() = 0;
    // Milliseconds since the system started.
    [[nodiscard]] virtual std::uint64_t GetTickCount64() = 0;
};

}  // namespace zk
