#pragma once
// frmZK: the controller. Its window has no user interface; it holds the four desktops, the 54
// events and the hotkeys, turns hotkeys into event signals and companions' commands into desktop
// switches, and undoes everything when the window is unloaded.

#include <cstdint>
#include <memory>

#include "desktop/c_desktop.h"
#include "diagnostics/err_log.h"
#include "hotkeys/hotkeys.h"
#include "platform/os.h"
#include "settings/registry.h"
#include "signals/shared_state.h"
#include "support/one_based_array.h"
#include "vocabulary/event_names.h"
#include "vocabulary/hotkey_table.h"
#include "vocabulary/protocol.h"
#include "winsupport/i_subclass.h"

namespace zk {

inline constexpr char16_t kControllerClass[] = u"Zelkova2Controller";

// How the process ends.
inline constexpr int kExitNormal = 0;
inline constexpr int kExitStartUnloaded = 1;  // a desktop could not be taken or made
inline constexpr int kExitEventFailure = 2;   // a named event could not be created
inline constexpr int kExitStartError = 3;     // an unexpected error during startup

// The controller's record, fields in their declared order; all zero when it is created.
struct frmZKRecord : HotKeyFields {  // HotKeyOk, HotKeyCode, HotKeyMod
    OneBasedArray<std::unique_ptr<cDesktop>, kDesktopCount> Desktops;
    std::int16_t PreviousDesk = 0;
    std::int16_t CurrentDesk = 0;
    OneBasedArray<Handle, kSignalCount> EventHandles;
};

class frmZK final : public ISubclass {
  public:
    // Creates the controller window (never shown, kept out of the taskbar); nullptr when the
    // system refuses the window.
    [[nodiscard]] static std::shared_ptr<frmZK> Create(Os& os);
    // Create, then Form_Load. An event failure ends the process inside; a desktop failure
    // leaves the window unloaded.
    [[nodiscard]] static std::shared_ptr<frmZK> Load(Os& os);

    explicit frmZK(Os& os);
    ~frmZK() override;

    void Form_Load();
    void Form_Unload(std::int16_t& cancel);
    // Runs Form_Unload and destroys the window; once only.
    void Unload();

    std::int32_t MsgResponse(std::int32_t& CurrentMessage) override;
    Lresult WindowProc(Hwnd hWnd, std::int32_t iMsg, Wparam wParam, Lparam lParam) override;
    void HotKeyPressed(std::int32_t id);

    [[nodiscard]] Hwnd hWnd() const { return window_; }
    [[nodiscard]] const frmZKRecord& record() const { return record_; }
    [[nodiscard]] bool unloaded() const { return unloaded_; }
    [[nodiscard]] ErrLog& log() { return log_; }
    // The exit code the message loop ends with once the window is gone.
    [[nodiscard]] int exitCode() const { return startUnloaded_ ? kExitStartUnloaded : kExitNormal; }

  private:
    static Lresult ZK_CALLBACK ClassWindowProc(Hwnd hWnd, std::uint32_t message, Wparam wParam,
                                               Lparam lParam);
    Lresult OwnMessage(std::uint32_t message, Wparam wParam, Lparam lParam);
    void CreateEvents();
    bool TakeDesktops();
    void FailStart(const Text& message);
    void CopyData(Lparam lParam);
    void LetSwitcherTakeTheKeyboard(std::int16_t desk);
    void PublishHotKeys();
    SharedState& Companions();

    Os& os_;
    Hwnd window_ = nullptr;
    frmZKRecord record_;
    EventNames names_;
    ErrLog log_;
    Registry registry_;
    std::unique_ptr<HotKeys> hotkeys_;
    // What the companions share: the switchers' process ids, and the hotkeys in force.
    std::unique_ptr<SharedState> companions_;
    bool unloaded_ = false;
    bool startUnloaded_ = false;
};

// The thread's message loop; it ends when the controller window is gone.
int RunMessageLoop(Os& os);

// The whole program on a platform: the controller window, its startup, the message loop.
int RunZelkova(Os& os);

}  // namespace zk
