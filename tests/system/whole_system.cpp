#include "system/whole_system.h"

#include <stdexcept>

#include "companions/companion_session.h"
#include "shared/shown_desktop.h"
#include "shared/window_finder.h"
#include "vocabulary/event_names.h"
#include "vocabulary/programs.h"
#include "vocabulary/protocol.h"
#include "zelkovactl/ctl.h"

namespace zk::testing {
namespace {

constexpr std::uint32_t kCtrlAlt = 3;
// The default combinations' keys, by hotkey id.
constexpr std::array<std::uint32_t, 10> kKeys = {0,    0x61, 0x62, 0x63, 0x64,
                                                 0x08, 0x6B, 0x20, 0x27, 0x25};

WholeSystem* g_system = nullptr;

Text DeskName(int desk) {
    return kDesktopNames[static_cast<std::size_t>(desk - 1)];
}

}  // namespace

// A switcher or a herald of one desktop, with its window and what its window side does.
struct WholeSystem::Host final : companion::Pilot::Shell, HeraldShellRecord {
    Host(int d, bool p) : desk(d), isPilot(p) {}
    void ShowPreview() override { g_system->previewOn_ = desk; }
    void HidePreview() override {
        if (g_system->previewOn_ == desk) g_system->previewOn_ = 0;
    }
    void PutAway() override {
        HidePreview();
        if (g_system->finderOn_ == desk) g_system->finderOn_ = 0;
    }
    void HidePutAway() override {}
    bool PreviewShown() override { return g_system->previewOn_ == desk; }
    void Capture() override {}
    void ShowFinder() override { g_system->finderOn_ = desk; }

    companion::WaitSet& Set() { return pilot ? pilot->Set() : herald->Set(); }
    bool Woken(const companion::Wake& wake) {
        return pilot ? pilot->Woken(wake) : herald->Woken(wake);
    }

    int desk;
    bool isPilot;
    std::uint32_t process = 0;
    int ends = 0;
    std::unique_ptr<companion::Pilot> pilot;
    std::unique_ptr<companion::Herald> herald;
    bool running = true;
};

Lresult ZK_CALLBACK WholeSystem::Procedure(Hwnd window, std::uint32_t message, Wparam wParam,
                                           Lparam) {
    for (const auto* hosts : {&g_system->pilots_, &g_system->heralds_}) {
        for (const auto& host : *hosts) {
            if (!host || host->window != window) continue;
            const int id = static_cast<int>(wParam);
            if (message == WmHotKey && host->pilot) host->pilot->HotKey(id);
            if (message == WmHotKey && host->herald) host->herald->HotKey(id);
            if (message == WmTimer && host->pilot) host->pilot->TimerFired(wParam);
        }
    }
    return 0;
}

WholeSystem::WholeSystem(sim::HotKeyScope scope, std::uint32_t controllerId) : os_(controllerId) {
    if (g_system != nullptr) throw std::logic_error("one whole system at a time");
    g_system = this;
    os_.SetModuleFileName(kFolder + u"\\Zelkova2.exe");
    for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe", u"ZelkovaError.exe",
                                 u"ZelkovaSettings.exe", u"zelkovactl.exe"})
        os_.AddFile(kFolder + u"\\" + file);
    os_.SetHotKeyScope(scope);
    context_.emplace(os_);
    controller_ = frmZK::Create(os_);
    controller_->Form_Load();
    controllerProcess_.emplace(os_, os_.GetCurrentProcessId());
    state_.emplace(os_, os_.GetCurrentProcessId());
    (void)os_.RegisterClassW(u"Companion", &Procedure, os_.GetModuleHandleW());
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        pilots_[Index(desk)] = std::make_unique<Host>(desk, true);
        heralds_[Index(desk)] = std::make_unique<Host>(desk, false);
        Start(*pilots_[Index(desk)]);
        Start(*heralds_[Index(desk)]);
        (void)os_.CreateWindowInOtherProcess(TextFromUtf8(TitleOn(desk)), nullptr,
                                             sim::kOtherProcessId, DeskName(desk), WsVisible);
    }
    ActOn(1);
    bridge_ = std::make_unique<companion::Bridge>(os_, *controllerProcess_);
    os_.session().othersRun = [this] { RunUntilQuiet(); };
    startsSeen_ = os_.StartedProcesses().size();  // the controller's own starts
    Settle();
}

WholeSystem::~WholeSystem() {
    os_.session().othersRun = nullptr;
    g_system = nullptr;
}

std::string WholeSystem::TitleOn(int desk) {
    return "Notes " + std::string(1, static_cast<char>('A' + desk - 1));
}

void WholeSystem::ActOn(int desk) {
    os_.ActOnDesktop(DeskName(desk));
}

// The program runs on the one simulated thread, on its desktop, with the window it had; its slot
// names a process of its own, which its neighbour watches.
void WholeSystem::Start(Host& host, std::uint32_t process) {
    ActOn(host.desk);
    if (host.window == nullptr) {
        host.window = os_.CreateWindowExW(0, u"Companion", u"", 0, nullptr, os_.GetModuleHandleW());
    }
    const Program program = host.isPilot ? Program::Pilot : Program::Herald;
    if (host.isPilot) {
        host.pilot = std::make_unique<companion::Pilot>(os_, host.desk, *controllerProcess_,
                                                        host.window, host);
    } else {
        host.herald =
            std::make_unique<companion::Herald>(os_, host.desk, *controllerProcess_, host);
    }
    host.running = true;
    host.process = process != 0
                       ? process
                       : os_.AddOtherProcess(ProgramFileName(program), os_.GetCurrentProcessId());
    const int slot = host.isPilot ? PilotSlot(host.desk) : HeraldSlot(host.desk);
    state_->Block().companions[slot] = host.process;
    os_.SetEventInOtherProcess(os_.WideCharToMultiByte(
        SharedObjectName(SharedObject::Up, os_.GetCurrentProcessId(), slot)));
}

std::set<std::string> WholeSystem::NamedObjects() {
    NoteNames();
    std::set<std::string> names = named_;
    names.erase("");
    return names;
}

void WholeSystem::NoteNames() {
    for (const char* call : {"CreateEventA", "OpenEventA", "CreateMutexA", "CreateFileMappingW"}) {
        for (const std::string& detail : os_.journal().Details(call))
            named_.insert(detail.substr(0, detail.find(' ')));
    }
}

bool WholeSystem::PilotMayEnd(int desk) const {
    return pilots_[Index(desk)]->ends < 4;
}

void WholeSystem::End(Host& host) {
    if (++host.ends > 4) return;
    host.pilot.reset();  // the system takes back what the process held: its hotkeys
    host.herald.reset();
    host.running = false;
    os_.EndProcess(host.process);
    RunUntilQuiet();
}

void WholeSystem::StartAskedFor() {
    const auto& started = os_.StartedProcesses();
    for (; startsSeen_ < started.size(); ++startsSeen_) {
        const auto& start = started[startsSeen_];
        const bool pilot = start.image.ends_with(ProgramFileName(Program::Pilot));
        const int desk = start.commandLine.size() > 1 ? start.commandLine[1] - u'0' : 0;
        if (!IsDesktopNumber(desk)) continue;  // the bridge is not ended here
        Host& host = pilot ? *pilots_[Index(desk)] : *heralds_[Index(desk)];
        if (!host.running) Start(host, start.processId);
    }
}

// One round: the thread's messages, then each program's wait, as its own loop would take them.
bool WholeSystem::RunOnce() {
    bool busy = false;
    Msg message;
    while (os_.PeekMessageW(message)) {
        busy = true;
        int desk = 1;
        for (const auto* hosts : {&pilots_, &heralds_}) {
            for (const auto& host : *hosts)
                if (host->window == message.hwnd) desk = host->desk;
        }
        ActOn(desk);
        (void)os_.DispatchMessageW(message);
    }
    const auto wake = [&](companion::WaitSet& set, const auto& woken) {
        set.RunLater();
        const auto& handles = set.Handles();
        const std::uint32_t result = os_.WaitForMultipleObjects(handles, false, 0);
        if (result >= WaitObject0 + handles.size()) return true;
        busy = true;
        return static_cast<bool>(woken(set.At(result - WaitObject0)));
    };
    for (const auto* hosts : {&pilots_, &heralds_}) {
        for (const auto& host : *hosts) {
            if (!host->running) continue;
            ActOn(host->desk);
            host->running = wake(host->Set(), [&](companion::Wake w) { return host->Woken(w); });
        }
    }
    if (bridgeRunning_) {
        ActOn(1);
        bridgeRunning_ = wake(bridge_->Set(), [&](companion::Wake w) { return bridge_->Woken(w); });
    }
    return busy;
}

void WholeSystem::RunUntilQuiet() {
    if (running_ > 0) return;  // a program waiting inside a round lets the others run after it
    ++running_;
    const int acting = os_.session().threadDesktop;
    for (int round = 0; RunOnce(); ++round) {
        if (round > 200) throw std::runtime_error("the programs never came to rest");
    }
    os_.session().threadDesktop = acting;
    --running_;
    NoteNames();
    os_.journal().Clear();
}

void WholeSystem::Settle() {
    RunUntilQuiet();
    for (const std::uint64_t step : {20, 80, 300, 600}) {
        os_.AdvanceTime(step);
        StartAskedFor();
        RunUntilQuiet();
    }
}

bool WholeSystem::Press(int id) {
    ActOn(InputDesk());
    const bool taken = os_.HoldHotKey(kCtrlAlt, kKeys.at(static_cast<std::size_t>(id)));
    RunUntilQuiet();
    os_.ReleaseKeys();
    return taken;
}

void WholeSystem::ChooseInPreview(int desk) {
    const int on = previewOn_;
    ActOn(on);
    pilots_[Index(on)]->pilot->RequestSwitch(desk);
}

void WholeSystem::FindInFinder(int desk) {
    const int on = finderOn_;
    ActOn(on);
    companion::WindowFinder finder(companion::AllUserWindows(os_));
    finder.SetQuery(TextFromUtf8(TitleOn(desk)));
    finderOn_ = 0;  // Enter closes it
    pilots_[Index(on)]->pilot->ShowFound(*finder.ChosenWindow());
}

void WholeSystem::TrayMenu(int desk) {
    const int shown = InputDesk();
    ActOn(shown);
    heralds_[Index(shown)]->herald->Command(static_cast<companion::TrayCommand>(desk));
}

void WholeSystem::TrayWheel(bool next) {
    const int shown = InputDesk();
    ActOn(shown);
    heralds_[Index(shown)]->herald->ShowInOrder(next);
}

int WholeSystem::Ctl(const std::vector<std::string>& args) {
    ActOn(InputDesk());
    ctl::StringOutput out, err;
    return ctl::Ctl(os_, out, err).Run(args);
}

void WholeSystem::CommandToController(int desk) {
    EventNames names;
    names.InitEventNames();
    (void)os_.SendCopyData(
        controller_->hWnd(),
        os_.WideCharToMultiByte(names.EventName(SwitchCommand(static_cast<std::int16_t>(desk)))));
}

void WholeSystem::BehindOurBack(int desk) {
    os_.ShowDesktopInOtherProcess(DeskName(desk));
}

int WholeSystem::InputDesk() {
    return companion::DesktopNumberOf(os_.InputDesktopName());
}

}  // namespace zk::testing
