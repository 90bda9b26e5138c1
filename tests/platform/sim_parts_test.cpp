// The simulated session's own checks, part by part: what the program's tests lean on beyond
// what the contract suite compares with the real system.

#include <gtest/gtest.h>

#include <array>

#include "platform/sim/sim_os.h"

namespace zk::sim {
namespace {

// (That a fault fails the call asked for, and only it, the controller's start tests show.)
TEST(SimFaults, RefuseANameThatIsNoCall) {
    SimOs os;
    EXPECT_THROW(os.faults().FailEvery("CreateEvent", 5), std::invalid_argument);
}

TEST(SimKernel, ADesktopEndsWithItsLastHandleUnlessAProgramRunsOnIt) {
    SimOs os;
    const Hdesk d = os.CreateDesktopW(u"desk2", 0, GenericAll);
    os.AddFile(u"C:\\p.exe");
    StartupInfo si;
    si.lpDesktop = u"desk2";
    ProcessInformation pi;
    ASSERT_TRUE(os.CreateProcessW(u"C:\\p.exe", u" 2", true, 0, si, pi));
    EXPECT_TRUE(os.CloseDesktop(d));
    EXPECT_TRUE(os.DesktopExists(u"desk2"));
    os.EndProcess(pi.dwProcessId);
    EXPECT_EQ(os.WaitForSingleObject(pi.hProcess, 0), WaitObject0);
    EXPECT_FALSE(os.DesktopExists(u"desk2"));
}

TEST(SimText, TheCodePageIsWindows1252AndInsertsNeedTheFlagThatIgnoresThem) {
    SimOs os;
    EXPECT_EQ(os.WideCharToMultiByte(u"\u20AC\u4E00"), "\x80?");
    EXPECT_EQ(os.MultiByteToWideChar("\x81\x9F"), u"\u0081\u0178");
    os.SetSystemText(4242, u"Cannot find %1.\r\n");
    std::array<char16_t, 256> buffer{};
    EXPECT_EQ(os.FormatMessageW(0x1000, 4242, 0, buffer), 0u);
    EXPECT_EQ(os.FormatMessageW(0x1200, 4242, 0, buffer), 17u);
    EXPECT_EQ(os.ExpandEnvironmentStringsW(u"%SystemRoot%\\%NOPE%"), u"C:\\Windows\\%NOPE%");
}

}  // namespace
}  // namespace zk::sim
