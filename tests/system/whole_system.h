#pragma once
// The whole of Zelkova2 on one simulated session: the controller, the switcher and the herald of
// each desktop, the bridge, and the control tool, each as its program builds it, on one simulated
// thread that acts on the desktop of whichever program runs. Time passes as a user's does, and
// everything that waits on an event or a message runs until the session is quiet.

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DeskHerald/bridge.h"
#include "DeskHerald/herald.h"
#include "DeskPilot/pilot.h"
#include "controller/frm_zk.h"
#include "platform/sim/sim_os.h"
#include "winsupport/process_context.h"

namespace zk::testing {

class WholeSystem {
  public:
    explicit WholeSystem(sim::HotKeyScope scope);
    ~WholeSystem();
    WholeSystem(const WholeSystem&) = delete;
    WholeSystem& operator=(const WholeSystem&) = delete;

    // ----- what the user does
    // Types the default combination of hotkey `id`; false when no program took it.
    bool Press(int id);
    // The desktop whose preview or finder is open; 0 when none is.
    [[nodiscard]] int PreviewOpenOn() const { return previewOn_; }
    [[nodiscard]] int FinderOpenOn() const { return finderOn_; }
    // A digit typed into the open preview.
    void ChooseInPreview(int desk);
    // The title of the user's window on `desk`, typed into the open finder, then Enter.
    void FindInFinder(int desk);
    // A click in the menu of the tray icon of the desktop shown, or the wheel turned over it.
    void TrayMenu(int desk);
    void TrayWheel(bool next);
    // zelkovactl, typed in a console on the desktop shown.
    int Ctl(const std::vector<std::string>& args);
    // Another program sends the controller's window a switch command.
    void CommandToController(int desk);
    // The system shows another desktop by itself (another program's SwitchDesktop).
    void BehindOurBack(int desk);
    // The switcher or the herald of a desktop ends and starts again.
    void RestartPilot(int desk);
    void RestartHerald(int desk);
    // A moment at a hand's pace: everything runs, and a second passes.
    void Settle();

    // ----- what can be seen
    [[nodiscard]] int InputDesk();
    [[nodiscard]] const frmZKRecord& Controller() const { return controller_->record(); }
    [[nodiscard]] static std::string TitleOn(int desk);

  private:
    struct PilotHost;
    struct HeraldHost;
    friend struct PilotHost;
    friend struct HeraldHost;
    static Lresult ZK_CALLBACK PilotProcedure(Hwnd, std::uint32_t, Wparam, Lparam);
    static Lresult ZK_CALLBACK HeraldProcedure(Hwnd, std::uint32_t, Wparam, Lparam);

    void StartPilot(int desk);
    void StartHerald(int desk);
    // Runs every program until nothing is left to do at this moment.
    void RunUntilQuiet();
    bool RunOnce();
    void ActOn(int desk);

    sim::SimOs os_;
    sim::HotKeyScope scope_;
    std::optional<ProcessContext> context_;
    std::shared_ptr<frmZK> controller_;
    std::optional<companion::ControllerProcess> controllerProcess_;
    std::array<std::unique_ptr<PilotHost>, 4> pilots_;
    std::array<std::unique_ptr<HeraldHost>, 4> heralds_;
    std::unique_ptr<companion::Bridge> bridge_;
    bool bridgeRunning_ = true;
    std::array<Hwnd, 4> userWindows_{};
    int previewOn_ = 0;
    int finderOn_ = 0;
    int running_ = 0;  // RunUntilQuiet's depth
};

}  // namespace zk::testing
