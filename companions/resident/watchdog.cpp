#include "resident/watchdog.h"

#include "desktop/companions.h"
#include "diagnostics/win_api_error.h"

namespace zk::companion {
namespace {

// A companion that keeps dying is not started more often than this within a minute.
constexpr int kRestartsPerMinute = 5;
constexpr std::uint64_t kMinute = 60'000;

int SlotOf(Program program, int desk) {
    return program == Program::Pilot ? PilotSlot(desk) : HeraldSlot(desk);
}

// The desktop a companion runs on: the bridge runs beside the controller on desktop 1.
Text DesktopOf(int desk) {
    return kDesktopNames[desk == kControllerBlock ? 0 : desk - 1];
}

}  // namespace

void AnnounceSelf(KernelApi& os, SharedState& state, Signals& signals, int slot) {
    state.Block().companions[slot] = os.GetCurrentProcessId();
    (void)signals.RaiseOwn(SharedObject::Up, state.Block().controllerId, slot);
}

Watchdog::Watchdog(Os& os, SharedState& state, Signals& signals, ControllerProcess& controller,
                   Program program, int desk, WaitSet& set, int wakeKind)
    : os_(os),
      state_(state),
      controller_(controller),
      program_(program),
      desk_(desk),
      slot_(SlotOf(program, desk)),
      set_(set),
      wakeKind_(wakeKind) {
    const Handle up = signals.OwnEvent(SharedObject::Up, controller.Id(), slot_);
    if (up != nullptr) set_.Add(up, {wakeKind_, 0});
    Watch(state_.Block().companions[slot_]);
}

void Watchdog::Watch(std::uint32_t processId) {
    if (processId == 0 || processId == watched_) return;
    const Handle process = os_.OpenProcess(Synchronize, false, processId);
    if (process == nullptr) {
        // Gone before it was looked at (a slow start here): nobody else will start it again.
        if (processId == state_.Block().companions[slot_] && controller_.Running()) Restart();
        return;
    }
    watched_ = processId;
    process_ = UniqueKernelHandle(os_, process);
    set_.Replace({wakeKind_, 1}, process_.get());
}

void Watchdog::Woken(const Wake& wake) {
    if (wake.kind != wakeKind_) return;
    if (wake.value == 0) {
        Watch(state_.Block().companions[slot_]);
        return;
    }
    set_.Remove({wakeKind_, 1});
    process_.reset();
    watched_ = 0;
    if (controller_.Running()) Restart();
}

void Watchdog::Restart() {
    const std::uint64_t now = os_.GetTickCount64();
    if (now - firstRestart_ >= kMinute) {
        firstRestart_ = now;
        restarts_ = 0;
    }
    if (gaveUp_ || restarts_ >= kRestartsPerMinute) {
        if (!gaveUp_) {
            ErrLog(os_).LogError(LogMessage(ProgramFileName(program_) +
                                            (u" " + DecimalText(desk_)) +
                                            u" kept ending; it is not started again."));
        }
        gaveUp_ = true;
        return;
    }
    ++restarts_;
    StartupInfo si;
    si.lpDesktop = DesktopOf(desk_);
    si.lpTitle = si.lpDesktop;
    const Text path = ProgramPath(os_, program_);
    auto started =
        TryCreateProcess(os_, path, CompanionCommandLine(desk_, controller_.Id()), false, si);
    if (!started) {
        const std::uint32_t code = os_.GetLastError();
        if (code == ErrorFileNotFound || code == ErrorPathNotFound) {
            state_.Block().missing |= program_ == Program::Pilot ? kPilotMissing : kHeraldMissing;
        }
        ErrLog(os_).LogError(
            LogMessage(path + u" could not be started again: " + ApiErrorText(os_, code)));
        return;
    }
    watched_ = started->processId;
    process_ = std::move(started->process);
    set_.Replace({wakeKind_, 1}, process_.get());
}

}  // namespace zk::companion
