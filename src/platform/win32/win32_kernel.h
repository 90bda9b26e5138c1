#pragma once
#include "platform/api/kernel_api.h"

namespace zk::win32 {

class Win32Kernel : public virtual KernelApi {
  public:
    Handle CreateEventA(bool manualReset, bool initialState, const Ansi& name) override;
    Handle CreateMutexA(bool initialOwner, const Ansi& name) override;
    Handle OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) override;
    bool SetEvent(Handle event) override;
    std::uint32_t WaitForSingleObject(Handle object, std::uint32_t milliseconds) override;
    std::uint32_t WaitForMultipleObjects(std::span<const Handle> handles, bool waitAll,
                                         std::uint32_t milliseconds) override;
    void Sleep(std::uint32_t milliseconds) override;
    bool CloseHandle(Handle object) override;
    Handle CreateFileMappingW(std::uint32_t size, const Text& name,
                              const Text& securityDescriptor) override;
    Text GetTokenUserSid() override;
    void* MapViewOfFile(Handle mapping, std::uint32_t size) override;
    bool UnmapViewOfFile(void* view) override;
    std::uint32_t GetCurrentThreadId() override;
    std::uint32_t GetCurrentProcessId() override;
    bool CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                        bool inheritHandles, std::uint32_t creationFlags,
                        const StartupInfo& startupInfo,
                        ProcessInformation& processInformation) override;
    Handle OpenProcess(std::uint32_t desiredAccess, bool inherit, std::uint32_t processId) override;
    bool GetProcessTimes(Handle process, std::uint64_t& creationTime) override;
    std::vector<ProcessEntry> CreateToolhelp32Snapshot() override;
    [[noreturn]] void ExitProcess(std::uint32_t exitCode) override;
    std::uint32_t GetModuleFileNameW(std::span<char16_t> buffer) override;
    Hinstance GetModuleHandleW() override;
    std::uint64_t GetTickCount64() override;
};

}  // namespace zk::win32
