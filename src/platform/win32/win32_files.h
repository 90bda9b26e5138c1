#pragma once
#include "platform/api/file_api.h"

namespace zk::win32 {

class Win32Files : public virtual FileApi {
  public:
    Handle CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                       std::uint32_t creationDisposition) override;
    bool WriteFile(Handle file, std::span<const std::byte> bytes) override;
    bool ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) override;
    bool DeleteFileW(const Text& path) override;
    std::uint32_t GetFileAttributesW(const Text& path) override;
    std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                  std::span<char16_t> path) override;
};

}  // namespace zk::win32
