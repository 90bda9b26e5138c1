// Benchmarks, reported as ratios measured in one run:
//  - a message that no receiver wants, through the subclassed window against a bare window of
//    the same class doing the same system work (the dispatcher's own cost);
//  - the controller's handling of a 100 MB WM_COPYDATA payload against a command-sized one,
//    in time and in bytes allocated (a payload longer than any command must cost nothing).
// Runs on the simulated session, and under Wine on the real system as well.

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "controller/frm_zk.h"
#include "platform/sim/sim_os.h"
#include "winsupport/m_subclass.h"
#include "winsupport/process_context.h"
#if defined(_WIN32)
#include "platform/win32/win32_os.h"
#endif

namespace {

std::atomic<std::size_t> g_allocated{0};

}  // namespace

void* operator new(std::size_t size) {
    g_allocated += size;
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace zk {
namespace {

using Clock = std::chrono::steady_clock;

// Nanoseconds per call, the best of five rounds.
double TimePerCall(int calls, const std::function<void()>& call) {
    double best = 1e300;
    for (int round = 0; round < 5; ++round) {
        const auto start = Clock::now();
        for (int i = 0; i < calls; ++i)
            call();
        const double ns = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
        best = std::min(best, ns / calls);
    }
    return best;
}

Os* g_os = nullptr;
Lresult ZK_CALLBACK Plain(Hwnd w, std::uint32_t m, Wparam wp, Lparam lp) {
    return m == WmUser ? 1 : g_os->DefWindowProcW(w, m, wp, lp);
}

struct Receiver : ISubclass {
    std::int32_t MsgResponse(std::int32_t&) override { return CallOriginalAfter; }
};

void DispatcherCost(const char* backend, Os& os) {
    g_os = &os;
    ProcessContext context(os);
    (void)os.RegisterClassW(u"ZkBench", &Plain, os.GetModuleHandleW());
    const Hwnd bare = os.CreateWindowExW(0, u"ZkBench", u"bare", 0, nullptr, os.GetModuleHandleW());
    const Hwnd routed =
        os.CreateWindowExW(0, u"ZkBench", u"routed", 0, nullptr, os.GetModuleHandleW());
    auto receiver = std::make_shared<Receiver>();
    MSubclass::AttachReceiver(*receiver, routed, WmHotKey);
    MSubclass::AttachReceiver(*receiver, routed, WmCopyData);
    const int calls = 20000;
    const double plain = TimePerCall(calls, [&] { (void)os.SendMessageW(bare, WmUser, 0, 0); });
    const double through = TimePerCall(calls, [&] { (void)os.SendMessageW(routed, WmUser, 0, 0); });
    std::printf(
        "%-6s unwanted message, subclassed/bare window: %5.2fx  (%.0f ns against %.0f ns)\n",
        backend, through / plain, through, plain);
    MSubclass::DetachReceiver(*receiver, routed, WmCopyData);
    MSubclass::DetachReceiver(*receiver, routed, WmHotKey);
    (void)os.DestroyWindow(routed);
    (void)os.DestroyWindow(bare);
}

void HostilePayloadCost() {
    sim::SimOs os;
    for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe"}) {
        os.AddFile(Text(u"C:\\Program Files\\Zelkova2\\") + file);
    }
    ProcessContext context(os);
    auto form = frmZK::Load(os);
    const std::string command = "Local\\larchmont_SwitchToDesktop9";  // as long as a command
    const std::string hostile(100u * 1024 * 1024, 'A');
    auto handle = [&](const std::string& text) {
        const CopyDataStruct data{0, static_cast<std::uint32_t>(text.size()), text.data()};
        (void)form->WindowProc(form->hWnd(), static_cast<std::int32_t>(WmCopyData), 0,
                               reinterpret_cast<Lparam>(&data));
    };
    const double small = TimePerCall(2000, [&] { handle(command); });
    const double big = TimePerCall(2000, [&] { handle(hostile); });
    g_allocated = 0;
    handle(command);
    const std::size_t smallBytes = g_allocated;
    g_allocated = 0;
    handle(hostile);
    const std::size_t bigBytes = g_allocated;
    std::printf(
        "sim    100 MB payload/command-sized payload: %5.2fx time (%.0f ns against %.0f ns), "
        "%zu against %zu bytes allocated\n",
        big / small, big, small, bigBytes, smallBytes);
}

}  // namespace
}  // namespace zk

int main() {
    zk::sim::SimOs sim;
    zk::DispatcherCost("sim", sim);
#if defined(_WIN32)
    zk::Win32Os real;
    zk::DispatcherCost("win32", real);
#endif
    zk::HostilePayloadCost();
    return 0;
}
