#pragma once
// The simulated file system: folders, files with their bytes, files that cannot be written, the
// user's local application-data folder and the current directory.

#include <map>
#include <set>

#include "platform/api/file_api.h"
#include "platform/sim/session.h"

namespace zk::sim {

class SimFiles : public virtual FileApi {
  public:
    explicit SimFiles(Session& session);

    Handle CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                       std::uint32_t creationDisposition) override;
    bool WriteFile(Handle file, std::span<const std::byte> bytes) override;
    bool ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) override;
    bool DeleteFileW(const Text& path) override;
    std::uint32_t GetFileAttributesW(const Text& path) override;
    std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                  std::span<char16_t> path) override;

    // ----- driving from a test
    void SetCurrentDirectory(const Text& path) { currentDirectory_ = path; }
    void AddFolder(const Text& path);
    void AddFile(const Text& path, std::vector<std::byte> contents = {});
    void AddFile(const Text& path, std::string_view contents);
    void RemoveFile(const Text& path);
    void MakeUnwritable(const Text& path);
    // Another process holds the file open, as CreateFileW would open it for that process; its
    // object id (0 when the opens already there do not share), for CloseFileInOtherProcess.
    int OpenFileInOtherProcess(const Text& path, std::uint32_t access, std::uint32_t shareMode);
    void CloseFileInOtherProcess(int file);
    [[nodiscard]] std::optional<std::vector<std::byte>> FileContents(const Text& path) const;
    [[nodiscard]] std::string FileText(
        const Text& path) const;  // contents as bytes in a string; "" if none
    void SetLocalAppData(const Text& path) { localAppData_ = path; }
    void SetFolderPathResult(std::optional<std::int32_t> hresult) { folderResult_ = hresult; }

    // ----- for the kernel's process starts
    // The executable a start finds, as the system looks for it.
    [[nodiscard]] std::optional<Text> FindImage(const std::optional<Text>& applicationName,
                                                const Text& commandLine) const;
    // The error for a file that is not there: its folder is missing, or just the file.
    [[nodiscard]] std::uint32_t MissingFileError(const Text& path) const;

  private:
    bool SharingConflict(const Text& key, std::uint32_t access, std::uint32_t shareMode);
    struct File {
        Text path;
        std::vector<std::byte> contents;
    };
    static Text Fold(const Text& path);
    [[nodiscard]] Text FullPath(const Text& path) const;
    static Text ParentFolder(const Text& path);
    [[nodiscard]] bool FolderExists(const Text& path) const;
    [[nodiscard]] bool Exists(const Text& path) const {
        return files_.count(Fold(FullPath(path))) != 0;
    }

    Session& session_;
    std::map<Text, File> files_;  // by folded full path
    std::set<Text> folders_;      // folded full paths
    std::set<Text> unwritable_;
    Text currentDirectory_ = u"C:\\Program Files\\Zelkova2";
    Text localAppData_ = u"C:\\Users\\user1\\AppData\\Local";
    std::optional<std::int32_t> folderResult_;
};

}  // namespace zk::sim
