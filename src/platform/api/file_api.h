#pragma once
// kernel32 and shell32: files and the user's folders.

#include "platform/api/system_api.h"

namespace zk {

class FileApi : public virtual SystemApi {
  public:
    [[nodiscard]] virtual Handle CreateFileW(const Text& path, std::uint32_t access,
                                             std::uint32_t shareMode,
                                             std::uint32_t creationDisposition) = 0;
    // Writes at the file's position; a handle opened only to append writes at the end.
    [[nodiscard]] virtual bool WriteFile(Handle file, std::span<const std::byte> bytes) = 0;
    [[nodiscard]] virtual bool ReadFile(Handle file, std::span<std::byte> buffer,
                                        std::uint32_t& bytesRead) = 0;
    virtual bool DeleteFileW(const Text& path) = 0;
    [[nodiscard]] virtual std::uint32_t GetFileAttributesW(const Text& path) = 0;
    [[nodiscard]] virtual std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                                        std::span<char16_t> path) = 0;
};

}  // namespace zk
