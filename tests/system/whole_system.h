#pragma once
// The whole of Zelkova2 on one simulated session: the controller, the switcher and the herald of
// each desktop, the bridge, and the control tool, each as its program builds it, on one simulated
// thread that acts on the desktop of whichever program runs. Time passes as a user's does, and
// everything that waits on an event or a message runs until the session is quiet.

#include <array>
#include <memory>
#include <optional>
#include <set>
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
    // `controllerId`: the controller's process id.
    explicit WholeSystem(sim::HotKeyScope scope, std::uint32_t controllerId = 0x1A4);
    ~WholeSystem();
    WholeSystem(const WholeSystem&) = delete;
    WholeSystem& operator=(const WholeSystem&) = delete;

    // ----- what the user does
    // Types the default combination of hotkey `id`, held while the programs run; false when no
    // program took it.
    bool Press(int id);
    // The desktop whose preview or finder is open; 0 when none is.
    [[nodiscard]] int PreviewOpenOn() const { return previewOn_; }
    [[nodiscard]] int FinderOpenOn() const { return finderOn_; }
    // A digit typed into the open preview; the title of the user's window on `desk` typed into the
    // open finder, then Enter.
    void ChooseInPreview(int desk);
    void FindInFinder(int desk);
    // A click in the menu of the tray icon of the desktop shown, or the wheel turned over it.
    void TrayMenu(int desk);
    void TrayWheel(bool next);
    // zelkovactl, typed in a console on the desktop shown.
    int Ctl(const std::vector<std::string>& args);
    // Another program sends the controller's window a switch command, or shows a desktop itself.
    void CommandToController(int desk);
    void BehindOurBack(int desk);
    // The switcher or the herald of a desktop ends, as the Task Manager ends it; its neighbour
    // starts it again, which the session does at the next moment of Settle. A sequence ends each
    // one four times at most: the neighbour gives up on one that ends a fifth time within a
    // minute (the herald's test), which the user then meets as a missing program.
    void EndPilot(int desk) { End(*pilots_[Index(desk)]); }
    [[nodiscard]] bool PilotMayEnd(int desk) const;
    void EndHerald(int desk) { End(*heralds_[Index(desk)]); }
    // A moment at a hand's pace: everything runs, and a second passes.
    void Settle();

    // ----- what can be seen
    [[nodiscard]] int InputDesk();
    [[nodiscard]] const frmZKRecord& Controller() const { return controller_->record(); }
    [[nodiscard]] static std::string TitleOn(int desk);
    // The names of the kernel objects the programs have created or opened so far.
    [[nodiscard]] std::set<std::string> NamedObjects();

  private:
    struct Host;
    static Lresult ZK_CALLBACK Procedure(Hwnd, std::uint32_t, Wparam, Lparam);
    static std::size_t Index(int desk) { return static_cast<std::size_t>(desk - 1); }

    // Starts the program as process `process` (0: a new one) and announces it in its slot.
    void Start(Host& host, std::uint32_t process = 0);
    void End(Host& host);
    // Starts the programs that a neighbour asked the system to start again.
    void StartAskedFor();
    // Runs every program until nothing is left to do at this moment.
    void RunUntilQuiet();
    bool RunOnce();
    void ActOn(int desk);
    void NoteNames();

    sim::SimOs os_;
    std::set<std::string> named_;  // what NamedObjects says
    std::optional<ProcessContext> context_;
    std::shared_ptr<frmZK> controller_;
    std::optional<companion::ControllerProcess> controllerProcess_;
    std::array<std::unique_ptr<Host>, 4> pilots_;
    std::array<std::unique_ptr<Host>, 4> heralds_;
    std::unique_ptr<companion::Bridge> bridge_;
    std::optional<SharedState> state_;
    std::size_t startsSeen_ = 0;
    bool bridgeRunning_ = true;
    int previewOn_ = 0;
    int finderOn_ = 0;
    int running_ = 0;  // RunUntilQuiet's depth
};

}  // namespace zk::testing
