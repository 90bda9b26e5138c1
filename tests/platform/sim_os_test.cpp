// The simulated session's own checks: the behaviour that tests of the program lean on, beyond
// what the contract suite compares with the real system.

#include "platform/sim/sim_os.h"

#include <gtest/gtest.h>

#include <array>

namespace zk::sim {
namespace {

Lresult ZK_CALLBACK RecordingProcedure(Hwnd, std::uint32_t message, Wparam, Lparam lParam);
std::vector<std::uint32_t> g_messages;
std::string g_copied;

Lresult ZK_CALLBACK RecordingProcedure(Hwnd, std::uint32_t message, Wparam, Lparam lParam) {
    g_messages.push_back(message);
    if (message == WmCopyData) {
        const auto* data = reinterpret_cast<const CopyDataStruct*>(lParam);
        g_copied.assign(static_cast<const char*>(data->lpData), data->cbData);
        return 5;
    }
    return 0;
}

Hwnd MakeWindow(SimOs& os) {
    (void)os.RegisterClassW(u"Probe", &RecordingProcedure, os.GetModuleHandleW());
    return os.CreateWindowExW(0, u"Probe", u"probe", 0, nullptr, os.GetModuleHandleW());
}

TEST(SimOs, FailsTheNthCallOfAFunctionWithTheGivenErrorAndJournalsIt) {
    SimOs os;
    os.faults().FailNth("CreateEventA", 2, ErrorAccessDenied);
    EXPECT_NE(os.CreateEventA(false, false, "Local\\a"), nullptr);
    EXPECT_EQ(os.CreateEventA(false, false, "Local\\b"), nullptr);
    EXPECT_EQ(os.GetLastError(), ErrorAccessDenied);
    EXPECT_NE(os.CreateEventA(false, false, "Local\\c"), nullptr);
    EXPECT_EQ(os.journal().Details("CreateEventA"),
              (std::vector<std::string>{"Local\\a", "Local\\b", "Local\\c"}));
    EXPECT_TRUE(os.journal().Entries()[1].failed);
    EXPECT_FALSE(os.EventExists("Local\\b"));
}

TEST(SimOs, EndingTheProcessThrowsAndReleasesWhatItHeld) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    ASSERT_NE(os.RegisterHotKey(w, 1, 3, 0x61), 0);
    (void)os.CreateEventA(false, false, "Local\\held");
    EXPECT_THROW(os.ExitProcess(7), ProcessEnded);
    EXPECT_FALSE(os.EventExists("Local\\held"));
    EXPECT_FALSE(os.IsHotKeyRegistered(3, 0x61));
    EXPECT_EQ(os.FindWindowByCaption(u"probe"), nullptr);
    EXPECT_EQ(os.OpenHandleCount(), 0u);
}

TEST(SimOs, PressingARegisteredCombinationPostsHotKeyToItsWindow) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    ASSERT_NE(os.RegisterHotKey(w, 4, 3, 0x64), 0);
    EXPECT_FALSE(os.PressHotKey(3, 0x65));
    EXPECT_TRUE(os.PressHotKey(3, 0x64));
    Msg m;
    ASSERT_EQ(os.GetMessageW(m), 1);
    EXPECT_EQ(m.hwnd, w);
    EXPECT_EQ(m.message, WmHotKey);
    EXPECT_EQ(m.wParam, 4u);
    EXPECT_EQ(m.lParam, (0x64 << 16) | 3);
    EXPECT_THROW((void)os.GetMessageW(m), MessageQueueIdle);
}

TEST(SimOs, HotKeyHeldByAnotherProcessCannotBeRegistered) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    os.HoldHotKeyInOtherProcess(3, 0x62);
    EXPECT_EQ(os.RegisterHotKey(w, 2, 3, 0x62), 0);
    EXPECT_EQ(os.GetLastError(), ErrorHotkeyAlreadyRegistered);
    EXPECT_EQ(os.RegisterHotKey(w, 2, 0x4003, 0x62), 0) << "MOD_NOREPEAT is no other combination";
}

TEST(SimOs, CopyDataIsDeliveredAsExactBytesBeforeTheSendReturns) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    g_copied.clear();
    EXPECT_EQ(os.SendCopyData(w, std::string_view("ab\0c", 4)), 5);
    EXPECT_EQ(g_copied, std::string("ab\0c", 4));
}

TEST(SimOs, DestroyingAWindowSendsDestroyAndFreesItsHotKeysAndProperties) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    (void)os.RegisterHotKey(w, 1, 3, 0x61);
    (void)os.SetPropW(w, u"x", HandleFrom<Handle>(1));
    g_messages.clear();
    EXPECT_TRUE(os.DestroyWindow(w));
    EXPECT_EQ(g_messages, (std::vector<std::uint32_t>{WmDestroy, WmNcDestroy}));
    EXPECT_FALSE(os.IsHotKeyRegistered(3, 0x61));
    EXPECT_EQ(os.GetPropW(w, u"x"), nullptr);
    EXPECT_EQ(os.GetLastError(), ErrorInvalidWindowHandle);
}

TEST(SimOs, UnquotedCommandLineWithBlanksFindsTheProgramAsTheSystemDoes) {
    SimOs os;
    os.AddFile(u"D:\\Apps\\My Tools\\Reporter.exe");
    ProcessInformation pi;
    StartupInfo si;
    si.dwFlags = StartfUseShowWindow;
    si.wShowWindow = SwShowMinimized;
    ASSERT_TRUE(
        os.CreateProcessW(std::nullopt, u"D:\\Apps\\My Tools\\Reporter.exe ", false, 0, si, pi));
    EXPECT_EQ(os.StartedProcesses().back().image, u"D:\\Apps\\My Tools\\Reporter.exe");
    EXPECT_EQ(os.OpenHandleCount(), 2u) << "process and thread handles are the caller's";
    EXPECT_FALSE(os.CreateProcessW(std::nullopt, u"D:\\Apps\\Missing.exe ", false, 0, si, pi));
    EXPECT_EQ(os.GetLastError(), ErrorFileNotFound);
}

TEST(SimOs, AnsiCodePageIsWindows1252WithQuestionMarksForTheRest) {
    SimOs os;
    EXPECT_EQ(os.WideCharToMultiByte(u"\u20AC\u4E00"), "\x80?");
    EXPECT_EQ(os.MultiByteToWideChar("\x81\x9F"), u"\u0081\u0178");
}

TEST(SimOs, DesktopEndsWithItsLastHandleUnlessAProgramRunsOnIt) {
    SimOs os;
    Hdesk d = os.CreateDesktopW(u"desk2", 0, GenericAll);
    EXPECT_TRUE(os.CloseDesktop(d));
    EXPECT_FALSE(os.DesktopExists(u"desk2"));
    d = os.CreateDesktopW(u"desk2", 0, GenericAll);
    os.AddFile(u"C:\\p.exe");
    StartupInfo si;
    si.lpDesktop = u"desk2";
    ProcessInformation pi;
    ASSERT_TRUE(os.CreateProcessW(u"C:\\p.exe", u" 2", true, 0, si, pi));
    EXPECT_TRUE(os.CloseDesktop(d));
    EXPECT_TRUE(os.DesktopExists(u"desk2"));
    os.EndProcess(pi.dwProcessId);
    EXPECT_FALSE(os.DesktopExists(u"desk2"));
}

}  // namespace
}  // namespace zk::sim
