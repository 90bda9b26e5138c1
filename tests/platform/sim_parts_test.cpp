// The simulated session's own checks, part by part: what the program's tests lean on beyond
// what the contract suite compares with the real system.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "platform/sim/sim_os.h"

namespace zk::sim {
namespace {

std::vector<std::uint32_t> g_messages;
std::string g_copied;

Lresult ZK_CALLBACK Recording(Hwnd, std::uint32_t message, Wparam, Lparam lParam) {
    g_messages.push_back(message);
    if (message != WmCopyData) return 0;
    const auto* data = reinterpret_cast<const CopyDataStruct*>(lParam);
    g_copied.assign(static_cast<const char*>(data->lpData), data->cbData);
    return 5;
}

Hwnd MakeWindow(SimOs& os) {
    (void)os.RegisterClassW(u"Probe", &Recording, os.GetModuleHandleW());
    return os.CreateWindowExW(0, u"Probe", u"probe", 0, nullptr, os.GetModuleHandleW());
}

TEST(SimFaults, FailTheNamedCallAsAskedAndRefuseANameThatIsNoCall) {
    SimOs os;
    os.faults().FailNth("CreateEventA", 2, ErrorAccessDenied);
    EXPECT_NE(os.CreateEventA(false, false, "Local\\a"), nullptr);
    EXPECT_EQ(os.CreateEventA(false, false, "Local\\b"), nullptr);
    EXPECT_EQ(os.GetLastError(), ErrorAccessDenied);
    EXPECT_TRUE(os.journal().Entries()[1].failed);
    EXPECT_EQ(os.journal().Details("CreateEventA"),
              (std::vector<std::string>{"Local\\a", "Local\\b"}));
    EXPECT_THROW(os.faults().FailEvery("CreateEvent", 5), std::invalid_argument);
}

TEST(SimKernel, EndingTheProcessReleasesWhatItHeldAndOtherProcessesLiveOn) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    ASSERT_NE(os.RegisterHotKey(w, 1, 3, 0x61), 0);
    (void)os.CreateEventA(false, false, "Local\\held");
    bool reacted = false;
    os.WhenSignalled("Local\\watched",
                     [&] { reacted = os.WaitForEventInOtherProcess("Local\\watched"); });
    (void)os.SetEvent(os.CreateEventA(false, false, "Local\\watched"));
    EXPECT_TRUE(reacted) << "the waiting process took the signal at once";
    const std::uint32_t parent = os.AddOtherProcess(u"Zelkova2.exe");
    os.SetParentProcess(parent);
    const auto snapshot = os.CreateToolhelp32Snapshot();
    EXPECT_TRUE(std::any_of(snapshot.begin(), snapshot.end(), [&](const ProcessEntry& e) {
        return e.exeFile == u"Zelkova2.exe" && e.processId == parent;
    }));
    EXPECT_THROW(os.ExitProcess(7), ProcessEnded);
    EXPECT_FALSE(os.EventExists("Local\\held"));
    EXPECT_FALSE(os.IsHotKeyRegistered(3, 0x61));
    EXPECT_EQ(os.FindWindowByCaption(u"probe"), nullptr);
    EXPECT_EQ(os.OpenHandleCount(), 0u);
}

TEST(SimKernel, ADesktopEndsWithItsLastHandleUnlessAProgramRunsOnItAndSectionsAreShared) {
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

    const Handle a = os.CreateFileMappingW(8, u"Local\\block");
    const Handle b = os.CreateFileMappingW(8, u"Local\\block");
    EXPECT_EQ(os.GetLastError(), ErrorAlreadyExists);
    *static_cast<std::uint32_t*>(os.MapViewOfFile(a, 8)) = 42;
    EXPECT_EQ(*static_cast<const std::uint32_t*>(os.MapViewOfFile(b, 8)), 42u);
}

TEST(SimFiles, WritesGoToThePositionUnlessTheHandleOnlyAppends) {
    SimOs os;
    os.AddFile(u"C:\\f.txt", "abcdef");
    const Handle appender = os.CreateFileW(u"C:\\f.txt", FileAppendData, 0, OpenExisting);
    const Handle writer = os.CreateFileW(u"C:\\f.txt", 0x40000000, 0, OpenExisting);
    const std::array<std::byte, 2> xy = {std::byte{'x'}, std::byte{'y'}};
    EXPECT_TRUE(os.WriteFile(appender, xy));
    EXPECT_TRUE(os.WriteFile(writer, xy));
    EXPECT_EQ(os.FileText(u"C:\\f.txt"), "xycdefxy");
    os.AddFile(u"D:\\My Tools\\Reporter.exe");
    ProcessInformation pi;
    ASSERT_TRUE(os.CreateProcessW(std::nullopt, u"D:\\My Tools\\Reporter.exe ", false, 0, {}, pi))
        << "an unquoted path with blanks is found as the system finds it";
}

TEST(SimWindows, SentBytesArriveExactlyAndADestroyedWindowTakesItsHotKeysTimersAndMessages) {
    SimOs os;
    const Hwnd w = MakeWindow(os);
    EXPECT_EQ(os.SendCopyData(w, std::string_view("ab\0c", 4)), 5);
    EXPECT_EQ(g_copied, std::string("ab\0c", 4));
    (void)os.RegisterHotKey(w, 1, 3, 0x61);
    (void)os.SetTimer(w, 9, 100);
    os.AdvanceTime(250);
    EXPECT_EQ(os.QueuedMessageCount(), 1u) << "one WM_TIMER waits, however late";
    g_messages.clear();
    EXPECT_TRUE(os.DestroyWindow(w));
    EXPECT_EQ(g_messages, (std::vector<std::uint32_t>{WmDestroy, WmNcDestroy}));
    EXPECT_FALSE(os.IsHotKeyRegistered(3, 0x61));
    EXPECT_EQ(os.QueuedMessageCount(), 0u);
}

TEST(SimHotKeys, TheScopeDecidesWhoMayHoldACombinationAndTypedKeysMakeItsMessage) {
    for (const HotKeyScope scope : {HotKeyScope::Session, HotKeyScope::Desktop}) {
        SimOs os;
        os.SetHotKeyScope(scope);
        os.CreateDesktopInOtherProcess(u"desk2");
        ASSERT_TRUE(os.HoldHotKeyInOtherProcess(3, 0x62, Text(u"desk2")));
        const Hwnd w = MakeWindow(os);
        EXPECT_EQ(os.RegisterHotKey(w, 2, 0x4003, 0x62) != 0, scope == HotKeyScope::Desktop)
            << "MOD_NOREPEAT makes no other combination";
        const std::array<KeyInput, 4> keys = {KeyInput{0x11, false}, KeyInput{0x12, false},
                                              KeyInput{0x62, false}, KeyInput{0x62, true}};
        EXPECT_EQ(os.SendInput(keys), 4u);
        EXPECT_EQ(os.QueuedMessageCount(), scope == HotKeyScope::Desktop ? 1u : 0u);
    }
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
