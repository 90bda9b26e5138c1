#include "contract/backends.h"
#include "platform/sim/sim_os.h"

namespace zk::contract {

Backend SimBackend() {
    Backend b;
    b.name = "Sim";
    b.make = [] { return std::make_unique<sim::SimOs>(); };
    b.holdHotKeyOn = [](Os& os, const Text& desktop, std::uint32_t modifiers, std::uint32_t key) {
        auto& sim = static_cast<sim::SimOs&>(os);
        sim.SetHotKeyScope(sim::HotKeyScope::Desktop);  // as both Wines do
        const bool registered = sim.HoldHotKeyInOtherProcess(modifiers, key, desktop);
        return HotKeyHolder{[registered] { return std::pair{registered, false}; }};
    };
    b.recorderPath = [](Os& os) {
        const Text path = u"C:\\Tools\\recorder.exe";
        static_cast<sim::SimOs&>(os).AddFile(path);
        return path;
    };
    b.observe = [](Os& os, const ProcessInformation& pi) -> std::optional<Recorded> {
        for (const auto& p : static_cast<sim::SimOs&>(os).StartedProcesses()) {
            if (p.processId == pi.dwProcessId) {
                return Recorded{p.commandLine, p.startupInfo.lpDesktop.value_or(u""),
                                p.startupInfo.lpTitle.value_or(u"")};
            }
        }
        return std::nullopt;
    };
    return b;
}

#if !defined(_WIN32)
std::vector<Backend> Backends() {
    return {SimBackend()};
}
#endif

}  // namespace zk::contract
