#include "shared/controller_link.h"

#include <algorithm>

#include "vocabulary/programs.h"
#include "vocabulary/protocol.h"

namespace zk::companion {
namespace {

// Long enough for a controller that is busy switching; a hung one is not waited for.
constexpr std::uint32_t kSendTimeout = 5000;
constexpr std::uint32_t kSnapshotAgainAfter = 50;
constexpr int kSnapshotAttempts = 3;

}  // namespace

std::optional<std::vector<std::uint32_t>> TryControllerProcessIds(KernelApi& os) {
    for (int attempt = 0; attempt < kSnapshotAttempts; ++attempt) {
        if (attempt > 0) os.Sleep(kSnapshotAgainAfter);
        const auto entries = os.CreateToolhelp32Snapshot();
        const std::uint32_t self = os.GetCurrentProcessId();
        if (std::none_of(entries.begin(), entries.end(),
                         [&](const ProcessEntry& entry) { return entry.processId == self; })) {
            continue;
        }
        std::vector<std::uint32_t> ids;
        for (const ProcessEntry& entry : entries) {
            if (IsProgramFile(entry.exeFile, Program::Controller)) ids.push_back(entry.processId);
        }
        return ids;
    }
    return std::nullopt;
}

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
