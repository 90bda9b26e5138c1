#include "DeskPilot/pilot.h"

#include <algorithm>
#include <utility>

#include "desktop/companions.h"
#include "diagnostics/err_log.h"
#include "platform/handles.h"
#include "platform/module_path.h"
#include "resident/hotkey_stand_in.h"
#include "resident/leave_no_empty_desktop.h"
#include "resident/switch_notice.h"
#include "vocabulary/protocol.h"

namespace zk::companion {

Pilot::Pilot(Os& os, int desk, ControllerProcess& controller, Hwnd window, Shell& shell)
    : os_(os),
      desk_(desk),
      ownDesktop_(os),
      shower_(os),
      window_(window),
      shell_(shell),
      registry_(os),
      signals_(os, os),
      state_(os, controller.Id()),
      shown_(os, state_),
      hotkeys_(os, os, registry_, nullptr, fields_, window, ModNoRepeat),
      companionHotKeys_(os, registry_, window),
      keyRepeat_(os, os, state_),
      guard_(os, shower_, state_, shown_) {
    const auto n = static_cast<std::int16_t>(desk);
    for (std::int16_t target = 1; target <= kDesktopCount; ++target) {
        if (const Handle e = signals_.Event(SwitcherSignal(KindSwitchTo, n, target))) {
            set_.Add(e, {kSwitchTo, target});
        }
    }
    for (const std::int32_t kind : {KindShowPreview, KindShowPopup}) {
        if (const Handle e = signals_.Event(SwitcherSignal(kind, n))) set_.Add(e, {kPreview, 0});
    }
    if (const Handle e = signals_.Event(SwitcherSignal(KindReadReg, n))) set_.Add(e, {kReadReg, 0});
    if (const Handle e = signals_.Event(SwitcherSignal(KindShutdown, n))) {
        set_.Add(e, {kShutdown, 0});
    }
    if (const Handle e = signals_.OwnEvent(SharedObject::Shown, controller.Id(), desk))
        set_.Add(e, {kShown, 0});
    if (const Handle e = signals_.OwnEvent(SharedObject::Finder, controller.Id(), desk)) {
        set_.Add(e, {kFinder, 0});
    }
    if (const Handle e = signals_.OwnEvent(SharedObject::BringForward, controller.Id(), desk)) {
        set_.Add(e, {kBringForward, 0});
    }
    if (const Handle e = signals_.OwnEvent(SharedObject::WhichKey, controller.Id(), desk)) {
        set_.Add(e, {kWhichKey, 0});
    }
    set_.Add(controller.Process(), {kControllerEnded, 0});
    if (desk != 1) {
        herald_.emplace(os, state_, signals_, controller, Program::Herald, desk, set_,
                        kWatchHerald);
    }
    // Take the switch commands' events and the desktops now, so that the path of a switch opens
    // nothing.
    for (std::int16_t target = 1; target <= kDesktopCount; ++target)
        (void)signals_.Event(SwitchCommand(target));
    shower_.OpenAll();
    if (desk == 1) {
        direct_.emplace(os, os, controller.Id());
        (void)direct_->Window();  // found now, not on the way of the first switch
    }

    // Announced first: a herald that holds the hotkeys while this switcher starts lets them go.
    AnnounceSelf(os, state_, signals_, PilotSlot(desk));
    WaitForStandInToLetGo(os, signals_, state_, desk);
    hotkeys_.LoadHotKeys();
    hotkeys_.RegisterHotKeys();  // a combination the controller holds is left to it, silently
    ReportRefusedHotKeys();
    if (OwnHotKeys()) state_.Block().hotKeysPerDesktop = 1;
    companionHotKeys_.Register();
    (void)os.SetTimer(window_, kCaptureSoon, kMoment);
    if (desk == 1) NoteMissingHerald();
}

// Without the heralds' program there is no bridge, no banner and no tray: nothing switches, and
// the switcher of desktop 1 is the one left to say so.
void Pilot::NoteMissingHerald() {
    if (os_.GetFileAttributesW(ProgramPath(os_, Program::Herald)) != InvalidFileAttributes) return;
    std::uint32_t& missing = state_.Block().missing;
    missing |= kHeraldMissing;
    if ((missing & kMissingLogged) != 0) return;
    missing |= kMissingLogged;
    ErrLog log(os_);
    log.LogError(LogMessage(ProgramFileName(Program::Herald) +
                            (u" is missing from " + ExecutableFolder(os_)) +
                            u": Zelkova2 cannot switch desktops."));
    log.StartErrorReporter();
}

// Where the system lets a desktop's switcher hold hotkeys (some of its registrations succeed), one
// that is refused is held by another program on this desktop, and is logged as the controller
// logs its own. Where none succeeds, the controller holds them for the whole session.
void Pilot::ReportRefusedHotKeys() {
    std::vector<int> refused;
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (fields_.HotKeyOk[id] == 0) refused.push_back(id);
    }
    if (refused.empty() || static_cast<int>(refused.size()) == kControllerHotKeyCount) return;
    ErrLog log(os_);
    for (const int id : refused)
        log.LogError(hotkeys_.FailureText(kRegisterFailed, id));
    log.StartErrorReporter();
}

Pilot::~Pilot() {
    for (int id = 1; id <= kControllerHotKeyCount; ++id) {
        if (fields_.HotKeyOk[id] != 0) (void)os_.UnregisterHotKey(window_, id);
    }
}

void Pilot::Run() {
    RunWaitLoop(os_, set_, [this](const Wake& wake) { return Woken(wake); });
}

bool Pilot::Woken(const Wake& wake) {
    switch (wake.kind) {
        case kSwitchTo: {
            // The previous desktop's key sends this only for the desktop shown before.
            const bool maybePrevious = wake.value == state_.Previous();
            if (const int shown = ControllersKeyShown(); shown != desk_ && maybePrevious) {
                // The controller's record was behind the screen, and its signal for its
                // PreviousDesk came from that desktop's key or from "previous": a desktop not
                // shown sees no key state (GetAsyncKeyState, Remarks), the one shown does.
                state_.Block().keyQuestion = static_cast<std::int16_t>(wake.value);
                (void)signals_.RaiseOwn(SharedObject::WhichKey, state_.ControllerId(), shown);
                return true;
            }
            const int showKey = HotKeyIdOf(HotKeyAction::ShowDesktop, wake.value);
            if (!(maybePrevious ? RepeatOf({showKey, HotKeyIdOf(HotKeyAction::ShowPreviousDesktop)})
                                : RepeatOf({showKey}))) {
                RequestSwitch(wake.value);
            }
            return true;
        }
        case kPreview: {
            // Where the controller's record was behind, the preview opens where the user is, and
            // that desktop's switcher tells a held key from a new press.
            if (const int shown = InStep(); shown != desk_) {
                (void)ShowPreview(os_, signals_, state_.Block(), shown);
            } else if (!RepeatOf({HotKeyIdOf(HotKeyAction::ShowPreview)})) {
                OpenPreview();
            }
            return true;
        }
        case kReadReg:
            hotkeys_.ReloadHotKeys();
            companionHotKeys_.Reload();
            return true;
        case kFinder:
            shell_.ShowFinder();
            return true;
        case kBringForward:
            (void)BringForwardIfAsked(os_, state_, desk_, shown_.Now());
            return true;
        case kShown:  // what was put away here goes, and the finder's choice comes forward
            OnceShown(
                os_, set_, state_, shown_, desk_,
                [this] {
                    shell_.HidePutAway();
                    (void)BringForwardIfAsked(os_, state_, desk_, desk_);
                },
                0, os_.GetTickCount64());
            (void)os_.SetTimer(window_, kCaptureSoon, kMoment);
            return true;
        case kWhichKey:
            AnswerKeyQuestion();
            return true;
        case kWatchHerald:
            herald_->Woken(wake);
            return true;
        default:  // shut down, or the controller ended
            (void)LeaveNoEmptyDesktop(os_, desk_);
            return false;
    }
}

// What the controller's hotkey would have done for this desktop's block.
void Pilot::HotKey(int id) {
    if (IsCompanionHotKeyId(id)) {
        CompanionHotKey(id);
        return;
    }
    BringInStep(desk_);          // the key was typed here
    if (RepeatOf({id})) return;  // MOD_NOREPEAT asks the system for this; Wine does not heed it
    const auto request = HotKeyRequestOf(id, static_cast<std::int16_t>(state_.Previous()));
    if (!request) return;
    if (request->kind == KindShowPreview) {
        OpenPreview();
    } else {
        RequestSwitch(request->target);
    }
}

// Where hotkeys belong to the session, the first switcher holds the companions' ones for every
// desktop: it acts for the desktop shown, which the key then says nothing about.
void Pilot::CompanionHotKey(int id) {
    const bool typedHere = state_.Block().hotKeysPerDesktop != 0;
    if (typedHere) BringInStep(desk_);
    const std::int16_t key = companionHotKeys_.HeldKey(id);
    if (keyRepeat_.IsRepeat({&key, 1})) return;
    const int shown = typedHere ? desk_ : InStep();
    if (HotKeySettingOf(id).action == HotKeyAction::FindWindow) {
        OpenFinderOn(shown);
    } else if (const int target = DesktopInOrder(id, shown)) {
        RequestSwitch(target);
    }
}

// The finder opens where the user is; the switcher there takes the keyboard with the right that
// the key gave this one.
void Pilot::OpenFinderOn(int shown) {
    if (shown == desk_) {
        shell_.ShowFinder();
        return;
    }
    if (const std::uint32_t switcher = state_.Block().companions[PilotSlot(shown)])
        (void)os_.AllowSetForegroundWindow(switcher);
    (void)signals_.RaiseOwn(SharedObject::Finder, state_.ControllerId(), shown);
}

// Another switcher's signal, whose key it could not see: "previous" while that key is held, or
// where neither is any longer and the other key would only show this desktop again.
void Pilot::AnswerKeyQuestion() {
    const int target = std::exchange(state_.Block().keyQuestion, std::int16_t{0});
    if (!IsDesktopNumber(target)) return;
    const auto held = [&](HotKeyAction action, int desk) {
        const std::int16_t key = fields_.HotKeyCode[HotKeyIdOf(action, desk)];
        return key != 0 && os_.GetAsyncKeyState(key) < 0;
    };
    const bool previous = held(HotKeyAction::ShowPreviousDesktop, 0) ||
                          (!held(HotKeyAction::ShowDesktop, target) && target == desk_);
    RequestSwitch(previous && state_.Previous() != 0 ? state_.Previous() : target);
}

void Pilot::ShowFound(const FoundWindow& found) {
    ShowFoundWindow(os_, signals_, state_, InStep(), found,
                    [this](int desk) { RequestSwitch(desk); });
}

// Whether the signal or key that arrived is a held key repeating; `ids` are the hotkeys that may
// have sent it (the controller's signal does not say which).
bool Pilot::RepeatOf(std::initializer_list<int> ids) {
    std::vector<std::int16_t> keys;
    for (const int id : ids) {
        if (IsControllerHotKeyId(id)) keys.push_back(fields_.HotKeyCode[id]);
    }
    return keyRepeat_.IsRepeat(keys);
}

int Pilot::InStep() {
    return shown_.InStep(signals_, [this](int desk) { return SendNow(desk); });
}

bool Pilot::OwnHotKeys() const {
    return std::any_of(fields_.HotKeyOk.begin(), fields_.HotKeyOk.end(),
                       [](std::int32_t ok) { return ok != 0; });
}

// Where each desktop has its hotkeys, the controller's were typed on desktop 1: known without
// asking the system, on the way of the switch (three calls, under Wine 10 about 0.3 ms).
int Pilot::ControllersKeyShown() {
    if (state_.Block().hotKeysPerDesktop == 0) return InStep();
    BringInStep(1);
    return 1;
}

void Pilot::BringInStep(int desk) {
    shown_.BringInStep(desk, signals_, [this](int d) { return SendNow(d); });
}

// On the controller's own desktop a command goes straight to its window, in order with the ones
// sent after it; elsewhere the bridge takes it.
bool Pilot::SendNow(int desk) {
    return direct_ && direct_->Send(SwitchCommand(static_cast<std::int16_t>(desk)));
}

// The preview and the finder go first, out of sight, and the user sees the target before the
// command has left; the controller, told afterwards, keeps its record and switches again (a no-op)
// or in the switcher's place.
void Pilot::RequestSwitch(int target) {
    if (target == desk_) {
        shell_.HidePreview();
    } else {
        shell_.PutAway();
    }
    (void)shower_.Show(target);
    const auto command = SwitchCommand(static_cast<std::int16_t>(target));
    const int wasShown = state_.Current();
    if (direct_ && direct_->Send(command)) {
        // What the bridge does after the commands it sends.
        NoteSwitch(signals_, set_, os_, state_.ControllerId(), target, wasShown);
    } else {
        (void)signals_.Raise(command);
    }
    if (target != desk_ && guard_.Watch(target))
        (void)os_.SetTimer(window_, kGuardSwitch, SwitchGuard::kLookEvery);
}

// The picture is taken before the preview opens, and none while it is open: the preview never
// shows itself.
void Pilot::OpenPreview() {
    TakePicture();
    shell_.ShowPreview();
}

void Pilot::TakePicture() {
    if (!ownDesktop_.Shown() || shell_.PreviewShown()) return;
    shell_.Capture();
    lastPicture_ = os_.GetTickCount64();
}

void Pilot::WindowsChanged() {
    if (pictureDue_ || !ownDesktop_.Shown()) return;
    const std::uint64_t due = lastPicture_ + kHalfMinute, now = os_.GetTickCount64();
    const auto wait = static_cast<std::uint32_t>(due > now ? due - now : 0);
    pictureDue_ = os_.SetTimer(window_, kCaptureAgain, std::max(kMoment, wait)) != 0;
}

void Pilot::SessionEnding() {
    if (desk_ == 1) RequestSwitch(1);
}

void Pilot::TimerFired(std::uintptr_t id) {
    if (id == kGuardSwitch && !guard_.Look()) (void)os_.KillTimer(window_, kGuardSwitch);
    if (id != kCaptureSoon && id != kCaptureAgain) return;
    (void)os_.KillTimer(window_, id);
    if (id == kCaptureAgain) pictureDue_ = false;
    TakePicture();
}

}  // namespace zk::companion
