// cDesktop and ErrLog against the real system: stand-in companions record how they were started.

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "desktop/c_desktop.h"
#include "diagnostics/err_log.h"
#include "platform/win32/win32_os.h"
#include "support/recorder_file.h"

namespace zk {
namespace {

std::vector<support::Record> WaitForRecords(std::size_t count) {
    std::vector<support::Record> records;
    for (int i = 0; i < 200 && records.size() < count; ++i) {
        ::Sleep(50);
        records = support::ReadRecords();
    }
    return records;
}

Text Suffix() {
    const std::string s = std::to_string(::GetCurrentProcessId());
    return Text(s.begin(), s.end());
}

TEST(DesktopUnderWine, CompanionsStartOnTheirDesktopsWithCommandLineAndTitle) {
    Win32Os os;
    support::StartRecording();
    cDesktop one(os);
    cDesktop two(os);
    ASSERT_TRUE(one.SetAsDefault())
        << std::string(one.GetLastError().begin(), one.GetLastError().end());
    const Text name = u"zkwine" + Suffix();
    ASSERT_TRUE(two.Create(name, 2));

    auto records = WaitForRecords(5);
    ASSERT_EQ(records.size(), 5u);
    using Row = std::tuple<Text, Text, Text, Text>;
    std::vector<Row> seen;
    for (const auto& r : records)
        seen.emplace_back(r.program, r.commandLine, r.desktop, r.title);
    std::sort(seen.begin(), seen.end());
    std::vector<Row> expected = {
        {u"DeskHerald.exe", u" 1", u"Default", u"Default"},
        {u"DeskHerald.exe", u" 2", name, name},
        {u"DeskHerald.exe", u" 5", u"Default", u"Default"},
        {u"DeskPilot.exe", u" 1", u"Default", u"Default"},
        {u"DeskPilot.exe", u" 2", name, name},
    };
    EXPECT_EQ(seen, expected);

    one.SwitchTo();
    two.ClearUp();
    one.ClearUp();
}

TEST(DesktopUnderWine, AMissingCompanionIsDescribedWithTheSystemText) {
    Win32Os os;
    cDesktop desk(os);
    ASSERT_TRUE(desk.SetAsDefault());
    EXPECT_FALSE(desk.StartProcess(support::TestFolder() + u"\\NoSuchCompanion.exe", u"1"));
    EXPECT_TRUE(desk.GetLastError().starts_with(u"cDesktop: "));
    EXPECT_TRUE(desk.GetLastError().ends_with(u"\r\n"));
    desk.ClearUp();
}

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

TEST(ErrorReporterUnderWine, StartsMinimisedWithTheBareCommandLine) {
    Win32Os os;
    support::StartRecording();
    ErrLog(os).StartErrorReporter();
    const auto records = WaitForRecords(1);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].program, u"ZelkovaError.exe");
    EXPECT_EQ(records[0].commandLine, support::TestFolder() + u"\\ZelkovaError.exe ");
    EXPECT_EQ(records[0].showWindow, SW_SHOWMINIMIZED);
}

}  // namespace
}  // namespace zk
