#pragma once
// A simulated Windows session: the state the program touches and nothing more. It behaves as
// the system does (where unsure, as Wine does), keeps a journal of calls, and fails calls on
// request. The program's process is one process of the session; tests act as the others.

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "platform/os.h"
#include "platform/sim/journal.h"
#include "platform/sim/registry_hive.h"

namespace zk::sim {

// Thrown by ExitProcess: the simulated run ends, the test process does not.
struct ProcessEnded {
    std::uint32_t exitCode;
};
// Thrown by GetMessageW when nothing is queued: a real thread would wait here for ever.
struct MessageQueueIdle {};

struct StartedProcess {
    std::uint32_t processId = 0;
    std::optional<Text> applicationName;
    Text commandLine;
    Text image;  // the executable that was found
    bool inheritHandles = false;
    std::uint32_t creationFlags = 0;
    StartupInfo startupInfo;
};

class SimOs final : public Os {
  public:
    SimOs();
    ~SimOs() override;

    // ----- Os
    std::uint32_t GetLastError() const override { return last_; }

    Handle CreateEventA(bool manualReset, bool initialState, const Ansi& name) override;
    Handle CreateMutexA(bool initialOwner, const Ansi& name) override;
    Handle OpenEventA(std::uint32_t desiredAccess, bool inherit, const Ansi& name) override;
    bool SetEvent(Handle event) override;
    std::uint32_t WaitForSingleObject(Handle object, std::uint32_t milliseconds) override;
    bool CloseHandle(Handle object) override;
    std::uint32_t GetCurrentThreadId() override;
    std::uint32_t GetCurrentProcessId() override;
    bool CreateProcessW(const std::optional<Text>& applicationName, const Text& commandLine,
                        bool inheritHandles, std::uint32_t creationFlags,
                        const StartupInfo& startupInfo,
                        ProcessInformation& processInformation) override;
    [[noreturn]] void ExitProcess(std::uint32_t exitCode) override;

    std::uint32_t FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                 std::uint32_t languageId, std::span<char16_t> buffer) override;
    std::uint32_t GetModuleFileNameW(std::span<char16_t> buffer) override;
    Hinstance GetModuleHandleW() override;
    Text MultiByteToWideChar(std::string_view ansi) override;
    Ansi WideCharToMultiByte(std::u16string_view text) override;
    SystemTime GetLocalTime() override;
    Text GetDateFormatW(const SystemTime& time) override;
    Text GetTimeFormatW(const SystemTime& time) override;
    Handle CreateFileW(const Text& path, std::uint32_t access, std::uint32_t shareMode,
                       std::uint32_t creationDisposition) override;
    bool WriteFile(Handle file, std::span<const std::byte> bytes) override;
    bool ReadFile(Handle file, std::span<std::byte> buffer, std::uint32_t& bytesRead) override;
    bool DeleteFileW(const Text& path) override;

    std::int32_t SHGetFolderPathW(int csidl, std::uint32_t flags,
                                  std::span<char16_t> path) override;

    Hdesk GetThreadDesktop(std::uint32_t threadId) override;
    Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) override;
    Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                         std::uint32_t desiredAccess) override;
    bool SetThreadDesktop(Hdesk desktop) override;
    bool SwitchDesktop(Hdesk desktop) override;
    bool CloseDesktop(Hdesk desktop) override;
    Text GetUserObjectInformationW(Handle object) override;
    std::vector<Text> EnumDesktopsW() override;

    std::int32_t RegisterHotKey(Hwnd window, int id, std::uint32_t modifiers,
                                std::uint32_t virtualKey) override;
    bool UnregisterHotKey(Hwnd window, int id) override;
    Hkl GetKeyboardLayout(std::uint32_t threadId) override;
    std::uint32_t MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) override;
    int GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) override;

    bool SetPropA(Hwnd window, const Ansi& name, Handle data) override;
    Handle GetPropW(Hwnd window, const Text& name) override;
    bool SetPropW(Hwnd window, const Text& name, Handle data) override;
    Handle RemovePropW(Hwnd window, const Text& name) override;
    bool IsWindow(Hwnd window) override;
    std::uint32_t GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) override;
    std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) override;
    std::intptr_t GetWindowLongPtrW(Hwnd window, int index) override;
    Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message, Wparam wParam,
                            Lparam lParam) override;

    Hwnd GetWindow(Hwnd window, std::uint32_t command) override;
    int GetSystemMetrics(int index) override;
    Handle LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx, int cy,
                      std::uint32_t flags) override;
    Lresult SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;

    std::uint16_t RegisterClassW(const Text& className, WndProc procedure,
                                 Hinstance instance) override;
    Hwnd CreateWindowExW(std::uint32_t exStyle, const Text& className, const Text& windowName,
                         std::uint32_t style, Hwnd parent, Hinstance instance) override;
    bool DestroyWindow(Hwnd window) override;
    Lresult DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                           Lparam lParam) override;
    Lresult SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    bool PostMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    int GetMessageW(Msg& message) override;
    Lresult DispatchMessageW(const Msg& message) override;
    void PostQuitMessage(int exitCode) override;

    std::int32_t RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                               std::uint32_t desiredAccess, Hkey& result) override;
    std::int32_t RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) override;
    std::int32_t RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                  std::byte* data, std::uint32_t* dataSize) override;
    std::int32_t RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                std::span<const std::byte> data) override;
    std::int32_t RegDeleteValueW(Hkey key, const Text& valueName) override;
    std::int32_t RegDeleteTreeW(Hkey root, const Text& subKey) override;
    std::int32_t RegCloseKey(Hkey key) override;

    // ----- Driving the session from a test

    Journal& journal() { return journal_; }
    FaultPlan& faults() { return faults_; }

    // The program's own executable and the files, folders and programs around it.
    void SetModuleFileName(const Text& path);
    void SetCurrentDirectory(const Text& path) { currentDirectory_ = path; }
    void AddFolder(const Text& path);
    void AddFile(const Text& path, std::vector<std::byte> contents = {});
    void RemoveFile(const Text& path);
    void MakeUnwritable(const Text& path);
    std::optional<std::vector<std::byte>> FileContents(const Text& path) const;
    std::string FileText(const Text& path) const;  // contents as bytes in a string; "" if none
    void SetLocalAppData(const Text& path) { localAppData_ = path; }
    void SetFolderPathResult(std::optional<std::int32_t> hresult) { folderResult_ = hresult; }
    void SetSystemText(std::uint32_t code, const Text& text) { systemTexts_[code] = text; }
    void SetLocalTime(const SystemTime& time) { localTime_ = time; }
    // Icon groups in the program's own resources (the name, or "#1" for a numbered group).
    void SetIconGroups(std::set<Ansi> names) { iconGroups_ = std::move(names); }

    // Processes the program started.
    const std::vector<StartedProcess>& StartedProcesses() const { return started_; }
    void EndProcess(std::uint32_t processId);

    // Desktops of the window station.
    Text InputDesktopName() const;
    Text ThreadDesktopName() const;
    bool DesktopExists(const Text& name) const;
    void CreateDesktopInOtherProcess(const Text& name);

    // Named kernel objects, as another process of the session sees them.
    bool EventExists(const Ansi& name) const;
    bool EventIsSignalled(const Ansi& name) const;
    // Takes the event's signal if it is set, as a companion's wait would; true if it was set.
    bool WaitForEventInOtherProcess(const Ansi& name);
    void CreateEventInOtherProcess(const Ansi& name);
    void CreateMutexInOtherProcess(const Ansi& name);
    // Handles the program's process holds open.
    std::size_t OpenHandleCount() const;
    std::size_t OpenKeyCount() const { return keys_.size(); }

    // Hotkeys of the session.
    void HoldHotKeyInOtherProcess(std::uint32_t modifiers, std::uint32_t virtualKey);
    bool IsHotKeyRegistered(std::uint32_t modifiers, std::uint32_t virtualKey) const;
    std::size_t RegisteredHotKeyCount() const { return hotkeys_.size(); }
    // The user presses a combination; true if a registration took it (WM_HOTKEY is posted).
    bool PressHotKey(std::uint32_t modifiers, std::uint32_t virtualKey);

    // Windows.
    Hwnd FindWindowByCaption(const Text& caption) const;
    Hwnd CreateWindowInOtherProcess();
    void SetNextWindowHandle(std::intptr_t value) { nextWindow_ = value; }
    std::vector<std::pair<Text, Handle>> WindowProps(Hwnd window) const;
    Handle WindowIcon(Hwnd window, bool big) const;
    bool IsWindowVisible(Hwnd window) const;
    std::uint32_t WindowExStyle(Hwnd window) const;
    std::size_t QueuedMessageCount() const { return queue_.size(); }
    // Another process sends WM_COPYDATA with these bytes; the window's procedure handles it
    // before this returns, as when the program's thread takes a sent message.
    Lresult SendCopyData(Hwnd window, std::string_view bytes, std::uintptr_t dwData = 0);
    // Runs `loop` (the program's message loop) until it returns or the queue is idle;
    // returns its result, or nothing if the queue went idle.
    std::optional<int> RunMessageLoop(const std::function<int()>& loop);

    // Registry values as another program wrote them.
    RegistryHive& registry() { return registry_; }

  private:
    enum class Kind { Event, Mutex, Process, Thread, File, Desktop };
    struct Object {
        Object(Kind k) : kind(k) {}  // NOLINT: objects are made from their kind
        Kind kind;
        Ansi name;  // named kernel objects
        bool manualReset = false;
        bool signalled = false;
        int references = 0;           // handles of every process, plus uses
        std::uint32_t processId = 0;  // processes and threads
        Text path;                    // files
        int desktop = 0;              // desktops
    };
    struct HandleEntry {
        int object;
        std::uint32_t access;
        bool threadDesktop;        // GetThreadDesktop's handle: not the caller's to close
        std::size_t position = 0;  // files: where the next read starts
    };
    struct Desktop {
        Text name;
        int object;
    };
    struct Window {
        Text className;
        Text caption;
        WndProc procedure = nullptr;
        Hwnd owner = nullptr;
        std::uint32_t processId = 0;
        int desktop = 0;
        std::uint32_t exStyle = 0;
        std::uint32_t style = 0;
        std::vector<std::pair<Text, Handle>> props;
        std::intptr_t userData = 0;
        Handle bigIcon = nullptr;
        Handle smallIcon = nullptr;
    };
    struct HotKey {
        Hwnd window;
        int id;
        std::uint32_t modifiers;
        std::uint32_t virtualKey;
        std::uint32_t processId;
    };
    struct File {
        Text path;
        std::vector<std::byte> contents;
    };
    struct KeyHandle {
        Text path;
        std::uint32_t access;
    };

    // Records the call; returns true if an injected fault makes it fail (the error is set).
    bool Enter(const char* call, std::string detail = {});
    Handle NewHandle(int object, std::uint32_t access, bool threadDesktop = false);
    HandleEntry* Lookup(Handle handle, Kind kind);
    const HandleEntry* Lookup(Handle handle, Kind kind) const;
    int NewObject(Object object);
    void Release(int object);
    Handle CreateNamed(Kind kind, bool manualReset, bool initialState, const Ansi& name);
    Window* FindWindow(Hwnd window);
    const Window* FindWindow(Hwnd window) const;
    Lresult Deliver(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam);
    int DesktopByName(const Text& name) const;
    Hdesk OpenDesktop(int desktop, std::uint32_t access);
    bool ThreadOwnsWindows() const;
    static Text FoldPath(const Text& path);
    Text FullPath(const Text& path) const;
    static Text ParentFolder(const Text& path);
    bool FolderExists(const Text& path) const;
    std::optional<Text> FindImage(const std::optional<Text>& applicationName,
                                  const Text& commandLine) const;
    std::int32_t OpenKey(Hkey root, const Text& subKey, std::uint32_t access, bool create,
                         Hkey& result);
    const KeyHandle* LookupKey(Hkey key) const;

    std::uint32_t last_ = 0;
    Journal journal_;
    FaultPlan faults_;
    std::map<std::string, int, std::less<>> callCounts_;

    const std::uint32_t processId_ = 0x1A4;
    const std::uint32_t threadId_ = 0x1A8;
    std::uint32_t nextProcessId_ = 0x200;

    std::map<int, Object> objects_;
    int nextObject_ = 1;
    std::map<std::intptr_t, HandleEntry> handles_;
    std::intptr_t nextHandle_ = 0x40;
    std::map<Ansi, int> namedObjects_;

    std::vector<Desktop> desktops_;  // index = desktop number used inside the sim
    int inputDesktop_ = 0;
    int threadDesktop_ = 0;
    Handle threadDesktopHandle_ = nullptr;

    std::map<Text, WndProc> classes_;
    std::map<std::intptr_t, Window> windows_;
    std::intptr_t nextWindow_ = 0x10010;
    std::deque<Msg> queue_;
    std::optional<int> quitCode_;
    std::vector<std::vector<std::byte>> copyBuffers_;

    std::vector<HotKey> hotkeys_;

    std::map<Text, File> files_;  // by folded full path
    std::set<Text> folders_;      // folded full paths
    std::set<Text> unwritable_;
    Text modulePath_ = u"C:\\Program Files\\Zelkova2\\Zelkova2.exe";
    Text currentDirectory_ = u"C:\\Program Files\\Zelkova2";
    Text localAppData_ = u"C:\\Users\\user1\\AppData\\Local";
    std::optional<std::int32_t> folderResult_;
    std::map<std::uint32_t, Text> systemTexts_;
    SystemTime localTime_{2026, 11, 0, 22, 14, 5, 9, 0};
    std::set<Ansi> iconGroups_ = {"AAA", "#1"};
    std::map<std::pair<Ansi, int>, Handle> sharedIcons_;
    std::intptr_t nextIcon_ = 0x30001;

    std::vector<StartedProcess> started_;

    RegistryHive registry_;
    std::map<std::intptr_t, KeyHandle> keys_;
    std::intptr_t nextKey_ = 0x100;
};

}  // namespace zk::sim
