#include "platform/sim/sim_os.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "platform/sim/code_page_1252.h"
#include "platform/sim/keyboard_layout.h"
#include "platform/sim/system_texts.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kOtherProcessId = 0x9990;
constexpr std::uint32_t kErrorBadPathname = 161;
constexpr std::uint32_t kErrorInvalidIndex = 1413;
constexpr std::uint32_t kErrorClassAlreadyExists = 1410;
constexpr std::uint32_t kErrorCannotFindWndClass = 1407;
constexpr std::uint32_t kErrorResourceNameNotFound = 1814;
constexpr std::uint32_t kErrorMrMidNotFound = 317;
constexpr std::uint32_t kWaitFailed = 0xFFFFFFFF;
constexpr std::uint32_t kGenericWrite = 0x40000000;
constexpr std::uint32_t kFileWriteData = 0x0002;
constexpr std::uint32_t kCreateAlways = 2;
constexpr std::uint32_t kFormatMessageFromSystem = 0x1000;
constexpr std::uint32_t kKeyAllAccess = 0xF003F;
constexpr std::uint32_t kWsVisible = 0x10000000;
constexpr std::uint32_t kImageIcon = 1;
constexpr std::uint32_t kLrShared = 0x8000;

std::string Hex(std::intptr_t value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%#llx", static_cast<unsigned long long>(value));
    return buffer;
}

template <class H>
requires std::is_pointer_v<H> std::string Hex(H handle) {
    return Hex(HandleValue(handle));
}

bool SameName(const Text& a, const Text& b) {
    auto fold = [](char16_t c) {
        return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
    };
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [&](char16_t x, char16_t y) { return fold(x) == fold(y); });
}

Text Digits2(int value) {
    Text t;
    if (value < 10) t += u'0';
    t += Utf16(std::to_string(value));
    return t;
}

}  // namespace

SimOs::SimOs() : systemTexts_(EnglishSystemTexts()) {
    desktops_.push_back({u"Default", NewObject({Kind::Desktop})});
    objects_.at(desktops_[0].object).references = 1;  // the window station keeps it
    objects_.at(desktops_[0].object).desktop = 0;
    threadDesktopHandle_ = NewHandle(desktops_[0].object, GenericAll, true);
    AddFolder(ParentFolder(modulePath_));
    AddFolder(localAppData_);
    AddFile(modulePath_);
}

SimOs::~SimOs() = default;

// ----- bookkeeping

bool SimOs::Enter(const char* call, std::string detail) {
    const int nth = ++callCounts_[call];
    journal_.Record(call, std::move(detail));
    if (const auto error = faults_.Check(call, nth)) {
        last_ = *error;
        journal_.MarkLastFailed();
        return true;
    }
    return false;
}

int SimOs::NewObject(Object object) {
    const int id = nextObject_++;
    objects_.emplace(id, std::move(object));
    return id;
}

Handle SimOs::NewHandle(int object, std::uint32_t access, bool threadDesktop) {
    const std::intptr_t value = nextHandle_;
    nextHandle_ += 4;
    handles_[value] = HandleEntry{object, access, threadDesktop};
    ++objects_.at(object).references;
    return HandleFrom<Handle>(value);
}

SimOs::HandleEntry* SimOs::Lookup(Handle handle, Kind kind) {
    return const_cast<HandleEntry*>(std::as_const(*this).Lookup(handle, kind));
}

const SimOs::HandleEntry* SimOs::Lookup(Handle handle, Kind kind) const {
    const auto it = handles_.find(HandleValue(handle));
    if (it == handles_.end() || objects_.at(it->second.object).kind != kind) return nullptr;
    return &it->second;
}

void SimOs::Release(int id) {
    auto it = objects_.find(id);
    if (it == objects_.end() || --it->second.references > 0) return;
    if (!it->second.name.empty()) namedObjects_.erase(it->second.name);
    if (it->second.kind == Kind::Desktop) desktops_[it->second.desktop].name.clear();
    objects_.erase(it);
}

Handle SimOs::CreateNamed(Kind kind, bool manualReset, bool initialState, const Ansi& name) {
    if (!name.empty()) {
        const auto existing = namedObjects_.find(name);
        if (existing != namedObjects_.end()) {
            if (objects_.at(existing->second).kind != kind) {
                last_ = ErrorInvalidHandle;
                return nullptr;
            }
            last_ = ErrorAlreadyExists;
            return NewHandle(existing->second, GenericAll);
        }
    }
    Object object{kind};
    object.name = name;
    object.manualReset = manualReset;
    object.signalled = initialState;
    const int id = NewObject(std::move(object));
    if (!name.empty()) namedObjects_[name] = id;
    last_ = ErrorSuccess;
    return NewHandle(id, GenericAll);
}

// ----- kernel objects and processes

Handle SimOs::CreateEventA(bool manualReset, bool initialState, const Ansi& name) {
    if (Enter("CreateEventA", name)) return nullptr;
    return CreateNamed(Kind::Event, manualReset, initialState, name);
}

Handle SimOs::CreateMutexA(bool initialOwner, const Ansi& name) {
    if (Enter("CreateMutexA", name)) return nullptr;
    return CreateNamed(Kind::Mutex, false, !initialOwner, name);
}

Handle SimOs::OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) {
    if (Enter("OpenEventA", name + " " + std::to_string(inherit))) return nullptr;
    const auto existing = namedObjects_.find(name);
    if (existing == namedObjects_.end()) {
        last_ = ErrorFileNotFound;
        return nullptr;
    }
    if (objects_.at(existing->second).kind != Kind::Event) {
        last_ = ErrorInvalidHandle;
        return nullptr;
    }
    return NewHandle(existing->second, desiredAccess);
}

bool SimOs::SetEvent(Handle event) {
    if (Enter("SetEvent", Hex(event))) return false;
    const auto* entry = Lookup(event, Kind::Event);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    objects_.at(entry->object).signalled = true;
    return true;
}

std::uint32_t SimOs::WaitForSingleObject(Handle object, std::uint32_t milliseconds) {
    if (Enter("WaitForSingleObject", Hex(object) + " " + std::to_string(milliseconds))) {
        return kWaitFailed;
    }
    const auto it = handles_.find(HandleValue(object));
    if (it == handles_.end()) {
        last_ = ErrorInvalidHandle;
        return kWaitFailed;
    }
    Object& o = objects_.at(it->second.object);
    if (!o.signalled) return WaitTimeout;  // nothing else runs in the simulation to set it
    if ((o.kind == Kind::Event && !o.manualReset) || o.kind == Kind::Mutex) o.signalled = false;
    return WaitObject0;
}

bool SimOs::CloseHandle(Handle object) {
    if (Enter("CloseHandle", Hex(object))) return false;
    const auto it = handles_.find(HandleValue(object));
    if (it == handles_.end()) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    const int id = it->second.object;
    handles_.erase(it);
    Release(id);
    return true;
}

std::uint32_t SimOs::GetCurrentThreadId() {
    Enter("GetCurrentThreadId");
    return threadId_;
}

std::uint32_t SimOs::GetCurrentProcessId() {
    Enter("GetCurrentProcessId");
    return processId_;
}

std::optional<Text> SimOs::FindImage(const std::optional<Text>& applicationName,
                                     const Text& commandLine) const {
    auto exists = [&](const Text& path) { return files_.count(FoldPath(FullPath(path))) != 0; };
    if (applicationName) {
        if (exists(*applicationName)) return FullPath(*applicationName);
        return std::nullopt;
    }
    Text line = commandLine;
    line.erase(0, line.find_first_not_of(u' '));
    std::vector<Text> candidates;
    if (!line.empty() && line[0] == u'"') {
        candidates.push_back(line.substr(1, line.find(u'"', 1) - 1));
    } else {
        // An unquoted path with blanks: the system tries each blank-separated prefix in turn.
        for (std::size_t pos = line.find(u' ');; pos = line.find(u' ', pos + 1)) {
            candidates.push_back(line.substr(0, pos));
            if (pos == Text::npos) break;
        }
    }
    for (const auto& c : candidates) {
        if (c.empty()) continue;
        if (exists(c)) return FullPath(c);
        if (exists(c + u".exe")) return FullPath(c + u".exe");
    }
    return std::nullopt;
}

bool SimOs::CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                           bool inheritHandles, std::uint32_t creationFlags,
                           const StartupInfo& startupInfo, ProcessInformation& processInformation) {
    std::string detail = "app=" + (applicationName ? Utf8(*applicationName) : "(none)") + " cmd=[" +
                         Utf8(commandLine) + "]" +
                         " desktop=" + Utf8(startupInfo.lpDesktop.value_or(u"(none)")) +
                         " title=" + Utf8(startupInfo.lpTitle.value_or(u"(none)")) +
                         " show=" + std::to_string(startupInfo.wShowWindow);
    if (Enter("CreateProcessW", std::move(detail))) return false;
    const auto image = FindImage(applicationName, commandLine);
    if (!image) {
        const Text path = applicationName.value_or(commandLine);
        last_ = FolderExists(ParentFolder(FullPath(path))) ? ErrorFileNotFound : ErrorPathNotFound;
        return false;
    }
    const std::uint32_t pid = nextProcessId_;
    nextProcessId_ += 4;
    Object process{Kind::Process};
    process.processId = pid;
    process.desktop =
        startupInfo.lpDesktop ? DesktopByName(*startupInfo.lpDesktop) : threadDesktop_;
    if (process.desktop >= 0) ++objects_.at(desktops_[process.desktop].object).references;
    process.references = 1;  // the running process itself
    const int processObject = NewObject(std::move(process));
    Object thread{Kind::Thread};
    thread.processId = pid;
    thread.references = 1;
    const int threadObject = NewObject(std::move(thread));
    processInformation = {NewHandle(processObject, GenericAll), NewHandle(threadObject, GenericAll),
                          pid, pid + 1};
    started_.push_back(StartedProcess{pid, applicationName, commandLine, *image, inheritHandles,
                                      creationFlags, startupInfo});
    last_ = ErrorSuccess;
    return true;
}

void SimOs::ExitProcess(std::uint32_t exitCode) {
    Enter("ExitProcess", std::to_string(exitCode));
    // The system closes what the process held: its handles, windows and hotkeys.
    std::vector<Hwnd> own;
    for (const auto& [value, w] : windows_) {
        if (w.processId == processId_) own.push_back(HandleFrom<Hwnd>(value));
    }
    for (const Hwnd w : own)
        windows_.erase(HandleValue(w));
    std::erase_if(hotkeys_, [&](const HotKey& h) { return h.processId == processId_; });
    while (!handles_.empty()) {
        const int id = handles_.begin()->second.object;
        handles_.erase(handles_.begin());
        Release(id);
    }
    queue_.clear();
    throw ProcessEnded{exitCode};
}

void SimOs::EndProcess(std::uint32_t processId) {
    for (auto& [id, o] : objects_) {
        if (o.kind == Kind::Process && o.processId == processId && !o.signalled) {
            o.signalled = true;
            if (o.desktop >= 0) Release(desktops_[o.desktop].object);
            Release(id);
            return;
        }
    }
}

// ----- text, module, time, files

std::uint32_t SimOs::FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                    std::uint32_t languageId, std::span<char16_t> buffer) {
    if (Enter("FormatMessageW", std::to_string(messageId) + " lang " + std::to_string(languageId) +
                                    " size " + std::to_string(buffer.size()))) {
        return 0;
    }
    const auto it = systemTexts_.find(messageId);
    if ((flags & kFormatMessageFromSystem) == 0 || it == systemTexts_.end()) {
        last_ = kErrorMrMidNotFound;
        return 0;
    }
    if (it->second.size() >= buffer.size()) {
        last_ = ErrorInsufficientBuffer;
        return 0;
    }
    std::copy(it->second.begin(), it->second.end(), buffer.begin());
    buffer[it->second.size()] = u'\0';
    return static_cast<std::uint32_t>(it->second.size());
}

std::uint32_t SimOs::GetModuleFileNameW(std::span<char16_t> buffer) {
    if (Enter("GetModuleFileNameW") || buffer.empty()) return 0;
    const std::size_t n = std::min(modulePath_.size(), buffer.size() - 1);
    std::copy_n(modulePath_.begin(), n, buffer.begin());
    buffer[n] = u'\0';
    if (n < modulePath_.size()) {
        last_ = ErrorInsufficientBuffer;
        return static_cast<std::uint32_t>(buffer.size());
    }
    return static_cast<std::uint32_t>(n);
}

Hinstance SimOs::GetModuleHandleW() {
    Enter("GetModuleHandleW");
    return HandleFrom<Hinstance>(0x140000000);
}

Text SimOs::MultiByteToWideChar(std::string_view ansi) {
    if (Enter("MultiByteToWideChar", std::to_string(ansi.size()) + " bytes")) return {};
    return DecodeCp1252(ansi);
}

Ansi SimOs::WideCharToMultiByte(std::u16string_view text) {
    if (Enter("WideCharToMultiByte", std::to_string(text.size()) + " chars")) return {};
    return EncodeCp1252(text);
}

SystemTime SimOs::GetLocalTime() {
    Enter("GetLocalTime");
    return localTime_;
}

// The session's regional settings are those of English (United States).
Text SimOs::GetDateFormatW(const SystemTime& t) {
    if (Enter("GetDateFormatW")) return {};
    return Utf16(std::to_string(t.wMonth) + "/" + std::to_string(t.wDay) + "/" +
                 std::to_string(t.wYear));
}

Text SimOs::GetTimeFormatW(const SystemTime& t) {
    if (Enter("GetTimeFormatW")) return {};
    const int hour12 = t.wHour % 12 == 0 ? 12 : t.wHour % 12;
    return Utf16(std::to_string(hour12)) + u":" + Digits2(t.wMinute) + u":" + Digits2(t.wSecond) +
           (t.wHour < 12 ? u" AM" : u" PM");
}

Text SimOs::FoldPath(const Text& path) {
    Text folded = path;
    for (auto& c : folded) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
        if (c == u'/') c = u'\\';
    }
    while (!folded.empty() && folded.back() == u'\\')
        folded.pop_back();
    return folded;
}

Text SimOs::FullPath(const Text& path) const {
    const bool absolute = (path.size() >= 2 && path[1] == u':') || path.starts_with(u"\\");
    return absolute ? path : currentDirectory_ + u"\\" + path;
}

Text SimOs::ParentFolder(const Text& path) {
    const auto slash = path.find_last_of(u"\\/");
    return slash == Text::npos ? Text() : path.substr(0, slash);
}

bool SimOs::FolderExists(const Text& path) const {
    return folders_.count(FoldPath(path)) != 0;
}

void SimOs::AddFolder(const Text& path) {
    const Text folded = FoldPath(path);
    for (std::size_t i = 0; i <= folded.size(); ++i) {
        if (i == folded.size() || folded[i] == u'\\') folders_.insert(folded.substr(0, i));
    }
}

void SimOs::AddFile(const Text& path, std::vector<std::byte> contents) {
    const Text full = FullPath(path);
    AddFolder(ParentFolder(full));
    files_[FoldPath(full)] = File{full, std::move(contents)};
}

void SimOs::RemoveFile(const Text& path) {
    files_.erase(FoldPath(FullPath(path)));
}

void SimOs::MakeUnwritable(const Text& path) {
    unwritable_.insert(FoldPath(FullPath(path)));
}

std::optional<std::vector<std::byte>> SimOs::FileContents(const Text& path) const {
    const auto it = files_.find(FoldPath(FullPath(path)));
    if (it == files_.end()) return std::nullopt;
    return it->second.contents;
}

std::string SimOs::FileText(const Text& path) const {
    const auto contents = FileContents(path);
    if (!contents) return {};
    return std::string(reinterpret_cast<const char*>(contents->data()), contents->size());
}

void SimOs::SetModuleFileName(const Text& path) {
    RemoveFile(modulePath_);
    modulePath_ = path;
    AddFile(path);
}

Handle SimOs::CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                          std::uint32_t creationDisposition) {
    (void)shareMode;
    if (Enter("CreateFileW", Utf8(path))) return InvalidHandleValue();
    const Text full = FullPath(path);
    const Text key = FoldPath(full);
    if (unwritable_.count(key) != 0) {
        last_ = ErrorAccessDenied;
        return InvalidHandleValue();
    }
    if (!FolderExists(ParentFolder(full))) {
        last_ = ErrorPathNotFound;
        return InvalidHandleValue();
    }
    const bool exists = files_.count(key) != 0;
    if (creationDisposition == OpenExisting && !exists) {
        last_ = ErrorFileNotFound;
        return InvalidHandleValue();
    }
    if (!exists || creationDisposition == kCreateAlways) files_[key] = File{full, {}};
    last_ = exists && creationDisposition == OpenAlways ? ErrorAlreadyExists : ErrorSuccess;
    Object file{Kind::File};
    file.path = key;
    return NewHandle(NewObject(std::move(file)), access);
}

// Files are written at their end: the program opens files only to append to them.
bool SimOs::WriteFile(Handle file, std::span<const std::byte> bytes) {
    if (Enter("WriteFile", Hex(file) + " " + std::to_string(bytes.size()) + " bytes")) return false;
    const auto* entry = Lookup(file, Kind::File);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    if ((entry->access & (FileAppendData | kFileWriteData | kGenericWrite)) == 0) {
        last_ = ErrorAccessDenied;
        return false;
    }
    auto& contents = files_[objects_.at(entry->object).path].contents;
    contents.insert(contents.end(), bytes.begin(), bytes.end());
    return true;
}

bool SimOs::ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) {
    bytesRead = 0;
    if (Enter("ReadFile", Hex(file) + " " + std::to_string(buffer.size()))) return false;
    HandleEntry* entry = Lookup(file, Kind::File);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    if ((entry->access & GenericRead) == 0) {
        last_ = ErrorAccessDenied;
        return false;
    }
    const auto& contents = files_[objects_.at(entry->object).path].contents;
    const std::size_t n =
        std::min(buffer.size(), contents.size() - std::min(entry->position, contents.size()));
    std::copy_n(contents.begin() + static_cast<std::ptrdiff_t>(entry->position), n, buffer.begin());
    entry->position += n;
    bytesRead = static_cast<std::uint32_t>(n);
    return true;
}

bool SimOs::DeleteFileW(const Text& path) {
    if (Enter("DeleteFileW", Utf8(path))) return false;
    const Text key = FoldPath(FullPath(path));
    if (unwritable_.count(key) != 0) {
        last_ = ErrorAccessDenied;
        return false;
    }
    if (files_.erase(key) == 0) {
        last_ = FolderExists(ParentFolder(FullPath(path))) ? ErrorFileNotFound : ErrorPathNotFound;
        return false;
    }
    return true;
}

std::int32_t SimOs::SHGetFolderPathW(int csidl, std::uint32_t flags, std::span<char16_t> path) {
    if (Enter("SHGetFolderPathW", std::to_string(csidl) + " " + std::to_string(flags))) {
        return EInvalidArg;
    }
    if (!path.empty()) path[0] = u'\0';
    if (folderResult_) return *folderResult_;
    if ((csidl & 0xFF) != CsidlLocalAppData || path.size() <= localAppData_.size()) {
        return EInvalidArg;
    }
    if ((csidl & CsidlFlagCreate) != 0) AddFolder(localAppData_);
    std::copy(localAppData_.begin(), localAppData_.end(), path.begin());
    path[localAppData_.size()] = u'\0';
    return SOk;
}

// ----- desktops

int SimOs::DesktopByName(const Text& name) const {
    for (std::size_t i = 0; i < desktops_.size(); ++i) {
        if (!desktops_[i].name.empty() && SameName(desktops_[i].name, name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Hdesk SimOs::OpenDesktop(int desktop, std::uint32_t access) {
    return static_cast<Hdesk>(NewHandle(desktops_[desktop].object, access));
}

bool SimOs::ThreadOwnsWindows() const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [&](const auto& w) { return w.second.processId == processId_; });
}

Hdesk SimOs::GetThreadDesktop(std::uint32_t threadId) {
    if (Enter("GetThreadDesktop", std::to_string(threadId))) return nullptr;
    if (threadId != threadId_) {
        last_ = ErrorInvalidParameter;
        return nullptr;
    }
    return static_cast<Hdesk>(threadDesktopHandle_);
}

Hdesk SimOs::OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) {
    if (Enter("OpenInputDesktop",
              std::to_string(flags) + " " + std::to_string(inherit) + " " + Hex(desiredAccess))) {
        return nullptr;
    }
    return OpenDesktop(inputDesktop_, desiredAccess);
}

Hdesk SimOs::CreateDesktopW(const Text& name, std::uint32_t flags, std::uint32_t desiredAccess) {
    if (Enter("CreateDesktopW",
              Utf8(name) + " " + std::to_string(flags) + " " + Hex(desiredAccess))) {
        return nullptr;
    }
    if (name.empty() || name.find(u'\\') != Text::npos) {
        last_ = kErrorBadPathname;
        return nullptr;
    }
    // A success leaves the last error as it was, as under Wine, whether made or opened.
    if (const int existing = DesktopByName(name); existing >= 0) {
        return OpenDesktop(existing, desiredAccess);
    }
    Object object{Kind::Desktop};
    object.desktop = static_cast<int>(desktops_.size());
    desktops_.push_back({name, NewObject(std::move(object))});
    return OpenDesktop(static_cast<int>(desktops_.size()) - 1, desiredAccess);
}

bool SimOs::SetThreadDesktop(Hdesk desktop) {
    if (Enter("SetThreadDesktop", Hex(desktop))) return false;
    const auto* entry = Lookup(desktop, Kind::Desktop);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    const int target = objects_.at(entry->object).desktop;
    // A thread that owns windows stays on its desktop.
    if (target != threadDesktop_ && ThreadOwnsWindows()) {
        last_ = ErrorBusy;
        return false;
    }
    threadDesktop_ = target;
    threadDesktopHandle_ = desktop;
    return true;
}

bool SimOs::SwitchDesktop(Hdesk desktop) {
    if (Enter("SwitchDesktop", Hex(desktop))) return false;
    const auto* entry = Lookup(desktop, Kind::Desktop);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    if ((entry->access & (DesktopSwitchDesktop | GenericAll)) == 0) {
        last_ = ErrorAccessDenied;
        return false;
    }
    inputDesktop_ = objects_.at(entry->object).desktop;
    return true;
}

bool SimOs::CloseDesktop(Hdesk desktop) {
    if (Enter("CloseDesktop", Hex(desktop))) return false;
    const auto* entry = Lookup(desktop, Kind::Desktop);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return false;
    }
    if (desktop == threadDesktopHandle_) {
        last_ = ErrorBusy;  // the thread's own desktop is in use
        return false;
    }
    const int id = entry->object;
    handles_.erase(HandleValue(desktop));
    Release(id);
    return true;
}

Text SimOs::GetUserObjectInformationW(Handle object) {
    if (Enter("GetUserObjectInformationW", Hex(object))) return {};
    const auto* entry = Lookup(object, Kind::Desktop);
    if (entry == nullptr) {
        last_ = ErrorInvalidHandle;
        return {};
    }
    return desktops_[objects_.at(entry->object).desktop].name;
}

std::vector<Text> SimOs::EnumDesktopsW() {
    Enter("EnumDesktopsW");
    std::vector<Text> names;
    for (const auto& d : desktops_) {
        if (!d.name.empty()) names.push_back(d.name);
    }
    return names;
}

Text SimOs::InputDesktopName() const {
    return desktops_[inputDesktop_].name;
}
Text SimOs::ThreadDesktopName() const {
    return desktops_[threadDesktop_].name;
}
bool SimOs::DesktopExists(const Text& name) const {
    return DesktopByName(name) >= 0;
}

void SimOs::CreateDesktopInOtherProcess(const Text& name) {
    if (DesktopExists(name)) return;
    Object object{Kind::Desktop};
    object.desktop = static_cast<int>(desktops_.size());
    object.references = 1;
    desktops_.push_back({name, NewObject(std::move(object))});
}

// ----- hotkeys and key names

std::int32_t SimOs::RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                   std::uint32_t virtualKey) {
    if (Enter("RegisterHotKey", Hex(window) + " id " + std::to_string(id) + " mod " +
                                    std::to_string(modifiers) + " vk " +
                                    std::to_string(virtualKey))) {
        return 0;
    }
    if (window != nullptr && FindWindow(window) == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return 0;
    }
    const std::uint32_t combination = modifiers & 0x0F;
    for (const auto& h : hotkeys_) {
        if ((h.modifiers & 0x0F) == combination && h.virtualKey == virtualKey) {
            last_ = ErrorHotkeyAlreadyRegistered;
            return 0;
        }
        if (h.window == window && h.id == id && h.processId == processId_) {
            last_ = ErrorHotkeyAlreadyRegistered;
            return 0;
        }
    }
    hotkeys_.push_back({window, id, modifiers, virtualKey, processId_});
    return 1;
}

bool SimOs::UnregisterHotKey(Hwnd window, int id) {
    if (Enter("UnregisterHotKey", Hex(window) + " id " + std::to_string(id))) return false;
    const auto it = std::find_if(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return h.window == window && h.id == id && h.processId == processId_;
    });
    if (it == hotkeys_.end()) {
        last_ = ErrorHotkeyNotRegistered;
        return false;
    }
    hotkeys_.erase(it);
    return true;
}

Hkl SimOs::GetKeyboardLayout(std::uint32_t threadId) {
    Enter("GetKeyboardLayout", std::to_string(threadId));
    return HandleFrom<Hkl>(0x04090409);
}

std::uint32_t SimOs::MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) {
    if (Enter("MapVirtualKeyExA",
              std::to_string(code) + " type " + std::to_string(mapType) + " " + Hex(layout))) {
        return 0;
    }
    return mapType == 0 ? UsScanCodeOf(code) : 0;
}

int SimOs::GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) {
    if (Enter("GetKeyNameTextA", Hex(lParam)) || buffer.empty()) return 0;
    const auto scan = static_cast<std::uint32_t>(lParam >> 16) & 0xFF;
    const bool extended = ((lParam >> 24) & 1) != 0;
    const std::string name = UsKeyNameOf(scan, extended);
    const std::size_t n = std::min(name.size(), buffer.size() - 1);
    std::copy_n(name.begin(), n, buffer.begin());
    buffer[n] = '\0';
    return static_cast<int>(n);
}

void SimOs::HoldHotKeyInOtherProcess(std::uint32_t modifiers, std::uint32_t virtualKey) {
    hotkeys_.push_back({nullptr, 1, modifiers, virtualKey, kOtherProcessId});
}

bool SimOs::IsHotKeyRegistered(std::uint32_t modifiers, std::uint32_t virtualKey) const {
    return std::any_of(hotkeys_.begin(), hotkeys_.end(), [&](const HotKey& h) {
        return (h.modifiers & 0x0F) == (modifiers & 0x0F) && h.virtualKey == virtualKey;
    });
}

bool SimOs::PressHotKey(std::uint32_t modifiers, std::uint32_t virtualKey) {
    for (const auto& h : hotkeys_) {
        if ((h.modifiers & 0x0F) != (modifiers & 0x0F) || h.virtualKey != virtualKey) continue;
        if (h.processId == processId_) {
            const auto lParam = static_cast<Lparam>((virtualKey << 16) | (modifiers & 0xFFFF));
            queue_.push_back(Msg{h.window, WmHotKey, static_cast<Wparam>(h.id), lParam});
        }
        return true;
    }
    return false;
}

// ----- windows

SimOs::Window* SimOs::FindWindow(Hwnd window) {
    const auto it = windows_.find(HandleValue(window));
    return it == windows_.end() ? nullptr : &it->second;
}

const SimOs::Window* SimOs::FindWindow(Hwnd window) const {
    const auto it = windows_.find(HandleValue(window));
    return it == windows_.end() ? nullptr : &it->second;
}

Lresult SimOs::Deliver(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    const Window* w = FindWindow(window);
    if (w == nullptr || w->procedure == nullptr) return 0;
    const WndProc procedure = w->procedure;  // the record may go while the procedure runs
    return procedure(window, message, wParam, lParam);
}

bool SimOs::SetPropA(Hwnd window, const Ansi& name, Handle data) {
    if (Enter("SetPropA", Hex(window) + " " + name)) return false;
    Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return false;
    }
    const Text wide = DecodeCp1252(name);
    for (auto& [n, d] : w->props) {
        if (SameName(n, wide)) {
            d = data;
            return true;
        }
    }
    w->props.emplace_back(wide, data);
    return true;
}

Handle SimOs::GetPropW(Hwnd window, const Text& name) {
    if (Enter("GetPropW", Utf8(name))) return nullptr;
    const Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return nullptr;
    }
    for (const auto& [n, d] : w->props) {
        if (SameName(n, name)) return d;
    }
    return nullptr;
}

bool SimOs::SetPropW(Hwnd window, const Text& name, Handle data) {
    if (Enter("SetPropW", Utf8(name) + " " + Hex(data))) return false;
    Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return false;
    }
    for (auto& [n, d] : w->props) {
        if (SameName(n, name)) {
            d = data;
            return true;
        }
    }
    w->props.emplace_back(name, data);
    return true;
}

Handle SimOs::RemovePropW(Hwnd window, const Text& name) {
    if (Enter("RemovePropW", Utf8(name))) return nullptr;
    Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return nullptr;
    }
    for (auto it = w->props.begin(); it != w->props.end(); ++it) {
        if (SameName(it->first, name)) {
            const Handle data = it->second;
            w->props.erase(it);
            return data;
        }
    }
    return nullptr;
}

bool SimOs::IsWindow(Hwnd window) {
    Enter("IsWindow", Hex(window));
    return FindWindow(window) != nullptr;
}

std::uint32_t SimOs::GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) {
    if (Enter("GetWindowThreadProcessId", Hex(window))) return 0;
    const Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        if (processId != nullptr) *processId = 0;
        return 0;
    }
    if (processId != nullptr) *processId = w->processId;
    return w->processId == processId_ ? threadId_ : w->processId + 1;
}

std::intptr_t SimOs::SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) {
    if (Enter("SetWindowLongPtrW", Hex(window) + " " + std::to_string(index) + " " + Hex(value))) {
        return 0;
    }
    Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return 0;
    }
    if (w->processId != processId_) {
        last_ = ErrorAccessDenied;
        return 0;
    }
    last_ = ErrorSuccess;
    if (index == GwlpWndProc) {
        const auto previous = reinterpret_cast<std::intptr_t>(w->procedure);
        w->procedure = reinterpret_cast<WndProc>(value);
        return previous;
    }
    if (index == GwlpUserData) return std::exchange(w->userData, value);
    last_ = kErrorInvalidIndex;
    return 0;
}

std::intptr_t SimOs::GetWindowLongPtrW(Hwnd window, int index) {
    if (Enter("GetWindowLongPtrW", Hex(window) + " " + std::to_string(index))) return 0;
    const Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return 0;
    }
    if (index == GwlpWndProc) return reinterpret_cast<std::intptr_t>(w->procedure);
    if (index == GwlpUserData) return w->userData;
    last_ = kErrorInvalidIndex;
    return 0;
}

Lresult SimOs::CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message, Wparam wParam,
                               Lparam lParam) {
    if (Enter("CallWindowProcW", std::to_string(message)) || previous == nullptr) return 0;
    return previous(window, message, wParam, lParam);
}

Hwnd SimOs::GetWindow(Hwnd window, std::uint32_t command) {
    if (Enter("GetWindow", Hex(window) + " " + std::to_string(command))) return nullptr;
    const Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return nullptr;
    }
    return command == GwOwner ? w->owner : nullptr;
}

int SimOs::GetSystemMetrics(int index) {
    Enter("GetSystemMetrics", std::to_string(index));
    switch (index) {
        case 11:  // SM_CXICON
        case 12:  // SM_CYICON
            return 32;
        case 49:  // SM_CXSMICON
        case 50:  // SM_CYSMICON
            return 16;
        default:
            return 0;
    }
}

Handle SimOs::LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx, int cy,
                         std::uint32_t flags) {
    if (Enter("LoadImageA", name + " " + std::to_string(cx) + "x" + std::to_string(cy))) {
        return nullptr;
    }
    if (instance != HandleFrom<Hinstance>(0x140000000) || type != kImageIcon ||
        iconGroups_.count(name) == 0) {
        last_ = kErrorResourceNameNotFound;
        return nullptr;
    }
    (void)cy;
    if ((flags & kLrShared) != 0) {
        auto& shared = sharedIcons_[{name, cx}];
        if (shared == nullptr) shared = HandleFrom<Handle>(nextIcon_++);
        return shared;
    }
    return HandleFrom<Handle>(nextIcon_++);
}

Lresult SimOs::SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (Enter("SendMessageA", Hex(window) + " " + std::to_string(message) + " " +
                                  std::to_string(wParam) + " " + Hex(lParam))) {
        return 0;
    }
    if (FindWindow(window) == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return 0;
    }
    return Deliver(window, message, wParam, lParam);
}

std::uint16_t SimOs::RegisterClassW(const Text& className, WndProc procedure, Hinstance) {
    if (Enter("RegisterClassW", Utf8(className))) return 0;
    if (classes_.count(className) != 0) {
        last_ = kErrorClassAlreadyExists;
        return 0;
    }
    classes_[className] = procedure;
    return static_cast<std::uint16_t>(0xC000 + classes_.size());
}

Hwnd SimOs::CreateWindowExW(std::uint32_t exStyle, const Text& className, const Text& windowName,
                            std::uint32_t style, Hwnd parent, Hinstance) {
    if (Enter("CreateWindowExW", Utf8(className) + " " + Utf8(windowName))) return nullptr;
    const auto cls = classes_.find(className);
    if (cls == classes_.end()) {
        last_ = kErrorCannotFindWndClass;
        return nullptr;
    }
    const Hwnd hwnd = HandleFrom<Hwnd>(nextWindow_);
    nextWindow_ += 0x10;
    Window w;
    w.className = className;
    w.caption = windowName;
    w.procedure = cls->second;
    w.owner = parent;
    w.processId = processId_;
    w.desktop = threadDesktop_;
    w.exStyle = exStyle;
    w.style = style;
    windows_[HandleValue(hwnd)] = std::move(w);
    if (Deliver(hwnd, WmCreate, 0, 0) == -1) {
        windows_.erase(HandleValue(hwnd));
        return nullptr;
    }
    return hwnd;
}

bool SimOs::DestroyWindow(Hwnd window) {
    if (Enter("DestroyWindow", Hex(window))) return false;
    const Window* w = FindWindow(window);
    if (w == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return false;
    }
    if (w->processId != processId_) {
        last_ = ErrorAccessDenied;
        return false;
    }
    std::vector<Hwnd> owned;
    for (const auto& [value, other] : windows_) {
        if (other.owner == window) owned.push_back(HandleFrom<Hwnd>(value));
    }
    for (const Hwnd o : owned)
        DestroyWindow(o);
    Deliver(window, WmDestroy, 0, 0);
    Deliver(window, WmNcDestroy, 0, 0);
    windows_.erase(HandleValue(window));
    // The system frees the hotkeys of a window that is destroyed.
    std::erase_if(hotkeys_, [&](const HotKey& h) { return h.window == window; });
    std::erase_if(queue_, [&](const Msg& m) { return m.hwnd == window; });
    return true;
}

Lresult SimOs::DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    Enter("DefWindowProcW", std::to_string(message));
    Window* w = FindWindow(window);
    if (w == nullptr) return 0;
    switch (message) {
        case WmClose:
            DestroyWindow(window);
            return 0;
        case WmQueryEndSession:
            return 1;
        case WmSetIcon: {
            Handle& slot = wParam == 1 ? w->bigIcon : w->smallIcon;
            return HandleValue(std::exchange(slot, HandleFrom<Handle>(lParam)));
        }
        case WmGetIcon:
            return HandleValue(wParam == 1 ? w->bigIcon : w->smallIcon);
        default:
            return 0;
    }
}

Lresult SimOs::SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (Enter("SendMessageW", Hex(window) + " " + std::to_string(message))) return 0;
    if (FindWindow(window) == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return 0;
    }
    return Deliver(window, message, wParam, lParam);
}

bool SimOs::PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (Enter("PostMessageW", Hex(window) + " " + std::to_string(message))) return false;
    if (window != nullptr && FindWindow(window) == nullptr) {
        last_ = ErrorInvalidWindowHandle;
        return false;
    }
    queue_.push_back(Msg{window, message, wParam, lParam});
    return true;
}

int SimOs::GetMessageW(Msg& message) {
    Enter("GetMessageW");
    if (!queue_.empty()) {
        message = queue_.front();
        queue_.pop_front();
        return 1;
    }
    if (quitCode_) {
        message = Msg{nullptr, WmQuit, static_cast<Wparam>(*quitCode_), 0};
        quitCode_.reset();
        return 0;
    }
    throw MessageQueueIdle{};
}

Lresult SimOs::DispatchMessageW(const Msg& message) {
    Enter("DispatchMessageW", std::to_string(message.message));
    return message.hwnd == nullptr
               ? 0
               : Deliver(message.hwnd, message.message, message.wParam, message.lParam);
}

void SimOs::PostQuitMessage(int exitCode) {
    Enter("PostQuitMessage", std::to_string(exitCode));
    quitCode_ = exitCode;
}

Hwnd SimOs::FindWindowByCaption(const Text& caption) const {
    for (const auto& [value, w] : windows_) {
        if (w.caption == caption) return HandleFrom<Hwnd>(value);
    }
    return nullptr;
}

Hwnd SimOs::CreateWindowInOtherProcess() {
    const Hwnd hwnd = HandleFrom<Hwnd>(nextWindow_);
    nextWindow_ += 0x10;
    Window w;
    w.processId = kOtherProcessId;
    w.desktop = inputDesktop_;
    windows_[HandleValue(hwnd)] = std::move(w);
    return hwnd;
}

std::vector<std::pair<Text, Handle>> SimOs::WindowProps(Hwnd window) const {
    const Window* w = FindWindow(window);
    return w == nullptr ? std::vector<std::pair<Text, Handle>>{} : w->props;
}

Handle SimOs::WindowIcon(Hwnd window, bool big) const {
    const Window* w = FindWindow(window);
    return w == nullptr ? nullptr : (big ? w->bigIcon : w->smallIcon);
}

bool SimOs::IsWindowVisible(Hwnd window) const {
    const Window* w = FindWindow(window);
    return w != nullptr && (w->style & kWsVisible) != 0;
}

std::uint32_t SimOs::WindowExStyle(Hwnd window) const {
    const Window* w = FindWindow(window);
    return w == nullptr ? 0 : w->exStyle;
}

Lresult SimOs::SendCopyData(Hwnd window, std::string_view bytes, std::uintptr_t dwData) {
    // The system copies the data into the receiving process for the length of the call.
    std::vector<std::byte> copy(bytes.size());
    std::memcpy(copy.data(), bytes.data(), bytes.size());
    const CopyDataStruct data{dwData, static_cast<std::uint32_t>(copy.size()), copy.data()};
    return Deliver(window, WmCopyData, 0, reinterpret_cast<Lparam>(&data));
}

std::optional<int> SimOs::RunMessageLoop(const std::function<int()>& loop) {
    try {
        return loop();
    } catch (const MessageQueueIdle&) {
        return std::nullopt;
    }
}

// ----- named objects seen from another process

bool SimOs::EventExists(const Ansi& name) const {
    const auto it = namedObjects_.find(name);
    return it != namedObjects_.end() && objects_.at(it->second).kind == Kind::Event;
}

bool SimOs::EventIsSignalled(const Ansi& name) const {
    return EventExists(name) && objects_.at(namedObjects_.at(name)).signalled;
}

bool SimOs::WaitForEventInOtherProcess(const Ansi& name) {
    if (!EventIsSignalled(name)) return false;
    Object& o = objects_.at(namedObjects_.at(name));
    if (!o.manualReset) o.signalled = false;
    return true;
}

void SimOs::CreateEventInOtherProcess(const Ansi& name) {
    if (namedObjects_.count(name) != 0) return;
    Object o{Kind::Event};
    o.name = name;
    o.references = 1;
    namedObjects_[name] = NewObject(std::move(o));
}

void SimOs::CreateMutexInOtherProcess(const Ansi& name) {
    if (namedObjects_.count(name) != 0) return;
    Object o{Kind::Mutex};
    o.name = name;
    o.references = 1;
    namedObjects_[name] = NewObject(std::move(o));
}

std::size_t SimOs::OpenHandleCount() const {
    return static_cast<std::size_t>(std::count_if(
        handles_.begin(), handles_.end(), [](const auto& h) { return !h.second.threadDesktop; }));
}

// ----- registry

const SimOs::KeyHandle* SimOs::LookupKey(Hkey key) const {
    const auto it = keys_.find(HandleValue(key));
    return it == keys_.end() ? nullptr : &it->second;
}

std::int32_t SimOs::OpenKey(Hkey root, const Text& subKey, std::uint32_t access, bool create,
                            Hkey& result) {
    Text base;
    if (root != HkeyCurrentUser()) {
        const KeyHandle* parent = LookupKey(root);
        if (parent == nullptr) return static_cast<std::int32_t>(ErrorInvalidHandle);
        base = parent->path;
    }
    const Text path = RegistryHive::Join(base, subKey);
    if (!registry_.KeyExists(path)) {
        if (!create) return static_cast<std::int32_t>(ErrorFileNotFound);
        registry_.CreateKey(path);
    }
    const std::intptr_t value = nextKey_;
    nextKey_ += 4;
    keys_[value] = KeyHandle{path, access};
    result = HandleFrom<Hkey>(value);
    return 0;
}

std::int32_t SimOs::RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                                  std::uint32_t desiredAccess, Hkey& result) {
    if (Enter("RegOpenKeyExW", Utf8(subKey) + " " + std::to_string(options) + " access " +
                                   std::to_string(desiredAccess))) {
        return static_cast<std::int32_t>(last_);
    }
    return OpenKey(root, subKey, desiredAccess, false, result);
}

std::int32_t SimOs::RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) {
    if (Enter("RegCreateKeyW", Utf8(subKey))) return static_cast<std::int32_t>(last_);
    return OpenKey(root, subKey, kKeyAllAccess, true, result);
}

std::int32_t SimOs::RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                     std::byte* data, std::uint32_t* dataSize) {
    if (Enter("RegQueryValueExW", Utf8(valueName) + (data == nullptr ? " (size)" : " (data)"))) {
        return static_cast<std::int32_t>(last_);
    }
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return static_cast<std::int32_t>(ErrorInvalidHandle);
    if ((k->access & KeyQueryValue) == 0) return static_cast<std::int32_t>(ErrorAccessDenied);
    const RegValue* v = registry_.FindValue(k->path, valueName);
    if (v == nullptr) return static_cast<std::int32_t>(ErrorFileNotFound);
    if (type != nullptr) *type = v->type;
    const auto size = static_cast<std::uint32_t>(v->data.size());
    if (data == nullptr) {
        if (dataSize != nullptr) *dataSize = size;
        return 0;
    }
    if (dataSize == nullptr) return static_cast<std::int32_t>(ErrorInvalidParameter);
    if (*dataSize < size) {
        *dataSize = size;
        return static_cast<std::int32_t>(ErrorMoreData);
    }
    std::copy(v->data.begin(), v->data.end(), data);
    *dataSize = size;
    return 0;
}

std::int32_t SimOs::RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                   std::span<const std::byte> data) {
    if (Enter("RegSetValueExW", Utf8(valueName) + " type " + std::to_string(type) + " " +
                                    std::to_string(data.size()) + " bytes")) {
        return static_cast<std::int32_t>(last_);
    }
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return static_cast<std::int32_t>(ErrorInvalidHandle);
    if ((k->access & KeySetValue) == 0) return static_cast<std::int32_t>(ErrorAccessDenied);
    registry_.SetValue(k->path, valueName, type, std::vector<std::byte>(data.begin(), data.end()));
    return 0;
}

std::int32_t SimOs::RegDeleteValueW(Hkey key, const Text& valueName) {
    if (Enter("RegDeleteValueW", Utf8(valueName))) return static_cast<std::int32_t>(last_);
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return static_cast<std::int32_t>(ErrorInvalidHandle);
    if ((k->access & KeySetValue) == 0) return static_cast<std::int32_t>(ErrorAccessDenied);
    return registry_.DeleteValue(k->path, valueName) ? 0
                                                     : static_cast<std::int32_t>(ErrorFileNotFound);
}

std::int32_t SimOs::RegDeleteTreeW(Hkey root, const Text& subKey) {
    if (Enter("RegDeleteTreeW", Utf8(subKey))) return static_cast<std::int32_t>(last_);
    Text base;
    if (root != HkeyCurrentUser()) {
        const KeyHandle* parent = LookupKey(root);
        if (parent == nullptr) return static_cast<std::int32_t>(ErrorInvalidHandle);
        base = parent->path;
    }
    return registry_.DeleteTree(RegistryHive::Join(base, subKey))
               ? 0
               : static_cast<std::int32_t>(ErrorFileNotFound);
}

std::int32_t SimOs::RegCloseKey(Hkey key) {
    if (Enter("RegCloseKey", Hex(key))) return static_cast<std::int32_t>(last_);
    return keys_.erase(HandleValue(key)) != 0 ? 0 : static_cast<std::int32_t>(ErrorInvalidHandle);
}

}  // namespace zk::sim
