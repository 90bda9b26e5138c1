#include "resident/hotkey_stand_in.h"

#include <utility>

#include "vocabulary/protocol.h"

namespace zk::companion {
namespace {

constexpr std::uint32_t kLetGoWithin = 1000;

std::uint32_t DeskBit(int desk) {
    return 1u << desk;
}

}  // namespace

HotKeyStandIn::HotKeyStandIn(Os& os, Registry& registry, Signals& signals, SharedState& state,
                             int desk)
    : os_(os),
      registry_(registry),
      signals_(signals),
      state_(state),
      shown_(os, state),
      desk_(desk),
      keyRepeat_(os, os, state),
      shower_(os) {}

HotKeyStandIn::~HotKeyStandIn() {
    LetGo();
}

// Where the controller holds the hotkeys for the whole session, none is had here, silently.
void HotKeyStandIn::SwitcherEnded(Hwnd window) {
    if (hotkeys_ || window == nullptr) return;
    hotkeys_.emplace(os_, os_, registry_, nullptr, fields_, window, ModNoRepeat);
    hotkeys_->LoadHotKeys();
    hotkeys_->RegisterHotKeys();
    bool any = false;
    for (int id = 1; id <= kControllerHotKeyCount; ++id)
        any = any || fields_.HotKeyOk[id] != 0;
    if (any) {
        state_.Block().hotKeysStandIn |= DeskBit(desk_);
    } else {
        hotkeys_.reset();
    }
}

void HotKeyStandIn::SwitcherBack() {
    LetGo();
    if (std::exchange(previewAsked_, false)) {
        (void)ShowPreview(os_, signals_, state_.Block(), desk_);
    }
}

void HotKeyStandIn::LetGo() {
    if (!hotkeys_) return;
    hotkeys_->UnregisterHotKeys();
    hotkeys_.reset();
    state_.Block().hotKeysStandIn &= ~DeskBit(desk_);
    (void)signals_.RaiseOwn(SharedObject::LetGo, state_.ControllerId(), desk_);
}

// What the switcher would have done with the key; one that was queued before the hotkeys were let
// go counts too.
void HotKeyStandIn::HotKey(int id) {
    if (!IsControllerHotKeyId(id) || fields_.HotKeyCode[id] == 0) return;
    shown_.BringInStep(desk_, signals_);  // the key was typed here: this desktop is shown
    const std::int16_t key = fields_.HotKeyCode[id];
    if (keyRepeat_.IsRepeat({&key, 1})) return;
    const auto request = HotKeyRequestOf(id, static_cast<std::int16_t>(state_.Previous()));
    if (!request) return;
    if (request->kind == KindShowPreview) {
        previewAsked_ = true;
    } else {
        (void)shower_.Show(request->target);
        (void)signals_.Raise(SwitchCommand(request->target));
    }
}

void WaitForStandInToLetGo(KernelApi& os, Signals& signals, SharedState& state, int desk) {
    const Handle letGo = signals.OwnEvent(SharedObject::LetGo, state.ControllerId(), desk);
    // A signal left from an earlier handover ends the first wait early; the bit says.
    const std::uint64_t until = os.GetTickCount64() + kLetGoWithin;
    for (std::uint64_t now = os.GetTickCount64();
         letGo != nullptr && (state.Block().hotKeysStandIn & DeskBit(desk)) != 0 && now < until;
         now = os.GetTickCount64()) {
        if (os.WaitForSingleObject(letGo, static_cast<std::uint32_t>(until - now)) != WaitObject0)
            break;
    }
}

}  // namespace zk::companion
