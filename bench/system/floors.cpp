#include "system/floors.h"

#include <string>
#include <vector>

#include "system/bench_support.h"

namespace zk::bench {
namespace {

constexpr wchar_t kChainEvent[] = L"Local\\ZkFloorChain";
constexpr wchar_t kHopEvent[] = L"Local\\ZkFloorHop";
constexpr wchar_t kBridgeEvent[] = L"Local\\ZkFloorBridge";
constexpr const wchar_t* kProperties[] = {L"ZkFloorOne", L"ZkFloorTwo", L"ZkFloorThree"};
enum HotKeyId { kSingle = 1, kChain, kChainAndBridge, kSwitcherSignal };

HDESK g_desk2 = nullptr;
HANDLE g_chain = nullptr;
HANDLE g_hop = nullptr;
HANDLE g_switcherSignal = nullptr;
volatile ULONG_PTR g_read = 0;

// What the controller's message routing reads before a message reaches its handler.
void ReadProperties(HWND window) {
    for (const wchar_t* name : kProperties)
        g_read = reinterpret_cast<ULONG_PTR>(::GetPropW(window, name));
}

LRESULT CALLBACK BareProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_HOTKEY) {
        ReadProperties(window);
        if (wParam == kSingle) ::SwitchDesktop(g_desk2);
        if (wParam == kChain) ::SetEvent(g_chain);
        if (wParam == kChainAndBridge) ::SetEvent(g_hop);
        if (wParam == kSwitcherSignal) ::SetEvent(g_switcherSignal);
        return 0;
    }
    if (message == WM_COPYDATA) {
        if (g_desk2 != nullptr) {
            ReadProperties(window);
            ::SwitchDesktop(g_desk2);
        }
        return TRUE;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int Bare(bool floors) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = &BareProcedure;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = kBareClass;
    ::RegisterClassW(&wc);
    const HWND window = ::CreateWindowExW(WS_EX_TOOLWINDOW, kBareClass, kBareCaption, WS_POPUP, 0,
                                          0, 1, 1, nullptr, nullptr, wc.hInstance, nullptr);
    if (floors) {  // beside Zelkova2, whose desk2 it opens, on keys of its own
        g_desk2 = ::OpenDesktopW(L"desk2", 0, FALSE, DESKTOP_SWITCHDESKTOP);
        for (int i = 0; i < 3; ++i)
            ::SetPropW(window, kProperties[i], reinterpret_cast<HANDLE>(ULONG_PTR{1} << i));
        g_chain = ::CreateEventW(nullptr, FALSE, FALSE, kChainEvent);
        g_hop = ::CreateEventW(nullptr, FALSE, FALSE, kHopEvent);
        ::RegisterHotKey(window, kSingle, MOD_CONTROL | MOD_ALT, kSingleKey);
        ::RegisterHotKey(window, kChain, MOD_CONTROL | MOD_ALT, kChainKey);
        ::RegisterHotKey(window, kChainAndBridge, MOD_CONTROL | MOD_ALT, kChainAndBridgeKey);
        g_switcherSignal =
            ::OpenEventA(EVENT_MODIFY_STATE, FALSE, (kPrefix + "Switcher1SwitchTo2").c_str());
        ::RegisterHotKey(window, kSwitcherSignal, MOD_CONTROL | MOD_ALT, kSwitcherSignalKey);
    }
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageW(&message);
    return 0;
}

int Relay(const wchar_t* from, const wchar_t* to) {
    const HANDLE wake = ::CreateEventW(nullptr, FALSE, FALSE, from);
    const bool toWindow = std::wstring(to) == L"window";
    const HANDLE next = toWindow ? nullptr : ::CreateEventW(nullptr, FALSE, FALSE, to);
    HWND window = nullptr;
    const std::string text = kPrefix + "SwitchToDesktop2";
    COPYDATASTRUCT data{0, static_cast<DWORD>(text.size()), const_cast<char*>(text.data())};
    while (::WaitForSingleObject(wake, INFINITE) == WAIT_OBJECT_0) {
        if (!toWindow) {
            ::SetEvent(next);
            continue;
        }
        if (window == nullptr) window = ::FindWindowW(kBareClass, kBareCaption);
        ::SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    }
    return 0;
}

Floors::Floors() {
    const std::wstring program = BenchProgram();
    processes_ = {Start(program, L"bare floors"),
                  Start(program, L"relay " + std::wstring(kChainEvent) + L" window"),
                  Start(program, L"relay " + std::wstring(kHopEvent) + L" " + kBridgeEvent),
                  Start(program, L"relay " + std::wstring(kBridgeEvent) + L" window")};
    ready_ = WaitForWindow(kBareCaption, processes_[0]) != nullptr;
    ::Sleep(500);  // the relays waiting
}

Floors::~Floors() {
    for (const HANDLE process : processes_) {
        if (process == nullptr) continue;
        ::TerminateProcess(process, 0);
        ::CloseHandle(process);
    }
}

}  // namespace zk::bench
