// A started controller on the simulated session takes any sequence of WM_COPYDATA payloads and
// hotkey messages. What must hold: the state changes only for the six exact command texts, and
// nothing reaches the window procedure's guard.
//
// Input: payloads separated by 0xFF; a payload that starts with 0xFE is a WM_HOTKEY instead,
// its next byte the hotkey id.
#include <string>
#include <vector>

#include "controller/frm_zk.h"
#include "platform/sim/sim_os.h"
#include "winsupport/process_context.h"

namespace {

using namespace zk;

const std::string kPrefix = "Local\\larchmont_";

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sim::SimOs os;
    for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe", u"ZelkovaError.exe"})
        os.AddFile(Text(u"C:\\Program Files\\Zelkova2\\") + file);
    int reported = 0;
    ProcessContext context(os, [&](const Text&) { ++reported; });
    auto form = frmZK::Load(os);
    const Hwnd window = form->hWnd();
    std::size_t start = 0;
    for (std::size_t i = 0; i <= size; ++i) {
        if (i < size && data[i] != 0xFF) continue;
        const std::string payload(reinterpret_cast<const char*>(data) + start, i - start);
        start = i + 1;
        if (form->unloaded()) break;
        const std::int16_t current = form->record().CurrentDesk;
        const std::int16_t previous = form->record().PreviousDesk;
        const int reloads = os.journal().Count("RegOpenKeyExW");
        if (!payload.empty() && static_cast<std::uint8_t>(payload[0]) == 0xFE) {
            const Wparam id = payload.size() > 1 ? static_cast<std::uint8_t>(payload[1]) : 0;
            (void)os.PostMessageW(window, WmHotKey, id, 0);
            (void)os.RunMessageLoop([&] { return RunMessageLoop(os); });
            Check(form->record().CurrentDesk == current);
            continue;
        }
        (void)os.SendCopyData(window, payload);
        const bool isCommand = payload.rfind(kPrefix, 0) == 0;
        const std::string name = isCommand ? payload.substr(kPrefix.size()) : std::string();
        if (name.size() == 16 && name.rfind("SwitchToDesktop", 0) == 0 && name[15] >= '1' &&
            name[15] <= '4') {
            Check(form->record().CurrentDesk == name[15] - '0');
        } else if (name == "Shutdown") {
            Check(form->unloaded());
        } else {
            Check(form->record().CurrentDesk == current);
            Check(form->record().PreviousDesk == previous);
            Check(name == "ReadReg" || os.journal().Count("RegOpenKeyExW") == reloads);
        }
    }
    Check(reported == 0);
    return 0;
}
