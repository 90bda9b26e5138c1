#include "platform/sim/sim_windows.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/sim/code_page_1252.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kErrorInvalidIndex = 1413;
constexpr std::uint32_t kErrorClassAlreadyExists = 1410;
constexpr std::uint32_t kErrorCannotFindWndClass = 1407;
constexpr std::uint32_t kErrorResourceNameNotFound = 1814;
constexpr std::uint32_t kWsVisible = 0x10000000;

constexpr std::uint32_t kImageIcon = 1;
constexpr std::uint32_t kLrShared = 0x8000;
const Hinstance kModuleHandle = HandleFrom<Hinstance>(0x140000000);

}  // namespace

SimWindows::SimWindows(Session& session) : session_(session) {
    session_.threadOwnsWindows = [this] {
        return std::any_of(windows_.begin(), windows_.end(),
                           [&](const auto& w) { return w.second.processId == session_.processId; });
    };
    session_.windowsOfDesktop = [this](int desktop) {
        std::vector<Hwnd> found;
        for (const auto& [value, w] : windows_) {
            if (w.desktop == desktop && w.owner == nullptr)
                found.push_back(HandleFrom<Hwnd>(value));
        }
        return found;
    };
    session_.onProcessEnd.push_back([this] {
        std::erase_if(windows_,
                      [&](const auto& w) { return w.second.processId == session_.processId; });
    });
}

const SimWindow* SimWindows::Find(Hwnd window) const {
    const auto it = windows_.find(HandleValue(window));
    return it == windows_.end() ? nullptr : &it->second;
}

SimWindow* SimWindows::FindOwn(Hwnd window) {
    const auto it = windows_.find(HandleValue(window));
    return it == windows_.end() ? nullptr : &it->second;
}

bool SimWindows::Missing(Hwnd window) {
    if (Find(window) != nullptr) return false;
    session_.last = ErrorInvalidWindowHandle;
    return true;
}

Lresult SimWindows::Deliver(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    const SimWindow* w = Find(window);
    if (w == nullptr || w->procedure == nullptr) return 0;
    const WndProc procedure = w->procedure;  // the record may go while the procedure runs
    return procedure(window, message, wParam, lParam);
}

bool SimWindows::SetPropA(Hwnd window, const Ansi& name, Handle data) {
    if (session_.Enter("SetPropA", Hex(window) + " " + name) || Missing(window)) return false;
    PutProp(window, DecodeCp1252(name), data);
    return true;
}

Handle SimWindows::GetPropW(Hwnd window, const Text& name) {
    if (session_.Enter("GetPropW", Utf8(name)) || Missing(window)) return nullptr;
    for (const auto& [n, d] : Find(window)->props) {
        if (SameName(n, name)) return d;
    }
    return nullptr;
}

bool SimWindows::SetPropW(Hwnd window, const Text& name, Handle data) {
    if (session_.Enter("SetPropW", Utf8(name) + " " + Hex(data)) || Missing(window)) return false;
    PutProp(window, name, data);
    return true;
}

void SimWindows::PutProp(Hwnd window, const Text& name, Handle data) {
    auto& props = FindOwn(window)->props;
    for (auto& [n, d] : props) {
        if (SameName(n, name)) {
            d = data;
            return;
        }
    }
    props.emplace_back(name, data);
}

Handle SimWindows::RemovePropW(Hwnd window, const Text& name) {
    if (session_.Enter("RemovePropW", Utf8(name)) || Missing(window)) return nullptr;
    auto& props = FindOwn(window)->props;
    for (auto it = props.begin(); it != props.end(); ++it) {
        if (SameName(it->first, name)) {
            const Handle data = it->second;
            props.erase(it);
            return data;
        }
    }
    return nullptr;
}

bool SimWindows::IsWindow(Hwnd window) {
    (void)session_.Enter("IsWindow", Hex(window));
    return Find(window) != nullptr;
}

// Shown by its program, as its style says: the simulated desktops are all visible.
bool SimWindows::IsWindowVisible(Hwnd window) {
    (void)session_.Enter("IsWindowVisible", Hex(window));
    const SimWindow* w = Find(window);
    return w != nullptr && (w->style & kWsVisible) != 0;
}

bool SimWindows::IsIconic(Hwnd window) {
    (void)session_.Enter("IsIconic", Hex(window));
    const SimWindow* w = Find(window);
    return w != nullptr && (w->style & WsMinimize) != 0;
}

bool SimWindows::ShowWindow(Hwnd window, int command) {
    if (session_.Enter("ShowWindow", Hex(window) + " " + std::to_string(command))) return false;
    auto it = windows_.find(HandleValue(window));
    if (it == windows_.end()) return false;
    const bool wasVisible = (it->second.style & kWsVisible) != 0;
    switch (command) {
        case 0:  // SW_HIDE
            it->second.style &= ~kWsVisible;
            break;
        case 6:  // SW_MINIMIZE
            it->second.style |= WsMinimize | kWsVisible;
            break;
        case 1:  // SW_SHOWNORMAL
        case 9:  // SW_RESTORE
            it->second.style &= ~WsMinimize;
            it->second.style |= kWsVisible;
            break;
        default:  // SW_SHOW and the rest
            it->second.style |= kWsVisible;
            break;
    }
    return wasVisible;
}

// SetForegroundWindow's page: a window of the input desktop, by a process that may.
bool SimWindows::SetForegroundWindow(Hwnd window) {
    if (session_.Enter("SetForegroundWindow", Hex(window))) return false;
    const SimWindow* w = Find(window);
    if (w == nullptr || w->desktop != session_.inputDesktop ||
        (!session_.hasLastInput && !session_.startedByForeground)) {
        return false;
    }
    foreground_ = window;
    return true;
}

bool SimWindows::AllowSetForegroundWindow(std::uint32_t processId) {
    if (session_.Enter("AllowSetForegroundWindow", std::to_string(processId))) return false;
    if (!session_.hasLastInput && !session_.startedByForeground) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    foregroundGrants_.push_back(processId);
    return true;
}

std::uint32_t SimWindows::GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) {
    if (session_.Enter("GetWindowThreadProcessId", Hex(window))) return 0;
    const SimWindow* w = Find(window);
    if (processId != nullptr) *processId = w == nullptr ? 0 : w->processId;
    if (w == nullptr) {
        session_.last = ErrorInvalidWindowHandle;
        return 0;
    }
    return w->processId == session_.processId ? session_.threadId : w->processId + 1;
}

Text SimWindows::GetWindowTextW(Hwnd window) {
    if (session_.Enter("GetWindowTextW", Hex(window)) || Missing(window)) return {};
    return Find(window)->caption;
}

Text SimWindows::GetClassNameW(Hwnd window) {
    if (session_.Enter("GetClassNameW", Hex(window)) || Missing(window)) return {};
    return Find(window)->className;
}

std::intptr_t SimWindows::SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) {
    if (session_.Enter("SetWindowLongPtrW",
                       Hex(window) + " " + std::to_string(index) + " " + Hex(value)) ||
        Missing(window)) {
        return 0;
    }
    SimWindow* w = FindOwn(window);
    if (w->processId != session_.processId) {
        session_.last = ErrorAccessDenied;
        return 0;
    }
    session_.last = ErrorSuccess;
    if (index == GwlpWndProc) {
        const auto previous = reinterpret_cast<std::intptr_t>(w->procedure);
        w->procedure = reinterpret_cast<WndProc>(value);
        return previous;
    }
    if (index == GwlpUserData) return std::exchange(w->userData, value);
    session_.last = kErrorInvalidIndex;
    return 0;
}

std::intptr_t SimWindows::GetWindowLongPtrW(Hwnd window, int index) {
    if (session_.Enter("GetWindowLongPtrW", Hex(window) + " " + std::to_string(index)) ||
        Missing(window)) {
        return 0;
    }
    const SimWindow* w = Find(window);
    if (index == GwlpWndProc) return reinterpret_cast<std::intptr_t>(w->procedure);
    if (index == GwlpUserData) return w->userData;
    if (index == GwlStyle) return static_cast<std::intptr_t>(w->style);
    if (index == GwlExStyle) return static_cast<std::intptr_t>(w->exStyle);
    session_.last = kErrorInvalidIndex;
    return 0;
}

Lresult SimWindows::CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message,
                                    Wparam wParam, Lparam lParam) {
    if (session_.Enter("CallWindowProcW", std::to_string(message)) || previous == nullptr) return 0;
    return previous(window, message, wParam, lParam);
}

std::vector<Hwnd> SimWindows::EnumWindows() {
    (void)session_.Enter("EnumWindows");
    return session_.windowsOfDesktop(session_.threadDesktop);
}

Hwnd SimWindows::GetWindow(Hwnd window, std::uint32_t command) {
    if (session_.Enter("GetWindow", Hex(window) + " " + std::to_string(command)) ||
        Missing(window)) {
        return nullptr;
    }
    return command == GwOwner ? Find(window)->owner : nullptr;
}

int SimWindows::GetSystemMetrics(int index) {
    (void)session_.Enter("GetSystemMetrics", std::to_string(index));
    switch (index) {
        case 11:  // SM_CXICON
        case 12:  // SM_CYICON
            return 32;
        case 49:  // SM_CXSMICON
        case 50:  // SM_CYSMICON
            return 16;
        default:
            return 0;
    }
}

// Without LR_SHARED every load makes a new icon, which its caller would have to destroy.
Handle SimWindows::LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx,
                              int cy, std::uint32_t flags) {
    if (session_.Enter("LoadImageA", name + " " + std::to_string(cx) + "x" + std::to_string(cy) +
                                         " flags " + Hex(flags))) {
        return nullptr;
    }
    if (instance != kModuleHandle || type != kImageIcon || iconGroups_.count(name) == 0) {
        session_.last = kErrorResourceNameNotFound;
        return nullptr;
    }
    (void)cy;
    if ((flags & kLrShared) != 0) {
        auto& shared = sharedIcons_[{name, cx}];
        if (shared == nullptr) shared = HandleFrom<Handle>(nextIcon_++);
        return shared;
    }
    return HandleFrom<Handle>(nextIcon_++);
}

Lresult SimWindows::SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (session_.Enter("SendMessageA", Hex(window) + " " + std::to_string(message) + " " +
                                           std::to_string(wParam) + " " + Hex(lParam)) ||
        Missing(window)) {
        return 0;
    }
    return Deliver(window, message, wParam, lParam);
}

std::uint16_t SimWindows::RegisterClassW(const Text& className, WndProc procedure, Hinstance) {
    if (session_.Enter("RegisterClassW", Utf8(className))) return 0;
    if (classes_.count(className) != 0) {
        session_.last = kErrorClassAlreadyExists;
        return 0;
    }
    classes_[className] = procedure;
    return static_cast<std::uint16_t>(0xC000 + classes_.size());
}

Hwnd SimWindows::CreateWindowExW(std::uint32_t exStyle, const Text& className,
                                 const Text& windowName, std::uint32_t style, Hwnd parent,
                                 Hinstance) {
    if (session_.Enter("CreateWindowExW", Utf8(className) + " " + Utf8(windowName))) {
        return nullptr;
    }
    const auto cls = classes_.find(className);
    if (cls == classes_.end()) {
        session_.last = kErrorCannotFindWndClass;
        return nullptr;
    }
    const Hwnd hwnd = HandleFrom<Hwnd>(nextWindow_);
    nextWindow_ += 0x10;
    SimWindow w;
    w.className = className;
    w.caption = windowName;
    w.procedure = cls->second;
    w.owner = parent;
    w.processId = session_.processId;
    w.desktop = session_.threadDesktop;
    w.exStyle = exStyle;
    w.style = style;
    w.className = className;
    windows_[HandleValue(hwnd)] = std::move(w);
    if (Deliver(hwnd, WmCreate, 0, 0) == -1) {
        windows_.erase(HandleValue(hwnd));
        return nullptr;
    }
    return hwnd;
}

bool SimWindows::DestroyWindow(Hwnd window) {
    if (session_.Enter("DestroyWindow", Hex(window)) || Missing(window)) return false;
    if (Find(window)->processId != session_.processId) {
        session_.last = ErrorAccessDenied;
        return false;
    }
    std::vector<Hwnd> owned;
    for (const auto& [value, other] : windows_) {
        if (other.owner == window) owned.push_back(HandleFrom<Hwnd>(value));
    }
    for (const Hwnd o : owned)
        DestroyWindow(o);
    Deliver(window, WmDestroy, 0, 0);
    Deliver(window, WmNcDestroy, 0, 0);
    windows_.erase(HandleValue(window));
    // The system frees the window's hotkeys and timers and drops its queued messages.
    for (const auto& destroyed : session_.onWindowDestroyed)
        destroyed(window);
    return true;
}

Lresult SimWindows::DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                                   Lparam lParam) {
    (void)session_.Enter("DefWindowProcW", std::to_string(message));
    SimWindow* w = FindOwn(window);
    if (w == nullptr) return 0;
    switch (message) {
        case WmClose:
            DestroyWindow(window);
            return 0;
        case WmQueryEndSession:
            return 1;
        case WmSetIcon: {
            Handle& slot = wParam == 1 ? w->bigIcon : w->smallIcon;
            return HandleValue(std::exchange(slot, HandleFrom<Handle>(lParam)));
        }
        case WmGetIcon:
            return HandleValue(wParam == 1 ? w->bigIcon : w->smallIcon);
        default:
            return 0;
    }
}

Lresult SimWindows::SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) {
    if (session_.Enter("SendMessageW", Hex(window) + " " + std::to_string(message)) ||
        Missing(window)) {
        return 0;
    }
    return Deliver(window, message, wParam, lParam);
}

// A window without a procedure stands for a receiver that does not answer.
bool SimWindows::SendMessageTimeoutW(Hwnd window, std::uint32_t message, Wparam wParam,
                                     Lparam lParam, std::uint32_t flags, std::uint32_t timeout,
                                     Lresult& result) {
    if (session_.Enter("SendMessageTimeoutW", Hex(window) + " " + std::to_string(message) + " " +
                                                  std::to_string(flags) + " " +
                                                  std::to_string(timeout)) ||
        Missing(window)) {
        return false;
    }
    if (Find(window)->procedure == nullptr) {
        session_.last = WaitTimeout;
        return false;
    }
    result = Deliver(window, message, wParam, lParam);
    return true;
}

Hwnd SimWindows::FindWindowByCaption(const Text& caption) const {
    for (const auto& [value, w] : windows_) {
        if (w.caption == caption) return HandleFrom<Hwnd>(value);
    }
    return nullptr;
}

Hwnd SimWindows::CreateWindowInOtherProcess(const Text& caption, WndProc procedure,
                                            std::uint32_t processId, std::optional<Text> desktop,
                                            std::uint32_t style, const Text& className,
                                            std::uint32_t exStyle) {
    const Hwnd hwnd = HandleFrom<Hwnd>(nextWindow_);
    nextWindow_ += 0x10;
    SimWindow w;
    w.caption = caption;
    w.procedure = procedure;
    w.processId = processId;
    w.desktop = desktop ? session_.DesktopByName(*desktop) : session_.inputDesktop;
    w.style = style;
    w.exStyle = exStyle;
    w.className = className;
    windows_[HandleValue(hwnd)] = std::move(w);
    return hwnd;
}

std::vector<std::pair<Text, Handle>> SimWindows::WindowProps(Hwnd window) const {
    const SimWindow* w = Find(window);
    return w == nullptr ? std::vector<std::pair<Text, Handle>>{} : w->props;
}

Handle SimWindows::WindowIcon(Hwnd window, bool big) const {
    const SimWindow* w = Find(window);
    return w == nullptr ? nullptr : (big ? w->bigIcon : w->smallIcon);
}

std::uint32_t SimWindows::WindowExStyle(Hwnd window) const {
    const SimWindow* w = Find(window);
    return w == nullptr ? 0 : w->exStyle;
}

Lresult SimWindows::SendCopyData(Hwnd window, std::string_view bytes, std::uintptr_t dwData) {
    // The system copies the data into the receiving process for the length of the call.
    std::vector<std::byte> copy(bytes.size());
    if (!bytes.empty()) std::memcpy(copy.data(), bytes.data(), bytes.size());
    const CopyDataStruct data{dwData, static_cast<std::uint32_t>(copy.size()), copy.data()};
    return Deliver(window, WmCopyData, 0, reinterpret_cast<Lparam>(&data));
}

}  // namespace zk::sim
