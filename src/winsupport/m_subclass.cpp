#include "winsupport/m_subclass.h"

#include <memory>

#include "platform/module_path.h"
#include "support/text.h"
#include "support/zk_error.h"
#include "winsupport/process_context.h"

namespace zk::MSubclass {
namespace {

std::intptr_t AddressOf(ISubclass& receiver) {
    return reinterpret_cast<std::intptr_t>(&receiver);
}

Lresult CallPrevious(std::intptr_t previous, Hwnd hWnd, std::int32_t message, Wparam wParam,
                     Lparam lParam) {
    return ProcessOs().CallWindowProcW(reinterpret_cast<WndProc>(previous), hWnd,
                                       static_cast<std::uint32_t>(message), wParam, lParam);
}

}  // namespace

Text HandleText(Hwnd hWnd) {
    return DecimalText(static_cast<std::int32_t>(static_cast<std::uint32_t>(HandleValue(hWnd))));
}
Text AttachCountName(Hwnd hWnd) {
    return u"C" + HandleText(hWnd);
}
Text ReceiverCountName(Hwnd hWnd, std::int32_t iMsg) {
    return HandleText(hWnd) + u"#" + DecimalText(iMsg) + u"C";
}
Text ReceiverName(Hwnd hWnd, std::int32_t iMsg, std::int32_t position) {
    return HandleText(hWnd) + u"#" + DecimalText(iMsg) + u"#" + DecimalText(position);
}

std::intptr_t GetProp(Hwnd hWnd, const Text& name) {
    return HandleValue(ProcessOs().GetPropW(hWnd, name));
}
void SetProp(Hwnd hWnd, const Text& name, std::intptr_t value) {
    (void)ProcessOs().SetPropW(hWnd, name, HandleFrom<Handle>(value));
}
void RemoveProp(Hwnd hWnd, const Text& name) {
    (void)ProcessOs().RemovePropW(hWnd, name);
}

bool IsOwnProcessWindow(Hwnd hWnd) {
    Os& os = ProcessOs();
    std::uint32_t processId = 0;
    (void)os.GetWindowThreadProcessId(hWnd, &processId);
    return processId == os.GetCurrentProcessId();
}

void RaiseSubclassError(std::int32_t code) {
    const char16_t* description = u"";
    switch (code) {
        case SubclassFailed:
            description = u"Can't subclass window";
            break;
        case AlreadyHandled:
            description = u"Message already handled by another class";
            break;
        case InvalidWindow:
            description = u"Invalid window";
            break;
        case ExternalWindow:
            description = u"Can't modify external window";
            break;
        default:
            break;
    }
    const auto number =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(code) | kObjectErrorBase);
    throw ZkError(number, ExecutableName(ProcessOs()) + u".WindowProc", description);
}

void AttachReceiver(ISubclass& receiver, Hwnd hWnd, std::int32_t iMsg) {
    Os& os = ProcessOs();
    if (!os.IsWindow(hWnd)) RaiseSubclassError(InvalidWindow);
    if (!IsOwnProcessWindow(hWnd)) RaiseSubclassError(ExternalWindow);

    std::intptr_t attaches = GetProp(hWnd, AttachCountName(hWnd));
    if (attaches == 0) {
        const std::intptr_t previous = os.SetWindowLongPtrW(
            hWnd, GwlpWndProc, reinterpret_cast<std::intptr_t>(&SubclassWindowProc));
        if (previous == 0) RaiseSubclassError(SubclassFailed);
        SetProp(hWnd, HandleText(hWnd), previous);
        attaches = 1;
    } else {
        ++attaches;
    }
    SetProp(hWnd, AttachCountName(hWnd), attaches);

    const auto receivers = static_cast<std::int32_t>(GetProp(hWnd, ReceiverCountName(hWnd, iMsg)));
    for (std::int32_t n = 1; n <= receivers; ++n) {
        if (GetProp(hWnd, ReceiverName(hWnd, iMsg, n)) == AddressOf(receiver)) {
            RaiseSubclassError(AlreadyHandled);
        }
    }
    SetProp(hWnd, ReceiverCountName(hWnd, iMsg), receivers + 1);
    SetProp(hWnd, ReceiverName(hWnd, iMsg, receivers + 1), AddressOf(receiver));
}

void DetachReceiver(ISubclass& receiver, Hwnd hWnd, std::int32_t iMsg) noexcept {
    const std::intptr_t attaches = GetProp(hWnd, AttachCountName(hWnd));
    if (attaches < 1) return;  // not subclassed: nothing of ours to undo
    if (attaches == 1) {
        (void)ProcessOs().SetWindowLongPtrW(hWnd, GwlpWndProc, GetProp(hWnd, HandleText(hWnd)));
        RemoveProp(hWnd, HandleText(hWnd));
        RemoveProp(hWnd, AttachCountName(hWnd));
    } else {
        SetProp(hWnd, AttachCountName(hWnd), attaches - 1);
    }

    const auto receivers = static_cast<std::int32_t>(GetProp(hWnd, ReceiverCountName(hWnd, iMsg)));
    if (receivers < 1) return;
    std::int32_t found = 0;
    for (std::int32_t n = 1; n <= receivers && found == 0; ++n) {
        if (GetProp(hWnd, ReceiverName(hWnd, iMsg, n)) == AddressOf(receiver)) found = n;
    }
    if (found == 0) return;  // not a receiver of this message
    for (std::int32_t n = found + 1; n <= receivers; ++n) {
        SetProp(hWnd, ReceiverName(hWnd, iMsg, n - 1), GetProp(hWnd, ReceiverName(hWnd, iMsg, n)));
    }
    RemoveProp(hWnd, ReceiverName(hWnd, iMsg, receivers));
    SetProp(hWnd, ReceiverCountName(hWnd, iMsg), receivers - 1);
}

Lresult Dispatch(Hwnd hWnd, std::uint32_t iMsg, Wparam wParam, Lparam lParam) {
    // The dispatcher's own copy of the message number; receivers see it by reference.
    auto current = static_cast<std::int32_t>(iMsg);
    const std::intptr_t previous = GetProp(hWnd, HandleText(hWnd));
    const auto receivers =
        static_cast<std::int32_t>(GetProp(hWnd, ReceiverCountName(hWnd, current)));
    if (receivers <= 0) return CallPrevious(previous, hWnd, current, wParam, lParam);

    Lresult result = 0;
    bool previousCalled = false;
    std::shared_ptr<ISubclass> held;  // keeps the receiver alive while it is being used
    for (std::int32_t n = 1; n <= receivers; ++n) {
        const std::intptr_t address = GetProp(hWnd, ReceiverName(hWnd, current, n));
        if (address == 0) {  // detached meanwhile
            result = CallPrevious(previous, hWnd, current, wParam, lParam);
            continue;
        }
        auto* receiver = reinterpret_cast<ISubclass*>(address);
        held = receiver->weak_from_this().lock();
        if (n == 1 && receiver->MsgResponse(current) == CallOriginalBefore && !previousCalled) {
            (void)CallPrevious(previous, hWnd, current, wParam, lParam);
            previousCalled = true;
        }
        result = receiver->WindowProc(hWnd, current, wParam, lParam);
        if (n == receivers && receiver->MsgResponse(current) == CallOriginalAfter &&
            !previousCalled) {
            result = CallPrevious(previous, hWnd, current, wParam, lParam);
            previousCalled = true;
        }
    }
    return result;
}

Lresult ZK_CALLBACK SubclassWindowProc(Hwnd hWnd, std::uint32_t iMsg, Wparam wParam,
                                       Lparam lParam) {
    return GuardWindowProc([&] { return Dispatch(hWnd, iMsg, wParam, lParam); });
}

}  // namespace zk::MSubclass
