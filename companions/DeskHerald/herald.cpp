#include "DeskHerald/herald.h"

#include "DeskHerald/startup_programs.h"
#include "desktop/companions.h"
#include "diagnostics/err_log.h"
#include "diagnostics/win_api_error.h"
#include "platform/module_path.h"
#include "resident/leave_no_empty_desktop.h"
#include "shared/companion_hotkeys.h"
#include "shared/companion_settings.h"
#include "shared/hotkeys_in_force.h"
#include "shared/news.h"
#include "shared/window_finder.h"
#include "vocabulary/protocol.h"

namespace zk::companion {
namespace {

// What waits for a moment: the news look, and the banner's greeting.
constexpr int kLaterNews = 0, kLaterGreet = 1;

}  // namespace

Herald::Herald(Os& os, int desk, ControllerProcess& controller, Shell& shell)
    : os_(os),
      desk_(desk),
      shell_(shell),
      registry_(os),
      signals_(os, os),
      state_(os, controller.Id()),
      shown_(os, state_),
      shower_(os),
      guard_(os, shower_, state_, shown_),
      settings_(os),
      standIn_(os, registry_, signals_, state_, desk),
      news_(os, registry_, state_, signals_, desk) {
    const auto n = static_cast<std::int16_t>(desk);
    if (const Handle shown = signals_.Event(SwitcherSignal(KindUpdate, n, n))) {
        set_.Add(shown, {kShown, desk});
    }
    set_.Add(controller.Process(), {kControllerEnded, 0});
    if (settings_.Event() != nullptr) set_.Add(settings_.Event(), {kSettingsChanged, 0});
    if (const Handle news = signals_.OwnEvent(SharedObject::News, controller.Id(), desk)) {
        set_.Add(news, {kNewsElsewhere, 0});
    }
    pilot_.emplace(os, state_, signals_, controller, Program::Pilot, desk, set_, kWatchPilot);
    if (desk == 1) {
        bridge_.emplace(os, state_, signals_, controller, Program::Herald, kControllerBlock, set_,
                        kWatchBridge);
    }
    AnnounceSelf(os, state_, signals_, HeraldSlot(desk));
}

void Herald::Start() {
    shell_.WatchWindows(NewsShown(registry_));
    if (desk_ >= 2) (void)StartStartupPrograms(os_, registry_, desk_);
    NoteMissingPrograms();
}

// The switcher's program missing means no hotkeys and no preview here: the herald of desktop 1
// logs it once, and every tray shows it.
void Herald::NoteMissingPrograms() {
    if (os_.GetFileAttributesW(ProgramPath(os_, Program::Pilot)) != InvalidFileAttributes) return;
    std::uint32_t& missing = state_.Block().missing;
    missing |= kPilotMissing;
    if (desk_ != 1 || (missing & kMissingLogged) != 0) return;
    missing |= kMissingLogged;
    ErrLog log(os_);
    log.LogError(LogMessage(ProgramFileName(Program::Pilot) +
                            (u" is missing from " + ExecutableFolder(os_)) +
                            u": the hotkeys and the preview do not work."));
    log.StartErrorReporter();
}

void Herald::Run() {
    RunWaitLoop(os_, set_, [this](const Wake& wake) { return Woken(wake); });
}

bool Herald::Woken(const Wake& wake) {
    switch (wake.kind) {
        case kShown:
            news_.Seen();
            shell_.Arrived();
            if (BannerShown(registry_)) Greet();
            break;
        case kControllerEnded:
            (void)LeaveNoEmptyDesktop(os_, desk_);
            return false;
        case kSettingsChanged:  // a rename, or a hotkey stored as no key
            (void)settings_.Renew();
            shell_.WatchWindows(NewsShown(registry_));
            news_.Look(WentHere());
            shell_.TrayChanged();
            break;
        case kNewsElsewhere:
            shell_.TrayChanged();
            break;
        case kWatchPilot:  // a key typed while the switcher starts again is not lost
            if (wake.value == 1) {
                standIn_.SwitcherEnded(shell_.HotKeyWindow());
                // One that ended between showing a desktop and sending its command left the
                // controller's record behind the screen.
                (void)shown_.InStep(signals_);
            }
            pilot_->Woken(wake);
            if (wake.value == 0) standIn_.SwitcherBack();
            break;
        default:
            if (bridge_) bridge_->Woken(wake);
            break;
    }
    if (state_.Block().missing != missingShown_) {
        missingShown_ = state_.Block().missing;
        shell_.TrayChanged();
    }
    return true;
}

void Herald::WindowsChanged(Hwnd flashed) {
    if (flashed != nullptr) news_.Flashed(flashed);
    set_.Later(
        os_, NewsWatch::kSettle,
        [this] {
            news_.Look(WentHere());
            set_.Later(
                os_, NewsWatch::kLookAgain, [this] { news_.Look(WentHere()); }, kLaterNews);
        },
        kLaterNews);
}

// Whether the user went to this desktop: the record, not the input desktop, which under Wine 10
// follows a new window's focus to its desktop (Windows leaves the input where it is).
bool Herald::WentHere() {
    return state_.Current() == desk_;
}

// The banner greets the arrival at this desktop, and is not shown once the user has moved on:
// under Wine 10 a window shown on a desktop just left takes the input back there.
void Herald::Greet() {
    OnceShown(
        os_, set_, state_, shown_, desk_,
        [this] { shell_.ShowBanner(DesktopName(registry_, desk_)); }, kLaterGreet,
        os_.GetTickCount64());
}

Text Herald::Tooltip() {
    return TrayTooltip(desk_, DesktopName(registry_, desk_), state_.Block().missing, News(),
                       HotKeysNamingNoKey(os_, registry_));
}

std::vector<TrayMenuItem> Herald::Menu() {
    std::array<Text, kDesktopCount> names;
    for (int d = 1; d <= kDesktopCount; ++d)
        names[d - 1] = DesktopName(registry_, d);
    return TrayMenu(names, desk_, News());
}

std::vector<TrayNews> Herald::News() {
    std::vector<TrayNews> news;
    for (const NewsWindow& window : NewsBesides(os_, state_.Block(), desk_))
        news.push_back({DesktopName(registry_, window.desk), window.title});
    return news;
}

// The window in front on its desktop: that desktop's switcher brings it forward once it is shown.
void Herald::GoToNews(std::size_t position) {
    const std::vector<NewsWindow> news = NewsBesides(os_, state_.Block(), desk_);
    if (position >= news.size()) return;
    const FoundWindow found{news[position].desk, news[position].window, news[position].title, {}};
    ShowFoundWindow(os_, signals_, state_, desk_, found, [this](int desk) {
        shown_.BringInStep(desk_, signals_);
        (void)signals_.Raise(SwitchCommand(static_cast<std::int16_t>(desk)));
    });
}

// The preview opens in the switcher and takes the keyboard there: the herald, which took the
// click, passes on its right to bring a window to the front.
void Herald::Preview() {
    (void)ShowPreview(os_, signals_, state_.Block(), desk_);
}

void Herald::StartProgram(Program program) {
    const Text path = ProgramPath(os_, program);
    if (!TryCreateProcess(os_, path, u" ", false, {})) {
        shell_.Tell(path + u" could not be started: " + ApiErrorText(os_, os_.GetLastError()));
    }
}

void Herald::ShowInOrder(bool next) {
    const int id =
        HotKeyIdOf(next ? HotKeyAction::ShowNextDesktop : HotKeyAction::ShowPriorDesktop);
    if (const int target = DesktopInOrder(id, desk_)) {
        shown_.BringInStep(desk_, signals_);  // its tray icon is on the desktop shown
        (void)signals_.Raise(SwitchCommand(static_cast<std::int16_t>(target)));
    }
}

void Herald::Command(TrayCommand command) {
    const int value = static_cast<int>(command);
    if (value >= static_cast<int>(TrayCommand::GoToNews)) {
        return GoToNews(static_cast<std::size_t>(value - static_cast<int>(TrayCommand::GoToNews)));
    }
    if (IsDesktopNumber(value)) {
        shown_.BringInStep(desk_, signals_);
        (void)signals_.Raise(SwitchCommand(static_cast<std::int16_t>(value)));
        return;
    }
    switch (command) {
        case TrayCommand::Preview:
            Preview();
            break;
        case TrayCommand::Settings:
            StartProgram(Program::Settings);
            break;
        case TrayCommand::ErrorLog:
            StartProgram(Program::Reporter);
            break;
        case TrayCommand::Exit: {
            const Text question = ExitQuestion(desk_);
            if (!question.empty()) {
                const auto showFirst = shell_.Ask(question);
                if (!showFirst) return;
                // The bridge takes the lower signal first: desktop 1 is shown before the end.
                if (*showFirst) (void)signals_.Raise(SwitchCommand(1));
            }
            (void)signals_.Raise(kShutdownCommand);
            break;
        }
        default:
            break;
    }
}

}  // namespace zk::companion
