#pragma once
// The simulated kernel: named events and mutexes, shared memory, the processes the program
// starts and sees, and the program's own module.

#include <functional>
#include <set>

#include "platform/api/kernel_api.h"
#include "platform/sim/session.h"
#include "platform/sim/sim_files.h"

namespace zk::sim {

struct StartedProcess {
    std::uint32_t processId = 0;
    std::optional<Text> applicationName;
    Text commandLine;
    Text image;  // the executable that was found
    bool inheritHandles = false;
    std::uint32_t creationFlags = 0;
    StartupInfo startupInfo;
};

class SimKernel : public virtual KernelApi {
  public:
    SimKernel(Session& session, SimFiles& files);

    Handle CreateEventA(bool manualReset, bool initialState, const Ansi& name) override;
    Handle CreateMutexA(bool initialOwner, const Ansi& name) override;
    Handle OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) override;
    bool SetEvent(Handle event) override;
    std::uint32_t WaitForSingleObject(Handle object, std::uint32_t milliseconds) override;
    std::uint32_t WaitForMultipleObjects(std::span<const Handle> handles, bool waitAll,
                                         std::uint32_t milliseconds) override;
    // Time passes at once: nothing else runs in the simulation meanwhile.
    void Sleep(std::uint32_t milliseconds) override;
    bool CloseHandle(Handle object) override;
    // The descriptor is recorded, not enforced: the simulated session has one user.
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

    // ----- driving from a test
    void SetModuleFileName(const Text& path);
    // Processes the program started, in order.
    [[nodiscard]] const std::vector<StartedProcess>& StartedProcesses() const { return started_; }
    // A process of the session ends (its handles become signalled).
    void EndProcess(std::uint32_t processId);
    // A process that the program did not start, e.g. its parent, started at that tick count
    // (long before the simulated one unless said); its id.
    std::uint32_t AddOtherProcess(const Text& exeFile, std::uint32_t parentProcessId = 0,
                                  std::uint64_t startedAt = 0);
    // Named objects as another process of the session sees them.
    [[nodiscard]] bool EventExists(const Ansi& name) const;
    [[nodiscard]] bool EventIsSignalled(const Ansi& name) const;
    // Takes the event's signal if it is set, as a companion's wait would; true if it was set.
    bool WaitForEventInOtherProcess(const Ansi& name);
    void SetEventInOtherProcess(const Ansi& name);
    // Plays another process that waits on the named event: when the simulated process sets
    // it, `react` runs at once (it may take the signal and act on the session).
    void WhenSignalled(const Ansi& name, std::function<void()> react);
    // Plays a program that the simulated process starts: `react` runs with its process id as
    // the start of a program of that file name returns.
    void WhenStarted(const Text& fileName, std::function<void(std::uint32_t)> react);
    void CreateEventInOtherProcess(const Ansi& name);
    void CreateMutexInOtherProcess(const Ansi& name);
    // Handles the program's process holds open.
    [[nodiscard]] std::size_t OpenHandleCount() const { return session_.OpenHandleCount(); }
    void AdvanceClock(std::uint64_t milliseconds) { session_.tickCount += milliseconds; }

  private:
    Handle CreateNamed(Kind kind, bool manualReset, bool initialState, const Ansi& name);
    [[nodiscard]] int ProcessObject(std::uint32_t processId) const;
    KernelObject* OtherNamed(const Ansi& name, Kind kind);

    Session& session_;
    SimFiles& files_;
    std::uint32_t nextProcessId_ = 0x200;
    std::vector<StartedProcess> started_;
    std::vector<ProcessEntry> others_;
    // View address -> section object; the views of one section share an address here (each
    // has its own on Windows) and each is unmapped on its own.
    std::multimap<std::intptr_t, int> views_;
    std::map<Ansi, std::function<void()>> reactions_;
    std::map<Text, std::function<void(std::uint32_t)>> startReactions_;
    Text modulePath_ = u"C:\\Program Files\\Zelkova2\\Zelkova2.exe";
};

}  // namespace zk::sim
