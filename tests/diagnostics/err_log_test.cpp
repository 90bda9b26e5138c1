#include "diagnostics/err_log.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"

namespace zk {
namespace {

const Text kAppData = u"C:\\Users\\user1\\AppData\\Local";
const Text kLog = kAppData + u"\\ZelkovaErrors.txt";

TEST(ErrLogFolder, AddsOneBackslashAndRemembersOnlyASuccessfulLookupNotTheFallback) {
    sim::SimOs os;
    ErrLog log(os);
    EXPECT_EQ(log.LogFolder(), kAppData + u"\\");
    EXPECT_EQ(log.LogFolder(), kAppData + u"\\");
    EXPECT_EQ(os.journal().Count("SHGetFolderPathW"), 1);
    EXPECT_EQ(os.journal().Details("SHGetFolderPathW").front(), "32796 0") << "0x801C: create it";

    sim::SimOs trailing;
    trailing.SetLocalAppData(u"E:\\Data\\");
    EXPECT_EQ(ErrLog(trailing).LogFolder(), u"E:\\Data\\");

    struct Case {
        std::int32_t result;
        Text folder;
    };
    for (const Case& c : {Case{SFalse, u"c:\\"}, Case{EInvalidArg, u"c:\\"},
                          Case{static_cast<std::int32_t>(0x80004005), u""}}) {
        sim::SimOs os;
        ErrLog log(os);
        os.SetFolderPathResult(c.result);
        EXPECT_EQ(log.LogFolder(), c.folder);
        os.SetFolderPathResult(std::nullopt);
        EXPECT_EQ(log.LogFolder(), kAppData + u"\\") << "the system is asked again";
        EXPECT_EQ(os.journal().Count("SHGetFolderPathW"), 2);
    }
}

TEST(ErrLogEntry, IsDateTimeBlankMessageAndLineEndInTheAnsiCodePageAppendedToWhatIsThere) {
    sim::SimOs os;
    os.AddFile(kLog, "old\n");
    ErrLog log(os);
    // Another of the programs is writing its line at this moment, and the reporter reads: the
    // log is shared for both (CreateFileW, dwShareMode), so no line is lost.
    const int writer =
        os.OpenFileInOtherProcess(kLog, FileAppendData, FileShareRead | FileShareWrite);
    const int reader = os.OpenFileInOtherProcess(kLog, GenericRead, FileShareRead | FileShareWrite);
    ASSERT_NE(writer * reader, 0);
    log.LogError(u"Zelkova: caf\u00E9");
    os.CloseFileInOtherProcess(writer);
    os.CloseFileInOtherProcess(reader);
    os.SetLocalTime({2026, 11, 0, 23, 0, 0, 0, 0});
    log.LogError(u"at midnight");
    os.SetLocalTime({2026, 11, 0, 23, 0, 0, 1, 0});
    log.LogError(u"");
    EXPECT_EQ(os.FileText(kLog),
              "old\n11/22/2026 2:05:09 PM Zelkova: caf\xE9\r\n"
              "11/23/2026 at midnight\r\n"
              "11/23/2026 12:00:01 AM \r\n");
    EXPECT_EQ(os.journal().Count("CreateFileW"), 3) << "opened and closed for each entry";
    EXPECT_EQ(os.OpenHandleCount(), 0u);
}

TEST(ErrLogEntry, GoesToTheFallbackFolderOrTheCurrentDirectoryAndAFailedWriteIsSwallowed) {
    sim::SimOs os;
    os.AddFolder(u"C:\\");
    os.SetFolderPathResult(EInvalidArg);
    ErrLog(os).LogError(u"x");
    EXPECT_NE(os.FileText(u"C:\\ZelkovaErrors.txt"), "");

    os.SetFolderPathResult(static_cast<std::int32_t>(0x80004005));
    ErrLog(os).LogError(u"y");
    EXPECT_NE(os.FileText(u"C:\\Program Files\\Zelkova2\\ZelkovaErrors.txt"), "");

    sim::SimOs unwritable;
    unwritable.MakeUnwritable(kLog);
    EXPECT_NO_THROW(ErrLog(unwritable).LogError(u"lost"));
    unwritable.faults().FailEvery("WriteFile", ErrorAccessDenied);
    EXPECT_NO_THROW(ErrLog(unwritable).LogError(u"lost"));
    EXPECT_EQ(unwritable.FileContents(kLog), std::nullopt);
    EXPECT_EQ(unwritable.OpenHandleCount(), 0u);
}

TEST(ErrorReporter, StartsTheReporterBesideTheExecutableMinimisedOrSwallowsItsAbsence) {
    sim::SimOs os;
    os.SetModuleFileName(u"D:\\Apps\\Tools\\Zelkova2.exe");
    os.AddFile(u"D:\\Apps\\Tools\\ZelkovaError.exe");
    ErrLog(os).StartErrorReporter();
    ASSERT_EQ(os.StartedProcesses().size(), 1u);
    const auto& started = os.StartedProcesses().front();
    EXPECT_EQ(started.applicationName, std::nullopt);
    EXPECT_EQ(started.commandLine, u"D:\\Apps\\Tools\\ZelkovaError.exe ");
    EXPECT_EQ(started.startupInfo.dwFlags, StartfUseShowWindow);
    EXPECT_EQ(started.startupInfo.wShowWindow, SwShowMinimized);
    EXPECT_EQ(started.startupInfo.lpDesktop, std::nullopt);
    EXPECT_EQ(os.OpenHandleCount(), 0u);

    sim::SimOs missing;
    EXPECT_NO_THROW(ErrLog(missing).StartErrorReporter());
    EXPECT_EQ(missing.FileContents(kLog), std::nullopt) << "a missing reporter is not logged";
}

}  // namespace
}  // namespace zk
