#include "system/whole_system.h"

#include <stdexcept>
#include <utility>

#include "shared/window_finder.h"
#include "signals/event_names.h"
#include "signals/protocol.h"
#include "zelkovactl/ctl.h"

namespace zk::testing {
namespace {

const Text kFolder = u"C:\\Program Files\\Zelkova2";
constexpr std::uint32_t kCtrlAlt = 3;
// The default combinations' keys, by hotkey id.
constexpr std::array<std::uint32_t, 10> kKeys = {0,    0x61, 0x62, 0x63, 0x64,
                                                 0x08, 0x6B, 0x20, 0x27, 0x25};

WholeSystem* g_system = nullptr;

Text DeskName(int desk) {
    return kDesktopNames[static_cast<std::size_t>(desk - 1)];
}

}  // namespace

struct WholeSystem::PilotHost final : companion::Pilot::Shell {
    explicit PilotHost(int d) : desk(d) {}
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

    int desk;
    Hwnd window = nullptr;
    std::unique_ptr<companion::Pilot> pilot;
    bool running = true;
};

struct WholeSystem::HeraldHost final : companion::Herald::Shell {
    explicit HeraldHost(int d) : desk(d) {}
    void ShowBanner(const Text&) override {}
    void Arrived() override {}
    void TrayChanged() override {}
    std::optional<bool> Ask(const Text&) override { return std::nullopt; }
    void Tell(const Text&) override {}
    Hwnd HotKeyWindow() override { return window; }

    int desk;
    Hwnd window = nullptr;
    std::unique_ptr<companion::Herald> herald;
    bool running = true;
};

Lresult ZK_CALLBACK WholeSystem::PilotProcedure(Hwnd window, std::uint32_t message, Wparam wParam,
                                                Lparam) {
    for (auto& host : g_system->pilots_) {
        if (!host || host->window != window || !host->pilot) continue;
        if (message == WmHotKey) host->pilot->HotKey(static_cast<int>(wParam));
        if (message == WmTimer) host->pilot->TimerFired(wParam);
    }
    return 0;
}

Lresult ZK_CALLBACK WholeSystem::HeraldProcedure(Hwnd window, std::uint32_t message, Wparam wParam,
                                                 Lparam) {
    for (auto& host : g_system->heralds_) {
        if (host && host->window == window && host->herald && message == WmHotKey)
            host->herald->HotKey(static_cast<int>(wParam));
    }
    return 0;
}

WholeSystem::WholeSystem(sim::HotKeyScope scope) : scope_(scope) {
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
    (void)os_.RegisterClassW(u"Pilot", &PilotProcedure, os_.GetModuleHandleW());
    (void)os_.RegisterClassW(u"Herald", &HeraldProcedure, os_.GetModuleHandleW());
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        StartPilot(desk);
        StartHerald(desk);
        userWindows_[static_cast<std::size_t>(desk - 1)] = os_.CreateWindowInOtherProcess(
            TextFromUtf8(TitleOn(desk)), nullptr, sim::kOtherProcessId, DeskName(desk), WsVisible);
    }
    ActOn(1);
    bridge_ = std::make_unique<companion::Bridge>(os_, *controllerProcess_);
    os_.session().othersRun = [this] { RunUntilQuiet(); };
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

void WholeSystem::StartPilot(int desk) {
    auto& host = pilots_[static_cast<std::size_t>(desk - 1)];
    ActOn(desk);
    if (!host) {
        host = std::make_unique<PilotHost>(desk);
        host->window =
            os_.CreateWindowExW(0, u"Pilot", u"pilot", 0, nullptr, os_.GetModuleHandleW());
    }
    host->pilot.reset();
    host->pilot =
        std::make_unique<companion::Pilot>(os_, desk, *controllerProcess_, host->window, *host);
    host->running = true;
}

void WholeSystem::StartHerald(int desk) {
    auto& host = heralds_[static_cast<std::size_t>(desk - 1)];
    ActOn(desk);
    if (!host) {
        host = std::make_unique<HeraldHost>(desk);
        host->window =
            os_.CreateWindowExW(0, u"Herald", u"herald", 0, nullptr, os_.GetModuleHandleW());
    }
    host->herald.reset();
    host->herald = std::make_unique<companion::Herald>(os_, desk, *controllerProcess_, *host);
    host->running = true;
}

// One round: the thread's messages, then each program's wait, as its own loop would take them.
bool WholeSystem::RunOnce() {
    bool busy = false;
    Msg message;
    while (os_.PeekMessageW(message)) {
        busy = true;
        int desk = 1;
        for (const auto& host : pilots_)
            if (host && host->window == message.hwnd) desk = host->desk;
        for (const auto& host : heralds_)
            if (host && host->window == message.hwnd) desk = host->desk;
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
    for (auto& host : pilots_) {
        if (!host->running) continue;
        ActOn(host->desk);
        host->running =
            wake(host->pilot->Set(), [&](companion::Wake w) { return host->pilot->Woken(w); });
    }
    for (auto& host : heralds_) {
        if (!host->running) continue;
        ActOn(host->desk);
        host->running =
            wake(host->herald->Set(), [&](companion::Wake w) { return host->herald->Woken(w); });
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
    os_.journal().Clear();
}

void WholeSystem::Settle() {
    RunUntilQuiet();
    for (const std::uint64_t step : {20, 80, 300, 600}) {
        os_.AdvanceTime(step);
        RunUntilQuiet();
    }
}

bool WholeSystem::Press(int id) {
    ActOn(InputDesk());
    // Held as a hand holds it: the programs run while the keys are down.
    const bool taken = os_.HoldHotKey(kCtrlAlt, kKeys.at(static_cast<std::size_t>(id)));
    RunUntilQuiet();
    os_.ReleaseKeys();
    return taken;
}

void WholeSystem::ChooseInPreview(int desk) {
    const int on = previewOn_;
    if (on == 0) return;
    ActOn(on);
    pilots_[static_cast<std::size_t>(on - 1)]->pilot->RequestSwitch(desk);
}

void WholeSystem::FindInFinder(int desk) {
    const int on = finderOn_;
    if (on == 0) return;
    ActOn(on);
    companion::WindowFinder finder(companion::AllUserWindows(os_));
    finder.SetQuery(TextFromUtf8(TitleOn(desk)));
    if (const companion::FoundWindow* found = finder.ChosenWindow()) {
        finderOn_ = 0;  // Enter closes it
        pilots_[static_cast<std::size_t>(on - 1)]->pilot->ShowFound(*found);
    }
}

void WholeSystem::TrayMenu(int desk) {
    const int shown = InputDesk();
    ActOn(shown);
    heralds_[static_cast<std::size_t>(shown - 1)]->herald->Command(
        static_cast<companion::TrayCommand>(desk));
}

void WholeSystem::TrayWheel(bool next) {
    const int shown = InputDesk();
    ActOn(shown);
    heralds_[static_cast<std::size_t>(shown - 1)]->herald->ShowInOrder(next);
}

int WholeSystem::Ctl(const std::vector<std::string>& args) {
    ActOn(InputDesk());
    ctl::StringOutput out, err;
    return ctl::Ctl(os_, out, err).Run(args);
}

void WholeSystem::CommandToController(int desk) {
    EventNames names;
    names.InitEventNames();
    const Ansi text =
        os_.WideCharToMultiByte(names.EventName(SwitchCommand(static_cast<std::int16_t>(desk))));
    (void)os_.SendCopyData(controller_->hWnd(), text);
}

void WholeSystem::BehindOurBack(int desk) {
    os_.ShowDesktopInOtherProcess(DeskName(desk));
}

void WholeSystem::RestartPilot(int desk) {
    StartPilot(desk);
}

void WholeSystem::RestartHerald(int desk) {
    StartHerald(desk);
}

int WholeSystem::InputDesk() {
    const Text input = os_.InputDesktopName();
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        if (sim::SameName(input, DeskName(desk))) return desk;
    }
    return 0;
}

}  // namespace zk::testing
