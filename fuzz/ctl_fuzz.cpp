// The control tool's command line and its hotkey parser. What must hold: a command line gets an
// exit code of the tool's and never throws; bad input gets exactly one line on standard error;
// a combination that parses is written back the same way and parses to itself again.
//
// Input: words separated by 0x00.
#include <string>
#include <vector>

#include "platform/sim/sim_os.h"
#include "shared/hotkey_text.h"
#include "zelkovactl/ctl.h"

namespace {

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zk;
    std::vector<std::string> args(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            args.emplace_back();
        } else {
            args.back().push_back(static_cast<char>(data[i]));
        }
    }
    for (const std::string& word : args) {
        std::string error;
        const auto combo = companion::TryParseHotKey(word, error);
        Check(combo.has_value() == error.empty());
        if (!combo) continue;
        const std::string text = companion::FormatHotKey(*combo);
        if (text.find("key ") != std::string::npos) continue;
        const auto again = companion::TryParseHotKey(text, error);
        Check(again && again->key == combo->key && again->modifiers == combo->modifiers);
    }
    if (args.size() > 0 && (args[0] == "start" || args[0] == "restart")) return 0;  // no time
    sim::SimOs os;
    os.SetModuleFileName(u"C:\\Program Files\\Zelkova2\\zelkovactl.exe");
    ctl::StringOutput out, err;
    const int code = ctl::Ctl(os, out, err).Run(args);
    Check(code >= ctl::kExitOk && code <= ctl::kExitNoEffect);
    if (code == ctl::kExitUsage) {
        Check(std::count(err.Text().begin(), err.Text().end(), '\n') == 1);
    }
    return 0;
}
