#include "platform/sim/sim_files.h"

#include <algorithm>
#include <cstring>

#include "platform/sim/code_page_1252.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kGenericWrite = 0x40000000;
constexpr std::uint32_t kFileWriteData = 0x0002;
constexpr std::uint32_t kFileReadData = 0x0001;
constexpr std::uint32_t kCreateAlways = 2;
constexpr std::uint32_t kFileAttributeArchive = 0x20;

}  // namespace

SimFiles::SimFiles(Session& session) : session_(session) {
    AddFolder(currentDirectory_);
    AddFolder(localAppData_);
}

Text SimFiles::Fold(const Text& path) {
    Text folded = path;
    for (auto& c : folded) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
        if (c == u'/') c = u'\\';
    }
    while (!folded.empty() && folded.back() == u'\\')
        folded.pop_back();
    return folded;
}

Text SimFiles::FullPath(const Text& path) const {
    const bool absolute = (path.size() >= 2 && path[1] == u':') || path.starts_with(u"\\");
    return absolute ? path : currentDirectory_ + u"\\" + path;
}

Text SimFiles::ParentFolder(const Text& path) {
    const auto slash = path.find_last_of(u"\\/");
    return slash == Text::npos ? Text() : path.substr(0, slash);
}

bool SimFiles::FolderExists(const Text& path) const {
    return folders_.count(Fold(path)) != 0;
}

std::uint32_t SimFiles::MissingFileError(const Text& path) const {
    return FolderExists(ParentFolder(FullPath(path))) ? ErrorFileNotFound : ErrorPathNotFound;
}

void SimFiles::AddFolder(const Text& path) {
    const Text folded = Fold(path);
    for (std::size_t i = 0; i <= folded.size(); ++i) {
        if (i == folded.size() || folded[i] == u'\\') folders_.insert(folded.substr(0, i));
    }
}

void SimFiles::AddFile(const Text& path, std::vector<std::byte> contents) {
    const Text full = FullPath(path);
    AddFolder(ParentFolder(full));
    files_[Fold(full)] = File{full, std::move(contents)};
}

void SimFiles::AddFile(const Text& path, std::string_view contents) {
    std::vector<std::byte> bytes(contents.size());
    std::memcpy(bytes.data(), contents.data(), contents.size());
    AddFile(path, std::move(bytes));
}

void SimFiles::RemoveFile(const Text& path) {
    files_.erase(Fold(FullPath(path)));
}

void SimFiles::MakeUnwritable(const Text& path) {
    unwritable_.insert(Fold(FullPath(path)));
}

std::optional<std::vector<std::byte>> SimFiles::FileContents(const Text& path) const {
    const auto it = files_.find(Fold(FullPath(path)));
    if (it == files_.end()) return std::nullopt;
    return it->second.contents;
}

std::string SimFiles::FileText(const Text& path) const {
    const auto contents = FileContents(path);
    if (!contents) return {};
    return std::string(reinterpret_cast<const char*>(contents->data()), contents->size());
}

std::optional<Text> SimFiles::FindImage(const std::optional<Text>& applicationName,
                                        const Text& commandLine) const {
    if (applicationName) {
        if (Exists(*applicationName)) return FullPath(*applicationName);
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
        if (Exists(c)) return FullPath(c);
        if (Exists(c + u".exe")) return FullPath(c + u".exe");
    }
    return std::nullopt;
}

// An open that another open of the same file does not share: what one reads or writes, the
// other must let it (CreateFileW, dwShareMode).
bool SimFiles::SharingConflict(const Text& key, std::uint32_t access, std::uint32_t shareMode) {
    const auto reads = [](std::uint32_t a) { return (a & (GenericRead | kFileReadData)) != 0; };
    const auto writes = [](std::uint32_t a) {
        return (a & (FileAppendData | kFileWriteData | kGenericWrite)) != 0;
    };
    const auto refuses = [&](std::uint32_t a, std::uint32_t share) {
        return (reads(a) && (share & FileShareRead) == 0) ||
               (writes(a) && (share & FileShareWrite) == 0);
    };
    return session_.FindObject([&](const KernelObject& o) {
        return o.kind == Kind::File && o.path == key &&
               (refuses(access, o.fileShare) || refuses(o.fileAccess, shareMode));
    }) != 0;
}

Handle SimFiles::CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                             std::uint32_t creationDisposition) {
    if (session_.Enter("CreateFileW", Utf8(path))) return InvalidHandleValue();
    const Text full = FullPath(path);
    const Text key = Fold(full);
    const bool writes = (access & (FileAppendData | kFileWriteData | kGenericWrite)) != 0;
    if (unwritable_.count(key) != 0 && writes) {
        session_.last = ErrorAccessDenied;
        return InvalidHandleValue();
    }
    if (SharingConflict(key, access, shareMode)) {
        session_.last = ErrorSharingViolation;
        return InvalidHandleValue();
    }
    if (!FolderExists(ParentFolder(full))) {
        session_.last = ErrorPathNotFound;
        return InvalidHandleValue();
    }
    const bool exists = files_.count(key) != 0;
    if (creationDisposition == OpenExisting && !exists) {
        session_.last = ErrorFileNotFound;
        return InvalidHandleValue();
    }
    if (!exists || creationDisposition == kCreateAlways) files_[key] = File{full, {}};
    session_.last = exists && creationDisposition == OpenAlways ? ErrorAlreadyExists : ErrorSuccess;
    KernelObject file{Kind::File};
    file.path = key;
    file.fileAccess = access;
    file.fileShare = shareMode;
    return session_.NewHandle(session_.NewObject(std::move(file)), access);
}

int SimFiles::OpenFileInOtherProcess(const Text& path, std::uint32_t access,
                                     std::uint32_t shareMode) {
    const Text key = Fold(FullPath(path));
    if (SharingConflict(key, access, shareMode)) return 0;
    KernelObject file{Kind::File};
    file.path = key;
    file.fileAccess = access;
    file.fileShare = shareMode;
    file.references = 1;  // the other process's handle
    return session_.NewObject(std::move(file));
}

void SimFiles::CloseFileInOtherProcess(int file) {
    session_.Release(file);
}

// A handle opened only to append writes at the end; any other writes at its position.
bool SimFiles::WriteFile(Handle file, std::span<const std::byte> bytes) {
    if (session_.Enter("WriteFile", Hex(file) + " " + std::to_string(bytes.size()) + " bytes")) {
        return false;
    }
    HandleEntry* entry = session_.Lookup(file, Kind::File);
    if (entry == nullptr) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    const bool positional = (entry->access & (kFileWriteData | kGenericWrite)) != 0;
    if (!positional && (entry->access & FileAppendData) == 0) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    auto& contents = files_[session_.Object(entry->object).path].contents;
    const std::size_t at = positional ? entry->position : contents.size();
    if (contents.size() < at + bytes.size()) contents.resize(at + bytes.size());
    std::copy(bytes.begin(), bytes.end(), contents.begin() + static_cast<std::ptrdiff_t>(at));
    if (positional) entry->position = at + bytes.size();
    return true;
}

bool SimFiles::ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) {
    bytesRead = 0;
    if (session_.Enter("ReadFile", Hex(file) + " " + std::to_string(buffer.size()))) return false;
    HandleEntry* entry = session_.Lookup(file, Kind::File);
    if (entry == nullptr) {
        session_.last = ErrorInvalidHandle;
        return false;
    }
    if ((entry->access & GenericRead) == 0) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    const auto& contents = files_[session_.Object(entry->object).path].contents;
    const std::size_t from = std::min(entry->position, contents.size());
    const std::size_t n = std::min(buffer.size(), contents.size() - from);
    std::copy_n(contents.begin() + static_cast<std::ptrdiff_t>(from), n, buffer.begin());
    entry->position = from + n;
    bytesRead = static_cast<std::uint32_t>(n);
    return true;
}

bool SimFiles::DeleteFileW(const Text& path) {
    if (session_.Enter("DeleteFileW", Utf8(path))) return false;
    const Text key = Fold(FullPath(path));
    if (unwritable_.count(key) != 0) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    if (files_.erase(key) == 0) {
        session_.last = MissingFileError(path);
        return false;
    }
    return true;
}

std::uint32_t SimFiles::GetFileAttributesW(const Text& path) {
    if (session_.Enter("GetFileAttributesW", Utf8(path))) return InvalidFileAttributes;
    if (Exists(path)) return kFileAttributeArchive;
    if (FolderExists(FullPath(path))) return FileAttributeDirectory;
    session_.last = MissingFileError(path);
    return InvalidFileAttributes;
}

std::int32_t SimFiles::SHGetFolderPathW(int csidl, std::uint32_t flags, std::span<char16_t> path) {
    if (session_.Enter("SHGetFolderPathW", std::to_string(csidl) + " " + std::to_string(flags))) {
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

}  // namespace zk::sim
