#include "controller/frm_zk.h"

#include <string>

#include "diagnostics/win_api_error.h"
#include "winsupport/app_icon.h"
#include "winsupport/m_subclass.h"
#include "winsupport/process_context.h"

namespace zk {
namespace {

constexpr char16_t kEventFailure[] = u"Failed to create event ";
constexpr char16_t kNoWindow[] = u"The controller window could not be created: ";

constexpr std::uint32_t kWsOverlappedWindow = 0x00CF0000;
constexpr std::uint32_t kWsExToolWindow = 0x00000080;

// No command text is longer than this many characters, and in every ANSI code page an ASCII
// character comes from one byte: a longer payload can never be a command.
constexpr std::int32_t kLongestCommand = 32;

}  // namespace

frmZK::frmZK(Os& os) : os_(os), log_(os), registry_(os) {}

frmZK::~frmZK() = default;

std::shared_ptr<frmZK> frmZK::Load(Os& os) {
    auto form = Create(os);
    if (form != nullptr) form->Form_Load();
    return form;
}

std::shared_ptr<frmZK> frmZK::Create(Os& os) {
    auto form = std::make_shared<frmZK>(os);
    const Hinstance instance = os.GetModuleHandleW();
    (void)os.RegisterClassW(kControllerClass, &frmZK::ClassWindowProc, instance);
    form->window_ = os.CreateWindowExW(kWsExToolWindow, kControllerClass, kControllerCaption,
                                       kWsOverlappedWindow, nullptr, instance);
    if (form->window_ == nullptr) return nullptr;  // the last error says why
    (void)os.SetWindowLongPtrW(form->window_, GwlpUserData,
                               reinterpret_cast<std::intptr_t>(form.get()));
    form->hotkeys_ = std::make_unique<HotKeys>(os, os, form->registry_, &form->log_, form->record_,
                                               form->window_);
    return form;
}

void frmZK::Form_Load() {
    AppIcon::SetWindowIcons(os_, hWnd(), AppIcon::kAppIconName, true);
    record_.PreviousDesk = 0;
    (void)os_.SetPropA(hWnd(), os_.WideCharToMultiByte(kWindowMark), HandleFrom<Handle>(1));
    MSubclass::AttachReceiver(*this, hWnd(), WmHotKey);
    MSubclass::AttachReceiver(*this, hWnd(), WmCopyData);
    names_.InitEventNames();
    CreateEvents();
    hotkeys_->LoadHotKeys();
    PublishHotKeys();
    hotkeys_->RegisterHotKeys();
    for (auto& desktop : record_.Desktops)
        desktop = std::make_unique<cDesktop>(os_);
    if (!TakeDesktops()) return;
    record_.CurrentDesk = 1;
    record_.Desktops[1]->SwitchTo();
}

// An event that cannot be created ends the process at once, without the shutdown.
void frmZK::CreateEvents() {
    for (std::int16_t i = 1; i <= kSignalCount; ++i) {
        record_.EventHandles[i] =
            os_.CreateEventA(false, false, os_.WideCharToMultiByte(names_.EventName(i)));
        if (record_.EventHandles[i] != nullptr) continue;
        const std::uint32_t code = os_.GetLastError();
        log_.LogError(LogMessage(kEventFailure + names_.EventName(i) + u" (" +
                                 ApiErrorText(os_, code) + u")"));
        log_.StartErrorReporter();
        os_.ExitProcess(kExitEventFailure);
    }
}

// Desktop 1 is taken as it is; desktops 2 to 4 are made while every earlier step succeeded.
// After a failure the screen goes back to desktop 1 (if it was left) and the window is unloaded.
bool frmZK::TakeDesktops() {
    if (!record_.Desktops[1]->SetAsDefault()) {
        FailStart(LogMessage(record_.Desktops[1]->GetLastError()));
        return false;
    }
    for (std::int16_t number = 2; number <= kDesktopCount; ++number) {
        cDesktop& desktop = *record_.Desktops[number];
        if (desktop.Create(kDesktopNames[number - 1], number)) continue;
        record_.Desktops[1]->SwitchTo();
        // The one message without a blank after the mark: the failure to make "desk2".
        FailStart(number == 2 ? kMessageMark + desktop.GetLastError()
                              : LogMessage(desktop.GetLastError()));
        return false;
    }
    return true;
}

void frmZK::FailStart(const Text& message) {
    log_.LogError(message);
    log_.StartErrorReporter();
    startUnloaded_ = true;
    Unload();
}

void frmZK::Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    std::int16_t cancel = 0;
    Form_Unload(cancel);
    (void)os_.DestroyWindow(window_);
}

void frmZK::Form_Unload(std::int16_t& cancel) {
    (void)cancel;  // the unload always goes ahead
    MSubclass::DetachReceiver(*this, hWnd(), WmCopyData);
    MSubclass::DetachReceiver(*this, hWnd(), WmHotKey);
    for (auto& desktop : record_.Desktops) {
        if (desktop) desktop->ClearUp();
    }
    hotkeys_->UnregisterHotKeys();
    for (auto& desktop : record_.Desktops)
        desktop.reset();
    for (const Handle event : record_.EventHandles) {
        if (event != nullptr) (void)os_.CloseHandle(event);
    }
    companions_.reset();
}

std::int32_t frmZK::MsgResponse(std::int32_t& CurrentMessage) {
    (void)CurrentMessage;
    return CallOriginalAfter;
}

Lresult frmZK::WindowProc(Hwnd hWnd, std::int32_t iMsg, Wparam wParam, Lparam lParam) {
    if (hWnd != window_) return 0;
    if (iMsg == static_cast<std::int32_t>(WmHotKey)) {
        HotKeyPressed(static_cast<std::int32_t>(wParam));
    } else if (iMsg == static_cast<std::int32_t>(WmCopyData)) {
        CopyData(lParam);
    }
    return 0;
}

void frmZK::CopyData(Lparam lParam) {
    const auto* data = reinterpret_cast<const CopyDataStruct*>(lParam);
    if (data == nullptr || data->lpData == nullptr) return;
    const auto size = static_cast<std::int32_t>(data->cbData);
    if (size <= 0 || size > kLongestCommand) return;
    const Ansi bytes(static_cast<const char*>(data->lpData), static_cast<std::size_t>(size));
    const Text command = os_.MultiByteToWideChar(bytes);
    for (std::int16_t index = kFirstSwitchCommand; index <= kSignalCount; ++index) {
        if (command != names_.EventName(index)) continue;
        if (index <= kLastSwitchCommand) {
            const std::int16_t desk = static_cast<std::int16_t>(index - kFirstSwitchCommand + 1);
            if (record_.CurrentDesk == desk) return;
            record_.PreviousDesk = record_.CurrentDesk;
            record_.CurrentDesk = desk;
            record_.Desktops[desk]->SwitchTo();
            // Once shown: a companion that read the record before the screen would take it back.
            Companions().PublishShown(record_.CurrentDesk, record_.PreviousDesk);
        } else if (index == kReadRegCommand) {
            hotkeys_->ReloadHotKeys();
            PublishHotKeys();
        } else if (index == kShutdownCommand) {
            Unload();
        }
        return;
    }
}

void frmZK::HotKeyPressed(std::int32_t id) {
    const auto request = HotKeyRequestOf(id, record_.PreviousDesk);
    if (!request) return;
    const std::int16_t index =
        EventNames::EventIndex(request->kind, record_.CurrentDesk, request->target);
    const Handle event = record_.EventHandles[index];  // outside 1..54: the subscript error
    if (request->kind == KindShowPreview) LetSwitcherTakeTheKeyboard(record_.CurrentDesk);
    (void)os_.SetEvent(event);
}

// The preview that the switcher shows must take the keyboard, and Windows lets a process bring
// a window to the front only when it received the last input or was given the right by the
// process that did: this one, which received the key.
void frmZK::LetSwitcherTakeTheKeyboard(std::int16_t desk) {
    const std::uint32_t switcher = Companions().Block().companions[PilotSlot(desk)];
    if (switcher != 0) (void)os_.AllowSetForegroundWindow(switcher);
}

// The tools show the hotkeys in force, which differ from the stored ones where a reload kept a
// pair it could not read.
void frmZK::PublishHotKeys() {
    Companions().PublishHotKeys(record_);
}

SharedState& frmZK::Companions() {
    if (!companions_) companions_ = std::make_unique<SharedState>(os_, os_.GetCurrentProcessId());
    return *companions_;
}

// The window's own procedure: the one the subclassing calls after the controller. Closing the
// window in any way the system offers unloads it as the shutdown command does.
Lresult ZK_CALLBACK frmZK::ClassWindowProc(Hwnd hWnd, std::uint32_t message, Wparam wParam,
                                           Lparam lParam) {
    return GuardWindowProc([&]() -> Lresult {
        Os& os = ProcessOs();
        auto* form = reinterpret_cast<frmZK*>(os.GetWindowLongPtrW(hWnd, GwlpUserData));
        if (form == nullptr || form->window_ != hWnd) {
            return os.DefWindowProcW(hWnd, message, wParam, lParam);
        }
        return form->OwnMessage(message, wParam, lParam);
    });
}

Lresult frmZK::OwnMessage(std::uint32_t message, Wparam wParam, Lparam lParam) {
    switch (message) {
        case WmClose:
            Unload();
            return 0;
        case WmQueryEndSession:
            return 1;
        case WmEndSession:
            if (wParam != 0) Unload();  // the session ends: nothing runs after this message
            return 0;
        case WmDestroy:
            os_.PostQuitMessage(exitCode());
            return 0;
        default:
            return os_.DefWindowProcW(window_, message, wParam, lParam);
    }
}

int RunMessageLoop(Os& os) {
    Msg message;
    int result = 0;
    while ((result = os.GetMessageW(message)) > 0)
        (void)os.DispatchMessageW(message);
    return result == 0 ? static_cast<int>(message.wParam) : kExitStartError;
}

int RunZelkova(Os& os) {
    std::shared_ptr<frmZK> form;
    ProcessContext context(os, [&](const Text& what) {
        if (form) form->log().LogError(LogMessage(what));
    });
    try {
        form = frmZK::Load(os);
    } catch (const std::exception& e) {
        // Attaching to its own window does not fail in practice; if it does, say so and end.
        const std::string what = e.what();
        ErrLog(os).LogError(LogMessage(Text(what.begin(), what.end())));
        return kExitStartError;
    }
    if (form == nullptr) {
        const std::uint32_t code = os.GetLastError();
        ErrLog(os).LogError(LogMessage(kNoWindow + ApiErrorText(os, code)));
        return kExitStartError;
    }
    return RunMessageLoop(os);
}

}  // namespace zk
