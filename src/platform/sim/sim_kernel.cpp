#include "platform/sim/sim_kernel.h"

#include <algorithm>

#include "platform/sim/code_page_1252.h"

namespace zk::sim {
namespace {

const Hinstance kModuleHandle = HandleFrom<Hinstance>(0x140000000);

}  // namespace

SimKernel::SimKernel(Session& session, SimFiles& files) : session_(session), files_(files) {
    files_.AddFile(modulePath_);
    KernelObject self{Kind::Process};  // the simulated process itself, started now
    self.processId = session_.processId;
    self.createdAt = session_.tickCount;
    self.references = 1;
    (void)session_.NewObject(std::move(self));
}

Handle SimKernel::CreateNamed(Kind kind, bool manualReset, bool initialState, const Ansi& name) {
    if (!name.empty()) {
        if (const auto existing = session_.named.find(name); existing != session_.named.end()) {
            if (session_.Object(existing->second).kind != kind) {
                session_.last = ErrorInvalidHandle;
                return nullptr;
            }
            session_.last = ErrorAlreadyExists;
            return session_.NewHandle(existing->second, GenericAll);
        }
    }
    KernelObject object{kind};
    object.name = name;
    object.manualReset = manualReset;
    object.signalled = initialState;
    const int id = session_.NewObject(std::move(object));
    if (!name.empty()) session_.named[name] = id;
    session_.last = ErrorSuccess;
    return session_.NewHandle(id, GenericAll);
}

Handle SimKernel::CreateEventA(bool manualReset, bool initialState, const Ansi& name) {
    if (session_.Enter("CreateEventA", name)) return nullptr;
    return CreateNamed(Kind::Event, manualReset, initialState, name);
}

Handle SimKernel::CreateMutexA(bool initialOwner, const Ansi& name) {
    if (session_.Enter("CreateMutexA", name)) return nullptr;
    return CreateNamed(Kind::Mutex, false, !initialOwner, name);
}

Handle SimKernel::OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) {
    if (session_.Enter("OpenEventA", name + " " + std::to_string(inherit))) return nullptr;
    const auto existing = session_.named.find(name);
    if (existing == session_.named.end()) {
        session_.last = ErrorFileNotFound;
        return nullptr;
    }
    if (session_.Object(existing->second).kind != Kind::Event) {
        session_.last = ErrorInvalidHandle;
        return nullptr;
    }
    return session_.NewHandle(existing->second, desiredAccess);
}

bool SimKernel::SetEvent(Handle event) {
    if (session_.Enter("SetEvent", Hex(event))) return false;
    const HandleEntry* entry = session_.Lookup(event, Kind::Event);
    if (entry == nullptr || !entry->Grants(EventModifyState)) {
        session_.last = entry == nullptr ? ErrorInvalidHandle : ErrorAccessDenied;
        return false;
    }
    KernelObject& object = session_.Object(entry->object);
    object.signalled = true;
    if (const auto reaction = reactions_.find(object.name); reaction != reactions_.end()) {
        const std::function<void()> react = reaction->second;  // it may replace itself
        react();
    }
    return true;
}

std::uint32_t SimKernel::WaitForSingleObject(Handle object, std::uint32_t milliseconds) {
    if (session_.Enter("WaitForSingleObject", Hex(object) + " " + std::to_string(milliseconds))) {
        return WaitFailed;
    }
    auto signalled = session_.TakeSignal(object);
    if (!signalled) return WaitFailed;
    if (!*signalled && milliseconds > 0) {
        session_.LetOthersRun();
        signalled = session_.TakeSignal(object);
    }
    return signalled && *signalled ? WaitObject0 : WaitTimeout;
}

// Only waits for any one handle; what is not signalled now stays so, and the time passes.
std::uint32_t SimKernel::WaitForMultipleObjects(std::span<const Handle> handles, bool waitAll,
                                                std::uint32_t milliseconds) {
    if (session_.Enter("WaitForMultipleObjects", std::to_string(handles.size()) + " " +
                                                     std::to_string(waitAll) + " " +
                                                     std::to_string(milliseconds))) {
        return WaitFailed;
    }
    for (int round = 0; round < 2; ++round) {
        for (std::uint32_t i = 0; i < handles.size(); ++i) {
            const auto signalled = session_.TakeSignal(handles[i]);
            if (!signalled) return WaitFailed;
            if (*signalled) return WaitObject0 + i;
        }
        if (round > 0 || milliseconds == 0) break;
        session_.LetOthersRun();
    }
    if (milliseconds != Infinite) session_.tickCount += milliseconds;
    return WaitTimeout;
}

void SimKernel::Sleep(std::uint32_t milliseconds) {
    (void)session_.Enter("Sleep", std::to_string(milliseconds));
    session_.LetOthersRun();
    session_.tickCount += milliseconds;
}

bool SimKernel::CloseHandle(Handle object) {
    if (session_.Enter("CloseHandle", Hex(object))) return false;
    if (!session_.CloseHandle(object)) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    return true;
}

Handle SimKernel::CreateFileMappingW(std::uint32_t size, const Text& name,
                                     const Text& securityDescriptor) {
    if (session_.Enter("CreateFileMappingW",
                       Utf8(name) + " " + std::to_string(size) + " " + Utf8(securityDescriptor))) {
        return nullptr;
    }
    const Handle section = CreateNamed(Kind::Section, false, false, EncodeCp1252(name));
    if (section != nullptr) {
        auto& bytes = session_.Object(session_.Lookup(section)->object).bytes;
        if (bytes.size() < size) bytes.resize(size);  // a new section is zero-filled
    }
    return section;
}

Text SimKernel::GetTokenUserSid() {
    (void)session_.Enter("GetTokenUserSid");
    return u"S-1-5-21-1004336348-1177238915-682003330-1001";
}

void* SimKernel::MapViewOfFile(Handle mapping, std::uint32_t size) {
    if (session_.Enter("MapViewOfFile", Hex(mapping) + " " + std::to_string(size))) return nullptr;
    const HandleEntry* entry = session_.Lookup(mapping, Kind::Section);
    if (entry == nullptr) {
        session_.last = ErrorInvalidHandle;
        return nullptr;
    }
    KernelObject& section = session_.Object(entry->object);
    if (size > section.bytes.size()) {
        session_.last = ErrorAccessDenied;
        return nullptr;
    }
    ++section.references;  // a view keeps its section
    void* view = section.bytes.data();
    views_.emplace(reinterpret_cast<std::intptr_t>(view), entry->object);
    return view;
}

bool SimKernel::UnmapViewOfFile(void* view) {
    if (session_.Enter("UnmapViewOfFile", Hex(view))) return false;
    const auto it = views_.find(reinterpret_cast<std::intptr_t>(view));
    if (it == views_.end()) {
        session_.last = ErrorInvalidParameter;
        return false;
    }
    const int object = it->second;
    views_.erase(it);
    session_.Release(object);
    return true;
}

std::uint32_t SimKernel::GetCurrentThreadId() {
    (void)session_.Enter("GetCurrentThreadId");
    return session_.threadId;
}

std::uint32_t SimKernel::GetCurrentProcessId() {
    (void)session_.Enter("GetCurrentProcessId");
    return session_.processId;
}

bool SimKernel::CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                               bool inheritHandles, std::uint32_t creationFlags,
                               const StartupInfo& startupInfo,
                               ProcessInformation& processInformation) {
    std::string detail = "app=" + (applicationName ? Utf8(*applicationName) : "(none)") + " cmd=[" +
                         Utf8(commandLine) + "]" +
                         " desktop=" + Utf8(startupInfo.lpDesktop.value_or(u"(none)")) +
                         " title=" + Utf8(startupInfo.lpTitle.value_or(u"(none)")) +
                         " show=" + std::to_string(startupInfo.wShowWindow);
    if (session_.Enter("CreateProcessW", std::move(detail))) return false;
    const auto image = files_.FindImage(applicationName, commandLine);
    if (!image) {
        session_.last = files_.MissingFileError(applicationName.value_or(commandLine));
        return false;
    }
    const std::uint32_t pid = nextProcessId_;
    nextProcessId_ += 4;
    KernelObject process{Kind::Process};
    process.processId = pid;
    process.createdAt = session_.tickCount;
    process.desktop = startupInfo.lpDesktop ? session_.DesktopByName(*startupInfo.lpDesktop)
                                            : session_.threadDesktop;
    if (process.desktop >= 0)
        ++session_.Object(session_.desktops[process.desktop].object).references;
    process.references = 1;  // the running process itself
    const int processObject = session_.NewObject(std::move(process));
    KernelObject thread{Kind::Thread};
    thread.processId = pid;
    thread.references = 1;
    const int threadObject = session_.NewObject(std::move(thread));
    processInformation = {session_.NewHandle(processObject, GenericAll),
                          session_.NewHandle(threadObject, GenericAll), pid, pid + 1};
    started_.push_back(StartedProcess{pid, applicationName, commandLine, *image, inheritHandles,
                                      creationFlags, startupInfo});
    const auto reaction = startReactions_.find(image->substr(image->rfind(u'\\') + 1));
    if (reaction != startReactions_.end()) reaction->second(pid);
    session_.last = ErrorSuccess;
    return true;
}

void SimKernel::WhenStarted(const Text& fileName, std::function<void(std::uint32_t)> react) {
    startReactions_[fileName] = std::move(react);
}

int SimKernel::ProcessObject(std::uint32_t processId) const {
    return session_.FindObject([&](const KernelObject& o) {
        return o.kind == Kind::Process && o.processId == processId && !o.signalled;
    });
}

Handle SimKernel::OpenProcess(std::uint32_t desiredAccess, bool inherit, std::uint32_t processId) {
    if (session_.Enter("OpenProcess", std::to_string(processId) + " " + std::to_string(inherit))) {
        return nullptr;
    }
    const int object = ProcessObject(processId);
    if (object == 0) {
        session_.last = ErrorInvalidParameter;  // no such process (any more)
        return nullptr;
    }
    return session_.NewHandle(object, desiredAccess);
}

bool SimKernel::GetProcessTimes(Handle process, std::uint64_t& creationTime) {
    if (session_.Enter("GetProcessTimes", Hex(process))) return false;
    const HandleEntry* entry = session_.Lookup(process, Kind::Process);
    if (entry == nullptr || !(entry->Grants(ProcessQueryLimitedInformation) ||
                              entry->Grants(ProcessQueryInformation))) {
        session_.last = entry == nullptr ? ErrorInvalidHandle : ErrorAccessDenied;
        return false;
    }
    creationTime = session_.Object(entry->object).createdAt * 10'000;
    return true;
}

std::vector<ProcessEntry> SimKernel::CreateToolhelp32Snapshot() {
    if (session_.Enter("CreateToolhelp32Snapshot")) return {};
    std::vector<ProcessEntry> entries;
    for (const auto& p : others_) {
        if (ProcessObject(p.processId) != 0) entries.push_back(p);
    }
    const auto slash = modulePath_.find_last_of(u'\\');
    entries.push_back({session_.processId, session_.parentProcessId,
                       modulePath_.substr(slash == Text::npos ? 0 : slash + 1)});
    for (const auto& p : started_) {
        if (ProcessObject(p.processId) == 0) continue;
        const auto name = p.image.find_last_of(u'\\');
        entries.push_back(
            {p.processId, session_.processId, p.image.substr(name == Text::npos ? 0 : name + 1)});
    }
    return entries;
}

void SimKernel::ExitProcess(std::uint32_t exitCode) {
    (void)session_.Enter("ExitProcess", std::to_string(exitCode));
    // The system closes what the process held: its handles, windows and hotkeys.
    for (const auto& release : session_.onProcessEnd)
        release();
    views_.clear();
    session_.CloseAllHandles();
    throw ProcessEnded{exitCode};
}

std::uint32_t SimKernel::GetModuleFileNameW(std::span<char16_t> buffer) {
    if (session_.Enter("GetModuleFileNameW") || buffer.empty()) return 0;
    const std::size_t n = std::min(modulePath_.size(), buffer.size() - 1);
    std::copy_n(modulePath_.begin(), n, buffer.begin());
    buffer[n] = u'\0';
    if (n < modulePath_.size()) {
        session_.last = ErrorInsufficientBuffer;
        return static_cast<std::uint32_t>(buffer.size());
    }
    return static_cast<std::uint32_t>(n);
}

Hinstance SimKernel::GetModuleHandleW() {
    (void)session_.Enter("GetModuleHandleW");
    return kModuleHandle;
}

std::uint64_t SimKernel::GetTickCount64() {
    (void)session_.Enter("GetTickCount64");
    return session_.tickCount;
}

void SimKernel::SetModuleFileName(const Text& path) {
    files_.RemoveFile(modulePath_);
    modulePath_ = path;
    files_.AddFile(path);
}

void SimKernel::EndProcess(std::uint32_t processId) {
    const int id = ProcessObject(processId);
    if (id == 0) return;
    KernelObject& process = session_.Object(id);
    process.signalled = true;
    if (process.desktop >= 0) session_.Release(session_.desktops[process.desktop].object);
    session_.Release(id);
}

std::uint32_t SimKernel::AddOtherProcess(const Text& exeFile, std::uint32_t parentProcessId,
                                         std::uint64_t startedAt) {
    const std::uint32_t pid = nextProcessId_;
    nextProcessId_ += 4;
    KernelObject process{Kind::Process};
    process.processId = pid;
    process.createdAt = startedAt;
    process.desktop = -1;
    process.references = 1;
    (void)session_.NewObject(std::move(process));
    others_.push_back({pid, parentProcessId, exeFile});
    return pid;
}

KernelObject* SimKernel::OtherNamed(const Ansi& name, Kind kind) {
    const auto it = session_.named.find(name);
    if (it == session_.named.end() || session_.Object(it->second).kind != kind) return nullptr;
    return &session_.Object(it->second);
}

bool SimKernel::EventExists(const Ansi& name) const {
    const KernelObject* o = session_.Named(name);
    return o != nullptr && o->kind == Kind::Event;
}

bool SimKernel::EventIsSignalled(const Ansi& name) const {
    return EventExists(name) && session_.Named(name)->signalled;
}

bool SimKernel::WaitForEventInOtherProcess(const Ansi& name) {
    KernelObject* o = OtherNamed(name, Kind::Event);
    if (o == nullptr || !o->signalled) return false;
    if (!o->manualReset) o->signalled = false;
    return true;
}

void SimKernel::SetEventInOtherProcess(const Ansi& name) {
    CreateEventInOtherProcess(name);
    OtherNamed(name, Kind::Event)->signalled = true;
}

void SimKernel::WhenSignalled(const Ansi& name, std::function<void()> react) {
    CreateEventInOtherProcess(name);
    reactions_[name] = std::move(react);
}

void SimKernel::CreateEventInOtherProcess(const Ansi& name) {
    if (session_.named.count(name) != 0) return;
    KernelObject o{Kind::Event};
    o.name = name;
    o.references = 1;
    session_.named[name] = session_.NewObject(std::move(o));
}

void SimKernel::CreateMutexInOtherProcess(const Ansi& name) {
    if (session_.named.count(name) != 0) return;
    KernelObject o{Kind::Mutex};
    o.name = name;
    o.references = 1;
    session_.named[name] = session_.NewObject(std::move(o));
}

}  // namespace zk::sim
