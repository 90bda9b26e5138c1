#include "zelkovactl/ctl.h"

#include <algorithm>
#include <deque>

#include "common/autostart.h"
#include "common/companion_settings.h"
#include "common/launcher.h"
#include "common/log_reader.h"
#include "common/shared_state.h"
#include "common/signals.h"
#include "desktop/companions.h"
#include "diagnostics/win_api_error.h"
#include "hotkeys/hotkeys.h"
#include "platform/handles.h"
#include "programs/programs.h"
#include "signals/protocol.h"
#include "zelkovactl/hotkey_text.h"

namespace zk::ctl {
namespace {

constexpr char kHelp[] =
    "Usage: zelkovactl COMMAND\n"
    "\n"
    "Commands for a running Zelkova2 (from any desktop):\n"
    "  switch N              show desktop N (1 to 4)\n"
    "  reload                read the hotkey settings again\n"
    "  shutdown              end Zelkova2\n"
    "  start [--wait]        show desktop 1, then start Zelkova2 (--wait: until it ends)\n"
    "  restart               end Zelkova2 and start it again from desktop 1\n"
    "\n"
    "Settings:\n"
    "  hotkeys               list the six hotkeys\n"
    "  hotkey set ID COMBO   set hotkey ID (1 to 6) to COMBO, e.g. Ctrl+Alt+F9\n"
    "  hotkey reset ID|all   give hotkey ID, or all, its default again\n"
    "  autostart on|off      start Zelkova2 when you log on, or not\n"
    "\n"
    "Information:\n"
    "  status                whether Zelkova2 runs, the desktop shown, the desktops there are\n"
    "  log [--tail N]        the newest N entries of the error log (20 if not given)\n";

// How long a command may take to show its effect.
constexpr std::uint32_t kEffectWithin = 5000;
constexpr std::uint32_t kPoll = 50;
constexpr std::uint32_t kAnswerWithin = 30000;

// One line of a system text, without the line end that most of them carry.
std::string Line(const Text& text) {
    std::string line = AsciiText(text);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.pop_back();
    return line + "\n";
}

// A whole number in [low, high], or nothing.
std::optional<int> Number(const std::string& text, int low, int high) {
    if (text.empty() || text.size() > 6 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const int n = std::stoi(text);
    if (n < low || n > high) return std::nullopt;
    return n;
}

}  // namespace

int Ctl::Run(const std::vector<std::string>& args) {
    if (args.empty()) return Usage("no command given");
    const std::string& command = args[0];
    const std::size_t count = args.size();
    if (command == "--help" || command == "-h" || command == "help") {
        out_ << kHelp;
        return kExitOk;
    }
    if (command == "switch" && count == 2) return Switch(args[1]);
    if (command == "reload" && count == 1) return Reload();
    if (command == "shutdown" && count == 1) return Shutdown();
    if (command == "start" && count == 1) return Start(false);
    if (command == "start" && count == 2 && args[1] == "--wait") return Start(true);
    if (command == "restart" && count == 1) return Restart();
    if (command == "hotkeys" && count == 1) return HotKeys();
    if (command == "hotkey" && count == 4 && args[1] == "set") return SetHotKey(args[2], args[3]);
    if (command == "hotkey" && count == 3 && args[1] == "reset") return ResetHotKey(args[2]);
    if (command == "status" && count == 1) return Status();
    if (command == "log") return Log(args);
    if (command == "autostart" && count == 2) return Autostart(args[1]);
    static const char* const known[] = {"switch",  "reload", "shutdown", "start",    "restart",
                                        "hotkeys", "hotkey", "status",   "autostart"};
    const bool isKnown = std::find(std::begin(known), std::end(known), command) != std::end(known);
    return Usage(isKnown ? "wrong arguments for '" + command + "'"
                         : "unknown command '" + command + "'");
}

// One line, whatever the arguments held: their control characters show as '?'.
int Ctl::Usage(const std::string& problem) {
    std::string line = problem;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; }, '?');
    err_ << "zelkovactl: " << line << " (see zelkovactl --help)\n";
    return kExitUsage;
}

bool Ctl::Running() {
    return !companion::ControllerProcessIds(os_).empty();
}

std::string Ctl::InputDesktop() {
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, DesktopReadObjects));
    return input ? AsciiText(os_.GetUserObjectInformationW(input.get())) : std::string();
}

// The controller block's events reach Zelkova2 from every desktop, through its bridge.
int Ctl::Signal(std::int16_t index) {
    EventNames names;
    names.InitEventNames();
    UniqueKernelHandle event(os_, os_.OpenEventA(EventModifyState, false,
                                                 os_.WideCharToMultiByte(names.EventName(index))));
    if (!event || !Running()) {
        err_ << kNotRunning << "\n";
        return kExitNotRunning;
    }
    if (!os_.SetEvent(event.get())) {
        err_ << "zelkovactl: could not signal Zelkova2\n";
        return kExitFailed;
    }
    return kExitOk;
}

// Done when the input desktop is the one asked for.
int Ctl::Switch(const std::string& desktop) {
    const auto n = Number(desktop, 1, kDesktopCount);
    if (!n) {
        return Usage("switch: the desktop is a number from 1 to " + std::to_string(kDesktopCount) +
                     ", not '" + desktop + "'");
    }
    const std::string target = AsciiText(kDesktopNames[*n - 1]);
    if (const int status = Signal(SwitchCommand(static_cast<std::int16_t>(*n)))) return status;
    for (std::uint32_t waited = 0; waited < kEffectWithin; waited += kPoll) {
        if (InputDesktop() == target) return kExitOk;
        os_.Sleep(kPoll);
    }
    const auto ids = companion::ControllerProcessIds(os_);
    if (!ids.empty() && companion::SharedState(os_, ids.front()).Current() == *n) {
        err_ << "zelkovactl: Zelkova2 switched to " << target << ", but the system still shows "
             << InputDesktop() << "\n";
    } else {
        err_ << "zelkovactl: Zelkova2 did not take the command; its bridge (DeskHerald.exe 5) "
                "may not be running. 'zelkovactl restart' starts it again.\n";
    }
    return kExitNoEffect;
}

// Done when the bridge has forwarded the reload and told the switchers.
int Ctl::Reload() {
    companion::Signals signals(os_);
    const Handle reloaded = signals.OwnEvent(companion::ReloadedEventName());
    (void)os_.WaitForSingleObject(reloaded, 0);  // an old signal says nothing about this one
    if (const int status = Signal(kReadRegCommand)) return status;
    if (reloaded != nullptr && os_.WaitForSingleObject(reloaded, kEffectWithin) == WaitObject0) {
        return kExitOk;
    }
    err_ << "zelkovactl: Zelkova2 did not confirm the reload; its bridge (DeskHerald.exe 5) may "
            "not be running.\n";
    return kExitNoEffect;
}

// Done when a controller process has ended, and its companions with it (so that its files can
// be replaced or removed right after).
int Ctl::Shutdown() {
    std::vector<UniqueKernelHandle> processes;
    std::vector<Handle> handles;
    std::vector<UniqueKernelHandle> companions;
    for (const std::uint32_t id : companion::ControllerProcessIds(os_)) {
        processes.emplace_back(os_, os_.OpenProcess(Synchronize, false, id));
        if (processes.back()) handles.push_back(processes.back().get());
        companion::SharedState state(os_, id);
        for (const std::uint32_t companion : state.Block().companions) {
            if (companion != 0)
                companions.emplace_back(os_, os_.OpenProcess(Synchronize, false, companion));
        }
    }
    if (const int status = Signal(kShutdownCommand)) return status;
    if (!handles.empty() &&
        os_.WaitForMultipleObjects(handles, false, kEffectWithin) < WaitObject0 + handles.size()) {
        for (const auto& companion : companions) {
            if (companion) (void)os_.WaitForSingleObject(companion.get(), kEffectWithin);
        }
        return kExitOk;
    }
    err_ << "zelkovactl: Zelkova2 did not end; its bridge (DeskHerald.exe 5) may not be "
            "running. Ending Zelkova2.exe in the Task Manager ends its companions too.\n";
    return kExitNoEffect;
}

int Ctl::Start(bool wait) {
    companion::Launch launch = companion::StartZelkova(os_, kAnswerWithin);
    switch (launch.result) {
        case companion::LaunchResult::AlreadyRunning:
            out_ << "Zelkova2 is running already.\n";
            return kExitOk;
        case companion::LaunchResult::Failed:
            err_ << "zelkovactl: Zelkova2.exe could not be started: "
                 << Line(ApiErrorText(os_, launch.error));
            return kExitFailed;
        case companion::LaunchResult::NoAnswer:
            err_ << "zelkovactl: Zelkova2 started but did not come up; see 'zelkovactl log'.\n";
            return kExitFailed;
        case companion::LaunchResult::Started:
            break;
    }
    if (launch.missing != 0) {
        const bool pilot = (launch.missing & companion::kPilotMissing) != 0;
        err_ << "zelkovactl: Zelkova2 runs without all of its companions: "
             << AsciiText(ProgramFileName(pilot ? Program::Pilot : Program::Herald))
             << " is missing beside Zelkova2.exe. See 'zelkovactl log'.\n";
        return kExitNoEffect;
    }
    out_ << "Zelkova2 runs, with desktop 1 shown.\n";
    if (!wait) return kExitOk;
    (void)os_.WaitForSingleObject(launch.process.get(), Infinite);
    return kExitOk;
}

int Ctl::Restart() {
    if (Running()) {
        if (const int status = Shutdown()) return status;
    }
    return Start(false);
}

int Ctl::HotKeys() {
    for (int id = 1; id <= kHotKeyCount; ++id) {
        std::int16_t key = 0, modifiers = 0;
        const bool stored = ReadHotKeyPair(registry_, id, key, modifiers);
        if (!stored) {
            key = HotKeySettingOf(id).defaultKey;
            modifiers = HotKeySettingOf(id).defaultModifiers;
        }
        std::string action = HotKeySettingOf(id).name;
        action.resize(18, ' ');
        out_ << id << "  " << action << FormatHotKey({modifiers, key})
             << (stored ? "" : "  (default)") << "\n";
    }
    return kExitOk;
}

bool Ctl::WriteHotKey(int id, std::int16_t key, std::int16_t modifiers) {
    const HotKeySetting& setting = HotKeySettingOf(id);
    std::uint32_t type = RegDword;
    if (!registry_.CreateKey(HkeyCurrentUser(), kSettingsKey) ||
        !registry_.WriteValue(HkeyCurrentUser(), kSettingsKey, setting.keyValue, type,
                              std::int32_t{key}) ||
        !registry_.WriteValue(HkeyCurrentUser(), kSettingsKey, setting.modifierValue, type,
                              std::int32_t{modifiers})) {
        err_ << "zelkovactl: could not write the setting: " << Line(registry_.LastErrorText());
        return false;
    }
    return true;
}

int Ctl::SetHotKey(const std::string& idText, const std::string& comboText) {
    const auto id = Number(idText, 1, kHotKeyCount);
    if (!id) return Usage("hotkey set: the id is a number from 1 to 6, not '" + idText + "'");
    std::string error;
    const auto combo = ParseHotKey(comboText, error);
    if (!combo) return Usage("hotkey set: " + error);
    if (!WriteHotKey(*id, combo->key, combo->modifiers)) return kExitFailed;
    out_ << "Hotkey " << *id << " (" << HotKeySettingOf(*id).name << ") is now "
         << FormatHotKey(*combo) << ".\n";
    return Running() ? Reload() : kExitOk;
}

int Ctl::ResetHotKey(const std::string& which) {
    int first = 1, last = kHotKeyCount;
    if (which != "all") {
        const auto id = Number(which, 1, kHotKeyCount);
        if (!id) return Usage("hotkey reset: give an id from 1 to 6 or 'all', not '" + which + "'");
        first = last = *id;
    }
    for (int id = first; id <= last; ++id) {
        const HotKeySetting& setting = HotKeySettingOf(id);
        if (!WriteHotKey(id, setting.defaultKey, setting.defaultModifiers)) return kExitFailed;
        out_ << "Hotkey " << id << " (" << setting.name << ") is "
             << FormatHotKey({setting.defaultModifiers, setting.defaultKey}) << " again.\n";
    }
    return Running() ? Reload() : kExitOk;
}

int Ctl::Status() {
    out_ << (Running() ? "Zelkova2 is running" : kNotRunning) << "\n";
    const std::string input = InputDesktop();
    if (!input.empty()) out_ << "Input desktop: " << input << "\n";
    std::string list;
    for (const Text& name : os_.EnumDesktopsW()) {
        std::string entry = AsciiText(name);
        for (int desk = 1; desk <= kDesktopCount; ++desk) {
            if (name == kDesktopNames[desk - 1]) {
                entry += " (" + std::to_string(desk) + ": " +
                         AsciiText(companion::DesktopName(registry_, desk)) + ")";
            }
        }
        list += (list.empty() ? "" : ", ") + entry;
    }
    out_ << "Desktops: " << list << "\n";
    return kExitOk;
}

int Ctl::Log(const std::vector<std::string>& args) {
    int tail = 20;
    if (args.size() == 3 && args[1] == "--tail") {
        const auto n = Number(args[2], 1, 100000);
        if (!n) return Usage("log: --tail takes a number of entries, not '" + args[2] + "'");
        tail = *n;
    } else if (args.size() != 1) {
        return Usage("wrong arguments for 'log'");
    }
    const companion::LogFile log = companion::ReadLog(os_);
    const auto entries = log.bytes ? companion::LogEntries(*log.bytes) : std::vector<std::string>{};
    if (entries.empty()) {
        out_ << "Nothing has been logged.\n";
        return kExitOk;
    }
    const std::size_t first = entries.size() > static_cast<std::size_t>(tail)
                                  ? entries.size() - static_cast<std::size_t>(tail)
                                  : 0;
    for (std::size_t i = first; i < entries.size(); ++i)
        out_ << entries[i] << "\n";
    return kExitOk;
}

int Ctl::Autostart(const std::string& state) {
    if (state != "on" && state != "off")
        return Usage("autostart: say on or off, not '" + state + "'");
    const bool on = state == "on";
    if (!companion::SetAutostart(os_, registry_, on)) {
        err_ << "zelkovactl: could not write the Run key: " << Line(registry_.LastErrorText());
        return kExitFailed;
    }
    if (on) {
        out_ << "Zelkova2 starts when you log on: " << AsciiText(companion::AutostartCommand(os_))
             << "\n";
    } else {
        out_ << "Zelkova2 does not start when you log on.\n";
    }
    return kExitOk;
}

}  // namespace zk::ctl
