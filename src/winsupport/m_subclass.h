#pragma once
// MSubclass: routes chosen messages of a window of this process to ISubclass receivers. The
// window's procedure is replaced by the dispatcher at the first attach and given back at the
// last detach; all bookkeeping lives in the window's own property list:
//   "C" + H          how many attaches are in force on the window
//   H                the window's previous procedure
//   H#M C            how many receivers message M has
//   H#M#N            receiver N of message M
// where H is the handle's low 32 bits as a signed decimal and M the message number.

#include <cstdint>

#include "platform/os.h"
#include "winsupport/i_subclass.h"

namespace zk {

// The four errors AttachReceiver raises; their number is the code | 0x80040000.
enum SubclassError : std::int32_t {
    SubclassFailed = 13081,
    AlreadyHandled = 13082,
    InvalidWindow = 13083,
    ExternalWindow = 13084,
};
inline constexpr std::uint32_t kObjectErrorBase = 0x80040000;

namespace MSubclass {

// Throws ZkError with one of the four errors.
void AttachReceiver(ISubclass& receiver, Hwnd hWnd, std::int32_t iMsg);
// Detaches exactly what one attach did. A receiver or window that is not attached is ignored.
void DetachReceiver(ISubclass& receiver, Hwnd hWnd, std::int32_t iMsg) noexcept;
// The procedure installed into a subclassed window; the system calls it.
Lresult ZK_CALLBACK SubclassWindowProc(Hwnd hWnd, std::uint32_t iMsg, Wparam wParam, Lparam lParam);
// Dispatches one message to the receivers as SubclassWindowProc does, but lets their errors
// pass to the caller.
Lresult Dispatch(Hwnd hWnd, std::uint32_t iMsg, Wparam wParam, Lparam lParam);
[[nodiscard]] bool IsOwnProcessWindow(Hwnd hWnd);
[[noreturn]] void RaiseSubclassError(std::int32_t code);

// The property names for a window and message.
[[nodiscard]] Text HandleText(Hwnd hWnd);
[[nodiscard]] Text AttachCountName(Hwnd hWnd);
[[nodiscard]] Text ReceiverCountName(Hwnd hWnd, std::int32_t iMsg);
[[nodiscard]] Text ReceiverName(Hwnd hWnd, std::int32_t iMsg, std::int32_t position);

// The property helpers: a missing property reads as 0.
[[nodiscard]] std::intptr_t GetProp(Hwnd hWnd, const Text& name);
void SetProp(Hwnd hWnd, const Text& name, std::intptr_t value);
void RemoveProp(Hwnd hWnd, const Text& name);

}  // namespace MSubclass
}  // namespace zk
