// What the program relies on from the system, checked against every backend of the lane with the
// same code: the simulated session must behave here as the real system (under Wine) does.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <thread>

#include "contract/backends.h"
#include "platform/handles.h"
#include "support/text.h"

namespace zk::contract {
namespace {

constexpr std::uint32_t kModAltControlShift = 7;
constexpr std::uint32_t kVkF9 = 0x78;
constexpr std::uint32_t kProbeMessage = WmUser + 1;
constexpr Lresult kClassResult = 77;
constexpr std::uint32_t kRegDword = 4;
constexpr std::uint32_t kRegSz = 1;
const Text kTestKey = u"Software\\Zelkova2ContractTest";

Os* g_os = nullptr;

Lresult ZK_CALLBACK ClassProcedure(Hwnd w, std::uint32_t m, Wparam wp, Lparam lp) {
    if (m == kProbeMessage) return kClassResult;
    return g_os->DefWindowProcW(w, m, wp, lp);
}

WndProc g_previous = nullptr;
Lresult ZK_CALLBACK SubclassProbe(Hwnd w, std::uint32_t m, Wparam wp, Lparam lp) {
    const Lresult original = g_os->CallWindowProcW(g_previous, w, m, wp, lp);
    return m == kProbeMessage ? original + 1000 : original;
}

// Names of kernel objects carry the test's process id so that runs never meet.
std::string Suffix(Os& os) {
    return std::to_string(os.GetCurrentProcessId());
}
Text WideSuffix(Os& os) {
    return DecimalText(os.GetCurrentProcessId());
}

class Contract : public ::testing::TestWithParam<Backend> {
  protected:
    void SetUp() override {
        os_ = GetParam().make();
        g_os = os_.get();
    }
    void TearDown() override {
        for (const Hwnd w : windows_) {
            if (os().IsWindow(w)) (void)os().DestroyWindow(w);
        }
        g_os = nullptr;
    }
    Os& os() { return *os_; }

    Hwnd MakeWindow() {
        const Hinstance instance = os().GetModuleHandleW();
        (void)os().RegisterClassW(u"ZkContractWindow", &ClassProcedure, instance);  // once
        const Hwnd w =
            os().CreateWindowExW(0, u"ZkContractWindow", u"zk contract", 0, nullptr, instance);
        windows_.push_back(w);
        return w;
    }

    Text DesktopName(Hdesk desk) { return os().GetUserObjectInformationW(desk); }

  private:
    std::unique_ptr<Os> os_;
    std::vector<Hwnd> windows_;
};

TEST_P(Contract, NamedAutoResetEventIsCreatedThenOpenedAndReleasesOneWaitPerSignal) {
    const Ansi name = "Local\\zk_contract_event_" + Suffix(os());
    EXPECT_EQ(os().OpenEventA(Synchronize | EventModifyState, false, name), nullptr);
    EXPECT_EQ(os().GetLastError(), ErrorFileNotFound);
    const Handle first = os().CreateEventA(false, false, name);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(os().GetLastError(), ErrorSuccess);
    const Handle second = os().CreateEventA(false, false, name);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(os().GetLastError(), ErrorAlreadyExists);

    EXPECT_EQ(os().WaitForSingleObject(first, 0), WaitTimeout) << "created non-signalled";
    const Handle opened = os().OpenEventA(Synchronize | EventModifyState, false, name);
    EXPECT_TRUE(os().SetEvent(opened));
    EXPECT_EQ(os().WaitForSingleObject(first, 0), WaitObject0);
    EXPECT_EQ(os().WaitForSingleObject(second, 0), WaitTimeout) << "auto-reset: one wait only";

    for (const Handle h : {first, second, opened})
        EXPECT_TRUE(os().CloseHandle(h));
    const Handle again = os().CreateEventA(false, false, name);
    EXPECT_EQ(os().GetLastError(), ErrorSuccess) << "the last close ended the event";
    EXPECT_TRUE(os().CloseHandle(again));

    const Ansi taken = "Local\\zk_contract_taken_" + Suffix(os());
    const Handle mutex = os().CreateMutexA(false, taken);
    ASSERT_NE(mutex, nullptr);
    EXPECT_EQ(os().CreateEventA(false, false, taken), nullptr) << "a name of another kind";
    EXPECT_EQ(os().GetLastError(), ErrorInvalidHandle);
    EXPECT_TRUE(os().CloseHandle(mutex));
    EXPECT_FALSE(os().CloseHandle(mutex));
    EXPECT_EQ(os().GetLastError(), ErrorInvalidHandle);
}

// A thread that owns a window stays on its desktop (SetThreadDesktop, Remarks).
TEST_P(Contract, ADesktopIsCreatedOrOpenedByNameAndAThreadWithAWindowStaysOnItsOwn) {
    const Hdesk own = os().GetThreadDesktop(os().GetCurrentThreadId());
    EXPECT_EQ(DesktopName(own), u"Default");
    const Hdesk input = os().OpenInputDesktop(0, false, DesktopSwitchDesktop);
    EXPECT_EQ(DesktopName(input), u"Default");
    EXPECT_TRUE(os().CloseDesktop(input));
    const Text name = u"zkdesk" + WideSuffix(os());
    const Hdesk created = os().CreateDesktopW(name, 0, GenericAll);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(DesktopName(created), name);
    const auto listed = os().EnumDesktopsW();
    EXPECT_NE(std::find(listed.begin(), listed.end(), name), listed.end());
    EXPECT_NE(std::find(listed.begin(), listed.end(), u"Default"), listed.end());
    const Hdesk opened = os().CreateDesktopW(name, 0, GenericAll);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(DesktopName(opened), name);
    EXPECT_TRUE(os().CloseDesktop(opened));

    const Hwnd window = MakeWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(os().SetThreadDesktop(created));
    EXPECT_EQ(os().GetLastError(), ErrorBusy);
    EXPECT_TRUE(os().SetThreadDesktop(own)) << "its own desktop is granted";
    EXPECT_EQ(DesktopName(os().GetThreadDesktop(os().GetCurrentThreadId())), u"Default");
    EXPECT_TRUE(os().DestroyWindow(window));
    EXPECT_TRUE(os().CloseDesktop(created));
}

TEST_P(Contract, SwitchDesktopMakesADesktopTheInputDesktop) {
    const Text name = u"zkswitch" + WideSuffix(os());
    const Hdesk target = os().CreateDesktopW(name, 0, GenericAll);
    const Hdesk home = os().OpenInputDesktop(0, false, DesktopSwitchDesktop);
    ASSERT_NE(target, nullptr);
    ASSERT_NE(home, nullptr);

    EXPECT_TRUE(os().SwitchDesktop(target));
    const Hdesk input = os().OpenInputDesktop(0, false, DesktopSwitchDesktop);
    if (GetParam().switchDesktopLeavesInputDesktop) {
        EXPECT_EQ(DesktopName(input), u"Default")
            << "Wine's SwitchDesktop returns TRUE but leaves the input desktop";
    } else {
        EXPECT_EQ(DesktopName(input), name);
    }
    EXPECT_TRUE(os().SwitchDesktop(home));
    EXPECT_TRUE(os().CloseDesktop(input));
    EXPECT_TRUE(os().CloseDesktop(home));
    EXPECT_TRUE(os().CloseDesktop(target));
}

// Keys come in only from a thread of the input desktop, as on Windows.
TEST_P(Contract, SendInputFromAThreadOfAnotherDesktopIsRefused) {
    const Text name = u"zksend" + WideSuffix(os());
    const Hdesk home = os().GetThreadDesktop(os().GetCurrentThreadId());
    const Hdesk other = os().CreateDesktopW(name, 0, GenericAll);
    ASSERT_NE(other, nullptr);
    const std::array<KeyInput, 2> shift = {KeyInput{0x10, false}, KeyInput{0x10, true}};
    std::uint32_t typed = 0, error = 0;
    std::thread([&] {  // a new thread owns no window and may change its desktop
        ASSERT_TRUE(os().SetThreadDesktop(os().OpenDesktopW(name, 0, false, GenericAll)));
        typed = os().SendInput(shift);
        error = os().GetLastError();
    })
        .join();
    ASSERT_TRUE(os().SetThreadDesktop(home));
    if (GetParam().sendInputFromAnyDesktop) {
        EXPECT_EQ(typed, 2u) << "Wine 8 takes input from any desktop";
    } else {
        EXPECT_EQ(typed, 0u);
        EXPECT_EQ(error, ErrorAccessDenied);
    }
    EXPECT_EQ(os().SendInput(shift), 2u) << "from the input desktop";
    EXPECT_TRUE(os().CloseDesktop(other));
}

// A combination belongs to one registration of a desktop, and to the desktop of the window that
// holds it: a program on another desktop can hold the same combination, and a key typed on the
// input desktop reaches only its holder there. (Whether Windows does so is not settled; both
// Wines do.)
TEST_P(Contract, AHotKeyIsHeldOncePerDesktopAndATypedKeyReachesTheHolderOnTheInputDesktop) {
    const Hwnd window = MakeWindow();
    ASSERT_NE(os().RegisterHotKey(window, 2, kModAltControlShift, kVkF9), 0);
    EXPECT_EQ(os().RegisterHotKey(window, 3, kModAltControlShift, kVkF9), 0);
    EXPECT_EQ(os().GetLastError(), ErrorHotkeyAlreadyRegistered);
    EXPECT_TRUE(os().UnregisterHotKey(window, 2));
    EXPECT_FALSE(os().UnregisterHotKey(window, 2));
    EXPECT_EQ(os().GetLastError(), ErrorHotkeyNotRegistered);
    ASSERT_NE(os().RegisterHotKey(window, 1, kModAltControlShift, kVkF9), 0) << "freed again";
    const Text desk = u"zkhotkey" + WideSuffix(os());
    const Hdesk other = os().CreateDesktopW(desk, 0, GenericAll);
    ASSERT_NE(other, nullptr);
    const HotKeyHolder holder = GetParam().holdHotKeyOn(os(), desk, kModAltControlShift, kVkF9);
    const std::array<KeyInput, 8> press = {
        KeyInput{0x11, false}, KeyInput{0x12, false}, KeyInput{0x10, false}, KeyInput{kVkF9, false},
        KeyInput{kVkF9, true}, KeyInput{0x10, true},  KeyInput{0x12, true},  KeyInput{0x11, true}};
    ASSERT_EQ(os().SendInput(press), press.size());
    bool came = false;
    Msg m;
    for (int i = 0; i < 100 && !came; ++i) {
        while (os().PeekMessageW(m))
            came = came || (m.message == WmHotKey && m.hwnd == window);
        if (!came) (void)os().MsgWaitForMultipleObjects({}, 20, QsAllInput);
    }
    EXPECT_TRUE(came) << "the holder on the input desktop gets the key";
    const auto [registered, reached] = holder.outcome();
    EXPECT_TRUE(registered) << "the combination is free on another desktop";
    EXPECT_FALSE(reached) << "a key typed on one desktop does not reach another's holder";
    EXPECT_TRUE(os().UnregisterHotKey(window, 1));
    EXPECT_TRUE(os().CloseDesktop(other));
}

TEST_P(Contract, WindowPropertiesAreNamedPointerSizedSlots) {
    const Hwnd window = MakeWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(os().GetPropW(window, u"zk-missing"), nullptr);
    EXPECT_TRUE(os().SetPropW(window, u"C920", HandleFrom<Handle>(3)));
    EXPECT_EQ(os().GetPropW(window, u"c920"), HandleFrom<Handle>(3)) << "names ignore case";
    EXPECT_TRUE(os().SetPropW(window, u"920#786#1", HandleFrom<Handle>(-5)));
    EXPECT_EQ(os().GetPropW(window, u"920#786#1"), HandleFrom<Handle>(-5));
    EXPECT_TRUE(os().SetPropA(window, "Zelkova2_APP5", HandleFrom<Handle>(1)));
    EXPECT_EQ(os().GetPropW(window, u"Zelkova2_APP5"), HandleFrom<Handle>(1));
    EXPECT_EQ(os().RemovePropW(window, u"C920"), HandleFrom<Handle>(3));
    EXPECT_EQ(os().GetPropW(window, u"C920"), nullptr);
    EXPECT_EQ(os().RemovePropW(window, u"C920"), nullptr);
}

TEST_P(Contract, SubclassingReplacesAndRestoresTheWindowProcedure) {
    const Hwnd window = MakeWindow();
    ASSERT_NE(window, nullptr);
    std::uint32_t processId = 0;
    EXPECT_NE(os().GetWindowThreadProcessId(window, &processId), 0u);
    EXPECT_EQ(processId, os().GetCurrentProcessId());

    const std::intptr_t previous = os().SetWindowLongPtrW(
        window, GwlpWndProc, reinterpret_cast<std::intptr_t>(&SubclassProbe));
    ASSERT_NE(previous, 0);
    g_previous = reinterpret_cast<WndProc>(previous);
    EXPECT_EQ(os().SendMessageW(window, kProbeMessage, 0, 0), kClassResult + 1000);
    EXPECT_EQ(os().SetWindowLongPtrW(window, GwlpWndProc, previous),
              reinterpret_cast<std::intptr_t>(&SubclassProbe));
    EXPECT_EQ(os().SendMessageW(window, kProbeMessage, 0, 0), kClassResult);

    EXPECT_EQ(os().GetWindowLongPtrW(window, GwlpUserData), 0);
    EXPECT_EQ(os().SetWindowLongPtrW(window, GwlpUserData, -77), 0);
    EXPECT_EQ(os().GetWindowLongPtrW(window, GwlpUserData), -77) << "pointer-sized";
    EXPECT_EQ(os().GetWindowLongPtrW(window, GwlpWndProc), previous);

    const Hwnd gone = HandleFrom<Hwnd>(0x7FFF0);
    EXPECT_FALSE(os().IsWindow(gone));
    EXPECT_EQ(os().SetWindowLongPtrW(gone, GwlpWndProc, previous), 0);
    EXPECT_EQ(os().GetLastError(), ErrorInvalidWindowHandle);
}

TEST_P(Contract, PostedMessagesArriveThroughGetMessageQuitEndsTheLoopAndCloseDestroys) {
    const Hwnd window = MakeWindow();
    ASSERT_TRUE(os().PostMessageW(window, kProbeMessage, 1, 2));
    Msg m;
    int result = 0;
    for (int i = 0; i < 100; ++i) {  // the system may have queued its own messages first
        result = os().GetMessageW(m);
        if (m.message == kProbeMessage) break;
        (void)os().DispatchMessageW(m);
    }
    EXPECT_EQ(result, 1);
    EXPECT_EQ(m.hwnd, window);
    EXPECT_EQ(m.wParam, 1u);
    EXPECT_EQ(os().DispatchMessageW(m), kClassResult);
    os().PostQuitMessage(3);
    for (int i = 0; i < 100 && (result = os().GetMessageW(m)) != 0; ++i) {
        (void)os().DispatchMessageW(m);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(m.message, WmQuit);
    EXPECT_EQ(m.wParam, 3u);
    (void)os().SendMessageW(window, WmClose, 0, 0);
    EXPECT_FALSE(os().IsWindow(window)) << "closed through DefWindowProc";
}

TEST_P(Contract, RegistryReportsMissingKeysValuesTypesAndSizes) {
    (void)os().RegDeleteTreeW(HkeyCurrentUser(), kTestKey);
    Hkey key = nullptr;
    EXPECT_EQ(os().RegOpenKeyExW(HkeyCurrentUser(), kTestKey, 0, KeyQueryValue, key),
              static_cast<std::int32_t>(ErrorFileNotFound));
    ASSERT_EQ(os().RegCreateKeyW(HkeyCurrentUser(), kTestKey, key), 0);

    std::uint32_t type = 99;
    std::uint32_t size = 0;
    EXPECT_EQ(os().RegQueryValueExW(key, u"Missing", &type, nullptr, &size),
              static_cast<std::int32_t>(ErrorFileNotFound));

    const std::array<std::byte, 4> dword = {std::byte{4}, std::byte{3}, std::byte{2}, std::byte{1}};
    ASSERT_EQ(os().RegSetValueExW(key, u"Number", kRegDword, dword), 0);
    EXPECT_EQ(os().RegQueryValueExW(key, u"Number", &type, nullptr, &size), 0);
    EXPECT_EQ(type, kRegDword);
    EXPECT_EQ(size, 4u);
    std::array<std::byte, 4> read{};
    size = 2;
    EXPECT_EQ(os().RegQueryValueExW(key, u"Number", &type, read.data(), &size),
              static_cast<std::int32_t>(ErrorMoreData));
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(os().RegQueryValueExW(key, u"Number", &type, read.data(), &size), 0);
    EXPECT_EQ(read, dword);

    const std::array<std::byte, 6> text = {std::byte{'a'}, std::byte{0}, std::byte{'b'},
                                           std::byte{0},   std::byte{0}, std::byte{0}};
    ASSERT_EQ(os().RegSetValueExW(key, u"Text", kRegSz, text), 0);
    EXPECT_EQ(os().RegQueryValueExW(key, u"text", &type, nullptr, &size), 0);
    EXPECT_EQ(type, kRegSz);
    EXPECT_EQ(size, 6u);
    ASSERT_EQ(os().RegSetValueExW(key, u"Bare", kRegSz, std::span(text).first(4)), 0);
    EXPECT_EQ(os().RegQueryValueExW(key, u"Bare", &type, nullptr, &size), 0);
    EXPECT_EQ(size, GetParam().registryTerminatesText ? 6u : 4u) << "text without a terminator";
    EXPECT_EQ(os().RegCloseKey(key), 0);

    ASSERT_EQ(os().RegOpenKeyExW(HkeyCurrentUser(), kTestKey, 0, KeyQueryValue, key), 0);
    EXPECT_EQ(os().RegSetValueExW(key, u"Number", kRegDword, dword),
              static_cast<std::int32_t>(ErrorAccessDenied))
        << "a key opened for reading cannot be written";
    EXPECT_EQ(os().RegCloseKey(key), 0);
    EXPECT_EQ(os().RegDeleteTreeW(HkeyCurrentUser(), kTestKey), 0);
}

// RegNotifyChangeKeyValue's page: the key needs KEY_NOTIFY; one notice per request, for a change
// in the key or (asked for) its subkeys; closing the key answers a request still open.
TEST_P(Contract, ARegistryNoticeComesOncePerRequestForTheKeyAndItsSubkeys) {
    (void)os().RegDeleteTreeW(HkeyCurrentUser(), kTestKey);
    Hkey key = nullptr, writer = nullptr;
    ASSERT_EQ(os().RegCreateKeyW(HkeyCurrentUser(), kTestKey + u"\\Sub", writer), 0);
    ASSERT_EQ(os().RegOpenKeyExW(HkeyCurrentUser(), kTestKey, 0, KeyQueryValue, key), 0);
    UniqueKernelHandle event(os(), os().CreateEventA(false, false, {}));
    EXPECT_EQ(os().RegNotifyChangeKeyValue(key, true, event.get()),
              static_cast<std::int32_t>(ErrorAccessDenied));
    EXPECT_EQ(os().RegCloseKey(key), 0);

    ASSERT_EQ(os().RegOpenKeyExW(HkeyCurrentUser(), kTestKey, 0, KeyNotify, key), 0);
    ASSERT_EQ(os().RegNotifyChangeKeyValue(key, true, event.get()), 0);
    EXPECT_EQ(os().WaitForSingleObject(event.get(), 0), WaitTimeout);
    const std::array<std::byte, 4> dword{};
    ASSERT_EQ(os().RegSetValueExW(writer, u"Number", kRegDword, dword), 0);
    ASSERT_EQ(os().RegSetValueExW(writer, u"Other", kRegDword, dword), 0);
    EXPECT_EQ(os().WaitForSingleObject(event.get(), 1000), WaitObject0) << "a subkey's value";
    EXPECT_EQ(os().WaitForSingleObject(event.get(), 0), WaitTimeout) << "once per request";

    ASSERT_EQ(os().RegNotifyChangeKeyValue(key, true, event.get()), 0);
    EXPECT_EQ(os().RegCloseKey(key), 0);
    EXPECT_EQ(os().WaitForSingleObject(event.get(), 1000), WaitObject0) << "the key closed";
    EXPECT_EQ(os().RegCloseKey(writer), 0);
    EXPECT_EQ(os().RegDeleteTreeW(HkeyCurrentUser(), kTestKey), 0);
}

TEST_P(Contract, CreateProcessStartsTheProgramOnTheNamedDesktopWithItsTitleOrFails) {
    const Text desk = u"zkrecord" + WideSuffix(os());
    const Hdesk handle = os().CreateDesktopW(desk, 0, GenericAll);
    ASSERT_NE(handle, nullptr);
    const Text program = GetParam().recorderPath(os());
    StartupInfo si;
    si.lpDesktop = desk;
    si.lpTitle = desk;
    ProcessInformation pi;
    ASSERT_TRUE(os().CreateProcessW(program, u" 7", true, 0, si, pi)) << os().GetLastError();
    const auto seen = GetParam().observe(os(), pi);
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->commandLine, u" 7");
    EXPECT_EQ(seen->desktop, desk);
    EXPECT_EQ(seen->title, desk);
    EXPECT_TRUE(os().CloseHandle(pi.hProcess));
    EXPECT_TRUE(os().CloseHandle(pi.hThread));
    EXPECT_TRUE(os().CloseDesktop(handle));
    EXPECT_FALSE(os().CreateProcessW(program + u".missing.exe", u" 1", true, 0, si, pi));
    const std::uint32_t error = os().GetLastError();
    EXPECT_TRUE(error == ErrorFileNotFound || error == ErrorPathNotFound) << error;
}

// A handle does only what it was opened for (OpenEventA, SetEvent, WaitForSingleObject,
// OpenProcess, EnumDesktopWindows: "the handle must have the ... access right"; a registry key's,
// RegSetValueExW's, is the registry case's, and a file's is the file case's).
TEST_P(Contract, AHandleDoesOnlyWhatItWasOpenedFor) {
    const Ansi name = "Local\\zk_contract_rights_" + Suffix(os());
    const Handle event = os().CreateEventA(false, false, name);
    const Handle waits = os().OpenEventA(Synchronize, false, name);
    const Handle sets = os().OpenEventA(EventModifyState, false, name);
    ASSERT_TRUE(event != nullptr && waits != nullptr && sets != nullptr);
    EXPECT_FALSE(os().SetEvent(waits));
    EXPECT_EQ(os().GetLastError(), ErrorAccessDenied);
    EXPECT_TRUE(os().SetEvent(sets));
    EXPECT_EQ(os().WaitForSingleObject(sets, 0), WaitFailed);
    EXPECT_EQ(os().GetLastError(), ErrorAccessDenied);
    EXPECT_EQ(os().WaitForSingleObject(waits, 0), WaitObject0);
    for (const Handle h : {event, waits, sets})
        EXPECT_TRUE(os().CloseHandle(h));

    StartupInfo si;
    ProcessInformation pi;
    ASSERT_TRUE(os().CreateProcessW(GetParam().recorderPath(os()), u" 7", false, 0, si, pi));
    (void)GetParam().observe(os(), pi);
    const Handle queries = os().OpenProcess(ProcessQueryLimitedInformation, false, pi.dwProcessId);
    const Handle synchronizes = os().OpenProcess(Synchronize, false, pi.dwProcessId);
    EXPECT_EQ(os().WaitForSingleObject(queries, 0), WaitFailed);
    EXPECT_EQ(os().GetLastError(), ErrorAccessDenied);
    EXPECT_NE(os().WaitForSingleObject(synchronizes, 0), WaitFailed);
    for (const Handle h : {queries, synchronizes, pi.hProcess, pi.hThread})
        EXPECT_TRUE(os().CloseHandle(h));

    const Hdesk switches = os().OpenDesktopW(u"Default", 0, false, DesktopSwitchDesktop);
    ASSERT_NE(switches, nullptr);
    EXPECT_TRUE(os().EnumDesktopWindows(switches).empty());
    EXPECT_EQ(os().GetLastError(), ErrorAccessDenied);
    EXPECT_TRUE(os().CloseDesktop(switches));
}

// A file is opened only as far as its other opens share it (CreateFileW, dwShareMode).
TEST_P(Contract, FilesAreAppendedSharedReadBackAndDeletedInTheLocalApplicationDataFolder) {
    std::array<char16_t, 260> folder{};
    ASSERT_EQ(os().SHGetFolderPathW(CsidlLocalAppData | CsidlFlagCreate, 0, folder), SOk);
    ASSERT_GT(Text(folder.data()).size(), 3u);
    EXPECT_EQ(folder[1], u':');
    EXPECT_NE(Text(folder.data()).back(), u'\\') << "no trailing backslash";
    const Text path = Text(folder.data()) + u"\\zk-contract-" + WideSuffix(os()) + u".txt";
    (void)os().DeleteFileW(path);
    for (const char* part : {"ab", "cd"}) {
        const Handle file = os().CreateFileW(path, FileAppendData, FileShareRead, OpenAlways);
        ASSERT_NE(file, InvalidHandleValue());
        EXPECT_TRUE(os().WriteFile(file, std::as_bytes(std::span(part, 2))));
        EXPECT_TRUE(os().CloseHandle(file));
    }
    const std::uint32_t both = FileShareRead | FileShareWrite;
    const Handle appends = os().CreateFileW(path, FileAppendData, both, OpenAlways);
    ASSERT_NE(appends, InvalidHandleValue());
    const Handle alsoAppends = os().CreateFileW(path, FileAppendData, both, OpenAlways);
    EXPECT_NE(alsoAppends, InvalidHandleValue()) << "two writers that share writing";
    EXPECT_EQ(os().CreateFileW(path, FileAppendData, FileShareRead, OpenAlways),
              InvalidHandleValue())
        << "a writer that does not share writing with the writers there";
    EXPECT_EQ(os().GetLastError(), ErrorSharingViolation);
    for (const Handle h : {appends, alsoAppends})
        EXPECT_TRUE(os().CloseHandle(h));
    const Handle file = os().CreateFileW(path, GenericRead, FileShareRead, OpenExisting);
    ASSERT_NE(file, InvalidHandleValue());
    std::array<std::byte, 3> buffer{};
    std::uint32_t read = 0;
    std::string text;
    while (os().ReadFile(file, buffer, read) && read > 0) {
        text.append(reinterpret_cast<const char*>(buffer.data()), read);
    }
    EXPECT_EQ(text, "abcd");
    EXPECT_TRUE(os().CloseHandle(file));
    EXPECT_TRUE(os().DeleteFileW(path));
    EXPECT_FALSE(os().DeleteFileW(path));
    EXPECT_EQ(os().GetLastError(), ErrorFileNotFound);
    EXPECT_EQ(os().CreateFileW(path, GenericRead, FileShareRead, OpenExisting),
              InvalidHandleValue());
    EXPECT_EQ(os().GetLastError(), ErrorFileNotFound);
}

TEST_P(Contract, SystemTextOfAKnownCodeEndsWithALineBreakAndTheAnsiCodePageRoundTrips) {
    std::array<char16_t, 256> buffer{};
    const std::uint32_t n = os().FormatMessageW(0x1200, ErrorFileNotFound, 0, buffer);
    ASSERT_GT(n, 2u);
    EXPECT_EQ(Text(buffer.data() + n - 2, 2), u"\r\n");
    EXPECT_EQ(os().FormatMessageW(0x1200, 0x20001234, 0, buffer), 0u) << "an unknown code";
    const Ansi ansi = "Zelkova \xE9\x80";  // e acute, euro sign in Windows-1252
    const Text text = os().MultiByteToWideChar(ansi);
    EXPECT_EQ(text, u"Zelkova \u00E9\u20AC");
    EXPECT_EQ(os().WideCharToMultiByte(text), ansi);
    EXPECT_EQ(os().MultiByteToWideChar(std::string_view("a\0b", 3)), Text(u"a\0b", 3));
}

TEST_P(Contract, KeyboardLayoutMapsAndNamesKeys) {
    const Hkl layout = os().GetKeyboardLayout(0);
    std::array<char, 255> name{};
    auto nameOf = [&](std::uint32_t scan) {
        const int n = os().GetKeyNameTextA(static_cast<std::int32_t>(scan << 16), name);
        return std::string(name.data(), n > 0 ? static_cast<std::size_t>(n) : 0);
    };
    EXPECT_EQ(os().MapVirtualKeyExA('A', 0, layout), 0x1Eu);
    EXPECT_EQ(nameOf(0x1E), "A");
    EXPECT_EQ(os().MapVirtualKeyExA(0x78, 0, layout), 0x43u);  // F9
    EXPECT_EQ(nameOf(0x43), "F9");
    EXPECT_EQ(os().MapVirtualKeyExA(0x08, 0, layout), 0x0Eu);
    if (GetParam().keyNamesFromX) {
        EXPECT_EQ(nameOf(0x0E), "BackSpace") << "Wine names keys by X keysyms";
        EXPECT_EQ(os().MapVirtualKeyExA(0x62, 0, layout), 0u) << "Wine: keypad 2 unmapped";
    } else {
        EXPECT_EQ(nameOf(0x0E), "Backspace");
        EXPECT_EQ(os().MapVirtualKeyExA(0x62, 0, layout), 0x50u);
        EXPECT_EQ(nameOf(0x50), "Num 2");
    }
}

INSTANTIATE_TEST_SUITE_P(Backends, Contract, ::testing::ValuesIn(Backends()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace zk::contract
