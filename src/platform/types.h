#pragma once
// The portable types of the platform seam: the system's handle types, text, messages and the
// constants the program uses above the seam.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/text.h"

// The system's own handle types (on Windows these are exactly the types of <windows.h>).
struct HWND__;
struct HDESK__;
struct HKEY__;
struct HKL__;
struct HINSTANCE__;

#if defined(_WIN32)
#define ZK_CALLBACK __stdcall
#else
#define ZK_CALLBACK
#endif

namespace zk {

using Hwnd = HWND__*;
using Hdesk = HDESK__*;
using Hkey = HKEY__*;
using Hkl = HKL__*;
using Hinstance = HINSTANCE__*;
using Handle = void*;
using Lresult = std::intptr_t;
using Wparam = std::uintptr_t;
using Lparam = std::intptr_t;

using WndProc = Lresult(ZK_CALLBACK*)(Hwnd, std::uint32_t, Wparam, Lparam);

// Handles are pointer-sized values; these turn numbers into handles and back.
template <class H>
H HandleFrom(std::intptr_t value) {
    return reinterpret_cast<H>(value);
}
template <class H>
std::intptr_t HandleValue(H handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

// Predefined registry root: a 32-bit value sign-extended to the handle's width, as the system
// defines it.
inline Hkey HkeyCurrentUser() {
    return HandleFrom<Hkey>(static_cast<std::int32_t>(0x80000001));
}
inline Handle InvalidHandleValue() {
    return HandleFrom<Handle>(-1);
}

// Window messages.
inline constexpr std::uint32_t WmCreate = 0x0001;
inline constexpr std::uint32_t WmDestroy = 0x0002;
inline constexpr std::uint32_t WmClose = 0x0010;
inline constexpr std::uint32_t WmQueryEndSession = 0x0011;
inline constexpr std::uint32_t WmQuit = 0x0012;
inline constexpr std::uint32_t WmEndSession = 0x0016;
inline constexpr std::uint32_t WmCopyData = 0x004A;
inline constexpr std::uint32_t WmGetIcon = 0x007F;
inline constexpr std::uint32_t WmSetIcon = 0x0080;
inline constexpr std::uint32_t WmNcDestroy = 0x0082;
inline constexpr std::uint32_t WmTimer = 0x0113;
inline constexpr std::uint32_t WmHotKey = 0x0312;
inline constexpr std::uint32_t WmUser = 0x0400;
inline constexpr std::uint32_t WmApp = 0x8000;

// Win32 error codes the program meets.
inline constexpr std::uint32_t ErrorSuccess = 0;
inline constexpr std::uint32_t ErrorFileNotFound = 2;
inline constexpr std::uint32_t ErrorPathNotFound = 3;
inline constexpr std::uint32_t ErrorAccessDenied = 5;
inline constexpr std::uint32_t ErrorSharingViolation = 32;
inline constexpr std::uint32_t ErrorInvalidHandle = 6;
inline constexpr std::uint32_t ErrorNotEnoughMemory = 8;
inline constexpr std::uint32_t ErrorInvalidParameter = 87;
inline constexpr std::uint32_t ErrorInsufficientBuffer = 122;
inline constexpr std::uint32_t ErrorBusy = 170;
inline constexpr std::uint32_t ErrorAlreadyExists = 183;
inline constexpr std::uint32_t ErrorMoreData = 234;
inline constexpr std::uint32_t ErrorNoMoreItems = 259;
inline constexpr std::uint32_t ErrorInvalidWindowHandle = 1400;
inline constexpr std::uint32_t ErrorHotkeyAlreadyRegistered = 1409;
inline constexpr std::uint32_t ErrorHotkeyNotRegistered = 1419;

// Other system constants used above the seam.
inline constexpr std::uint32_t WaitObject0 = 0;
inline constexpr std::uint32_t WaitAbandoned0 = 0x80;
inline constexpr std::uint32_t WaitTimeout = 258;
inline constexpr std::uint32_t WaitFailed = 0xFFFFFFFF;
inline constexpr std::uint32_t Infinite = 0xFFFFFFFF;
inline constexpr std::uint32_t ModNoRepeat = 0x4000;
inline constexpr std::uint32_t SpiGetKeyboardSpeed = 0x000A;
inline constexpr std::uint32_t SpiGetKeyboardDelay = 0x0016;
inline constexpr std::uint32_t QsAllInput = 0x04FF;
inline constexpr std::uint32_t SmtoAbortIfHung = 0x0002;
inline constexpr std::uint32_t ProcessQueryLimitedInformation = 0x1000;
inline constexpr std::uint32_t ProcessQueryInformation = 0x0400;
inline constexpr std::uint32_t InvalidFileAttributes = 0xFFFFFFFF;
inline constexpr std::uint32_t FileAttributeDirectory = 0x10;
inline constexpr std::uint32_t StartfUseShowWindow = 0x00000001;
inline constexpr std::uint16_t SwShowMinimized = 2;
inline constexpr std::uint32_t FileAppendData = 0x0004;
inline constexpr std::uint32_t FileShareRead = 0x0001;
inline constexpr std::uint32_t FileShareWrite = 0x0002;
inline constexpr std::uint32_t OpenAlways = 4;
inline constexpr std::uint32_t OpenExisting = 3;
inline constexpr std::uint32_t GenericRead = 0x80000000;
inline constexpr std::uint32_t Synchronize = 0x00100000;
inline constexpr std::uint32_t EventModifyState = 0x0002;
inline constexpr std::uint32_t DesktopReadObjects = 0x0001;
inline constexpr std::uint32_t DesktopEnumerate = 0x0040;
inline constexpr std::uint32_t DesktopSwitchDesktop = 0x0100;
inline constexpr std::uint32_t GenericAll = 0x10000000;
inline constexpr int GwlpWndProc = -4;
inline constexpr int GwlStyle = -16;
inline constexpr int GwlExStyle = -20;
inline constexpr std::uint32_t WsVisible = 0x10000000;
inline constexpr std::uint32_t WsMinimize = 0x20000000;
inline constexpr std::uint32_t WsExToolWindow = 0x00000080;
inline constexpr int GwlpUserData = -21;
inline constexpr std::uint32_t GwOwner = 4;
inline constexpr std::uint32_t KeyQueryValue = 0x0001;
inline constexpr std::uint32_t KeySetValue = 0x0002;
inline constexpr std::uint32_t KeyNotify = 0x0010;
inline constexpr std::uint32_t KeyRead = 0x20019;
inline constexpr std::int32_t SOk = 0;
inline constexpr std::int32_t SFalse = 1;
inline constexpr std::int32_t EInvalidArg = static_cast<std::int32_t>(0x80070057);
inline constexpr int CsidlLocalAppData = 0x001C;
inline constexpr int CsidlFlagCreate = 0x8000;

// The system's COPYDATASTRUCT, laid out as on 64-bit Windows.
struct CopyDataStruct {
    std::uintptr_t dwData;
    std::uint32_t cbData;
    const void* lpData;
};

// A queued message as GetMessageW hands it over.
struct Msg {
    Hwnd hwnd = nullptr;
    std::uint32_t message = 0;
    Wparam wParam = 0;
    Lparam lParam = 0;
    std::uint32_t time = 0;
    std::int32_t ptX = 0;
    std::int32_t ptY = 0;
};

// The fields of STARTUPINFOW that the program sets; all others are zero.
struct StartupInfo {
    std::optional<Text> lpDesktop;
    std::optional<Text> lpTitle;
    std::uint32_t dwFlags = 0;
    std::uint16_t wShowWindow = 0;
};

struct ProcessInformation {
    Handle hProcess = nullptr;
    Handle hThread = nullptr;
    std::uint32_t dwProcessId = 0;
    std::uint32_t dwThreadId = 0;
};

// One key going down or up, as SendInput takes it (INPUT_KEYBOARD with a virtual key).
struct KeyInput {
    std::uint16_t virtualKey = 0;
    bool up = false;
};

// One process of a snapshot (PROCESSENTRY32W).
struct ProcessEntry {
    std::uint32_t processId = 0;
    std::uint32_t parentProcessId = 0;
    Text exeFile;  // the file name, without folder
};

struct SystemTime {
    std::uint16_t wYear = 0, wMonth = 0, wDayOfWeek = 0, wDay = 0;
    std::uint16_t wHour = 0, wMinute = 0, wSecond = 0, wMilliseconds = 0;
};

}  // namespace zk
