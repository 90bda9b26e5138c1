#pragma once
// What the parts of the simulated session share: the simulated process's identity and last
// error, the journal of calls and the faults to inject, the kernel objects with their handle
// table, and the window station's desktops. Each part of the session (kernel, files, desktops,
// windows, messages, hotkeys, registry, text) keeps the rest of its state itself.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/sim/journal.h"
#include "platform/types.h"

namespace zk::sim {

// Thrown by ExitProcess: the simulated run ends, the test process does not.
struct ProcessEnded {
    std::uint32_t exitCode;
};
// Thrown by a wait for messages when nothing is queued: a real thread would wait here for ever.
struct MessageQueueIdle {};

inline constexpr std::uint32_t kOtherProcessId = 0x9990;

// The journal's text for a handle or number.
std::string Hex(std::intptr_t value);
template <class H>
std::string Hex(H* handle) {
    return Hex(HandleValue(handle));
}

// Names of desktops, window properties and classes compare without regard to ASCII case.
bool SameName(const Text& a, const Text& b);

enum class Kind { Event, Mutex, Process, Thread, File, Desktop, Section };

struct KernelObject {
    explicit KernelObject(Kind k) : kind(k) {}
    Kind kind;
    Ansi name;  // named events, mutexes and sections
    bool manualReset = false;
    bool signalled = false;
    int references = 0;            // handles of every process, plus uses
    std::uint32_t processId = 0;   // processes and threads
    std::uint64_t createdAt = 0;   // processes: creation time
    Text path;                     // files: the folded full path
    std::uint32_t fileAccess = 0;  // files: the access and the share mode it was opened with
    std::uint32_t fileShare = 0;
    int desktop = 0;               // desktops; processes: the desktop they run on
    std::vector<std::byte> bytes;  // sections
};

struct HandleEntry {
    int object = 0;
    std::uint32_t access = 0;
    bool threadDesktop = false;  // GetThreadDesktop's handle: not the caller's to close
    std::size_t position = 0;    // files: where the next read or write starts
    // Whether the handle was opened with the right (every right, for GENERIC_ALL).
    [[nodiscard]] bool Grants(std::uint32_t right) const {
        return (access & (right | GenericAll)) != 0;
    }
};

struct SimDesktop {
    Text name;  // empty once the desktop is gone
    int object = 0;
};

class Session {
  public:
    // `processId`: the simulated process's.
    explicit Session(std::uint32_t processId = 0x1A4);

    // Records the call; true if an injected fault makes it fail (the last error is then set).
    [[nodiscard]] bool Enter(const char* call, std::string detail = {});
    std::uint32_t last = 0;
    Journal journal;
    FaultPlan faults;

    const std::uint32_t processId;
    const std::uint32_t threadId = 0x1A8;
    std::uint32_t parentProcessId = 0;
    std::uint64_t tickCount = 1'000'000;  // milliseconds since the simulated system started

    // Kernel objects and the simulated process's handles to them.
    int NewObject(KernelObject object);
    KernelObject& Object(int id) { return objects_.at(id); }
    // The first live object that `match` accepts; 0 when there is none.
    int FindObject(const std::function<bool(const KernelObject&)>& match) const;
    Handle NewHandle(int object, std::uint32_t access, bool threadDesktop = false);
    HandleEntry* Lookup(Handle handle, Kind kind);
    HandleEntry* Lookup(Handle handle);
    // A wait on the handle now: whether it is signalled (taking an auto-reset event's or a
    // mutex's signal), or nothing when it cannot be waited on (the last error says why: no such
    // handle, or a handle without SYNCHRONIZE).
    std::optional<bool> TakeSignal(Handle handle);
    bool CloseHandle(Handle handle);
    void Release(int object);
    // Closes every handle of the simulated process, as its end does.
    void CloseAllHandles();
    [[nodiscard]] std::size_t OpenHandleCount() const;
    // Named kernel objects of the session, by name.
    std::map<Ansi, int> named;
    [[nodiscard]] const KernelObject* Named(const Ansi& name) const;

    // The window station's desktops; index 0 is "Default".
    std::vector<SimDesktop> desktops;
    int inputDesktop = 0;
    int threadDesktop = 0;
    Handle threadDesktopHandle = nullptr;
    [[nodiscard]] int DesktopByName(const Text& name) const;
    // Whether the last input (a key, a hotkey) went to the simulated process: then it may bring
    // a window to the front, and pass that right on.
    bool hasLastInput = false;
    // Whether the foreground process (the shell, where the user double-clicked) started it, or a
    // process that may passed its right on: either gives the same right.
    bool startedByForeground = false;

    // Set by the windows part: whether the simulated thread owns windows, and the windows of a
    // desktop; set by the parts that hold something for the process, to release it at its end.
    std::function<bool()> threadOwnsWindows;
    std::function<std::vector<Hwnd>(int desktop)> windowsOfDesktop;
    std::vector<std::function<void()>> onProcessEnd;
    std::vector<std::function<void(Hwnd)>> onWindowDestroyed;
    // What the session's other processes do while the simulated thread waits or sleeps, where a
    // test runs them (several programs on one simulated thread); nothing by default.
    std::function<void()> othersRun;
    void LetOthersRun() {
        if (othersRun) othersRun();
    }

  private:
    std::map<int, KernelObject> objects_;
    int nextObject_ = 1;
    std::map<std::intptr_t, HandleEntry> handles_;
    std::intptr_t nextHandle_ = 0x40;
};

}  // namespace zk::sim
