// The error log against the real system: an entry in the user's real log, byte for byte.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "diagnostics/err_log.h"
#include "platform/win32/win32_os.h"

namespace zk {
namespace {

std::string ReadFileBytes(const Text& path) {
    const HANDLE h =
        ::CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ,
                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) return {};
    std::string bytes(::GetFileSize(h, nullptr), '\0');
    DWORD read = 0;
    ::ReadFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    ::CloseHandle(h);
    return bytes;
}

TEST(ErrLogUnderWine, AppendsOneEntryToTheRealLogByteForByte) {
    Win32Os os;
    ErrLog log(os);
    const Text path = log.LogFolder() + u"ZelkovaErrors.txt";
    EXPECT_NE(path.find(u"AppData\\Local\\"), Text::npos);
    const std::string before = ReadFileBytes(path);
    const Text message = u"Zelkova: checked under Wine \u00E9";
    auto entryAt = [&](const SystemTime& t) {
        return os.WideCharToMultiByte(os.GetDateFormatW(t) + u" " + os.GetTimeFormatW(t) + u" " +
                                      message + u"\r\n");
    };
    const SystemTime start = os.GetLocalTime();
    log.LogError(message);
    const SystemTime end = os.GetLocalTime();
    const std::string after = ReadFileBytes(path);
    ASSERT_EQ(after.compare(0, before.size(), before), 0) << "appended, not rewritten";
    const std::string added = after.substr(before.size());
    EXPECT_TRUE(added == entryAt(start) || added == entryAt(end)) << added;
    EXPECT_NE(added.find("\xE9"), std::string::npos) << "written in the ANSI code page";
}

}  // namespace
}  // namespace zk
