#include "resident/controller_link.h"

#include "signals/protocol.h"

namespace zk::companion {
namespace {

// Long enough for a controller that is busy switching; a hung one is not waited for.
constexpr std::uint32_t kSendTimeout = 5000;

}  // namespace

bool IsControllerWindow(WindowApi& os, Hwnd window) {
    return os.GetWindowTextW(window) == kControllerCaption &&
           os.GetPropW(window, kWindowMark) == HandleFrom<Handle>(1);
}

ControllerLink::ControllerLink(WindowApi& windows, TextApi& text, std::uint32_t controllerId)
    : os_(windows), controllerId_(controllerId) {
    EventNames names;
    names.InitEventNames();
    for (std::size_t i = 0; i < commands_.size(); ++i) {
        commands_[i] = text.WideCharToMultiByte(
            names.EventName(static_cast<std::int16_t>(kFirstSwitchCommand + i)));
    }
}

Hwnd ControllerLink::Window() {
    if (window_ != nullptr && os_.IsWindow(window_)) return window_;
    window_ = nullptr;
    for (const Hwnd candidate : os_.EnumWindows()) {
        std::uint32_t processId = 0;
        (void)os_.GetWindowThreadProcessId(candidate, &processId);
        if (processId == controllerId_ && IsControllerWindow(os_, candidate)) {
            window_ = candidate;
            break;
        }
    }
    return window_;
}

bool ControllerLink::Send(std::int16_t index) {
    if (index < kFirstSwitchCommand || index > kShutdownCommand) return false;
    const Hwnd window = Window();
    if (window == nullptr) return false;
    // The command text without a terminating zero.
    const Ansi& text = commands_[static_cast<std::size_t>(index - kFirstSwitchCommand)];
    const CopyDataStruct data{0, static_cast<std::uint32_t>(text.size()), text.data()};
    Lresult result = 0;
    return os_.SendMessageTimeoutW(window, WmCopyData, 0, reinterpret_cast<Lparam>(&data),
                                   SmtoAbortIfHung, kSendTimeout, result);
}

}  // namespace zk::companion
