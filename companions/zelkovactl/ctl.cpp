#include "zelkovactl/ctl.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <functional>
#include <optional>

#include "desktop/companions.h"
#include "diagnostics/log_reader.h"
#include "diagnostics/win_api_error.h"
#include "hotkeys/hotkeys.h"
#include "platform/handles.h"
#include "shared/companion_settings.h"
#include "shared/hotkey_text.h"
#include "shared/hotkeys_in_force.h"
#include "shared/news.h"
#include "shared/shown_desktop.h"
#include "shared/signals.h"
#include "shared/user_windows.h"
#include "shared/window_finder.h"
#include "signals/shared_state.h"
#include "tool_support/autostart.h"
#include "tool_support/launcher.h"
#include "tool_support/reload.h"
#include "vocabulary/programs.h"
#include "vocabulary/protocol.h"

namespace zk::ctl {

using companion::FormatHotKey;
using companion::HotKeyCombo;
using companion::TryParseHotKey;

namespace {

// A command's effect is waited for until it comes or the controller ends; only a controller that
// lives on without taking the command is given up on, after this long (a busy machine takes
// seconds, not half a minute).
constexpr std::uint32_t kAnswerWithin = 30000;
// How long the system may take to show a desktop that Zelkova2 has switched to.
constexpr std::uint32_t kShownWithin = 5000;
constexpr std::uint32_t kPoll = 50;

// One line of a system text, without the line end that most of them carry.
std::string Line(const Text& text) {
    std::string line = Utf8Text(text);
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

// The commands, one row each, in the order of the help. A row matches when the command line
// begins with its name's words and the rest are within its counts of arguments; its handler
// checks what the arguments say. In a help line "{desktops}" and "{hotkeys}" stand for the
// numbers of desktops and hotkeys.
const std::vector<Ctl::Command>& Ctl::Commands() {
    static const std::vector<Command> commands = {
        {"switch", "N", "show desktop N (1 to {desktops})", kRunning, 1, 1, &Ctl::Switch},
        {"reload", "", "read the hotkey settings again", kRunning, 0, 0, &Ctl::Reload},
        {"find", "TEXT",
         "show the first window whose title or program holds TEXT, as the finder does", kRunning, 1,
         16, &Ctl::Find},
        {"shutdown", "", "end Zelkova2 (and name the windows left out of reach)", kRunning, 0, 0,
         &Ctl::Shutdown},
        {"start", "[--wait]", "show desktop 1, then start Zelkova2 (--wait: until it ends)",
         kRunning, 0, 1, &Ctl::Start},
        {"restart", "", "end Zelkova2 and start it again from desktop 1", kRunning, 0, 0,
         &Ctl::Restart},
        {"hotkeys", "", "list the {hotkeys} hotkeys", kSettings, 0, 0, &Ctl::HotKeys},
        {"hotkey set", "ID COMBO", "set hotkey ID (1 to {hotkeys}) to COMBO, e.g. Ctrl+Alt+F9",
         kSettings, 2, 2, &Ctl::SetHotKey},
        {"hotkey reset", "ID|all", "give hotkey ID, or all, its default again", kSettings, 1, 1,
         &Ctl::ResetHotKey},
        {"hotkey preset", "keypad|laptop",
         "store every hotkey for a keyboard with a numeric keypad (the defaults) or without one "
         "(Ctrl+Alt+1 to {desktops})",
         kSettings, 1, 1, &Ctl::PresetHotKeys},
        {"autostart", "on|off", "start Zelkova2 when you log on, or not", kSettings, 1, 1,
         &Ctl::Autostart},
        {"status", "", "whether Zelkova2 runs, the desktop shown, the desktops there are",
         kInformation, 0, 0, &Ctl::Status},
        {"windows", "[--json]", "every desktop's windows: desktop, program, process id, title",
         kInformation, 0, 1, &Ctl::Windows},
        {"log", "[--tail N]", "the newest N entries of the error log (20 if not given)",
         kInformation, 0, 2, &Ctl::Log},
    };
    return commands;
}

std::string Ctl::Help() {
    constexpr const char* kGroups[] = {
        "Commands for a running Zelkova2 (from any desktop):", "Settings:", "Information:"};
    std::string help = "Usage: zelkovactl COMMAND\n";
    for (int group = kRunning; group <= kInformation; ++group) {
        help += std::string("\n") + kGroups[group] + "\n";
        for (const Command& command : Commands()) {
            if (command.group != group) continue;
            std::string usage = std::string(command.name) + " " + command.arguments;
            usage.resize(std::max<std::size_t>(usage.size() + 1, 22), ' ');
            std::string line = command.help;
            for (const auto& [token, number] : {std::pair{"{desktops}", kDesktopCount},
                                                std::pair{"{hotkeys}", kAllHotKeyCount}}) {
                if (const auto at = line.find(token); at != std::string::npos)
                    line.replace(at, std::strlen(token), std::to_string(number));
            }
            help += "  " + usage + line + "\n";
        }
    }
    return help;
}

int Ctl::Run(const std::vector<std::string>& args) {
    if (args.empty()) return Usage("no command given");
    const std::string& first = args[0];
    if (first == "--help" || first == "-h" || first == "help") {
        out_ << Help();
        return kExitOk;
    }
    bool known = false;
    for (const Command& command : Commands()) {
        std::vector<std::string> words;
        for (std::string_view name = command.name; !name.empty();) {
            const auto blank = std::min(name.find(' '), name.size());
            words.emplace_back(name.substr(0, blank));
            name.remove_prefix(std::min(blank + 1, name.size()));
        }
        known = known || words.front() == first;
        if (args.size() < words.size() || !std::equal(words.begin(), words.end(), args.begin()))
            continue;
        const Args rest(args.begin() + static_cast<std::ptrdiff_t>(words.size()), args.end());
        if (rest.size() >= command.fewest && rest.size() <= command.most)
            return (this->*command.handler)(rest);
    }
    return Usage(known ? "wrong arguments for '" + first + "'" : "unknown command '" + first + "'");
}

// One line, whatever the arguments held: their control characters show as '?'.
int Ctl::Usage(const std::string& problem) {
    std::string line = problem;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; }, '?');
    err_ << "zelkovactl: " << line << " (see zelkovactl --help)\n";
    return kExitUsage;
}

// Not running only when the system's list of processes holds no controller.
bool Ctl::Running() {
    const auto ids = companion::TryControllerProcessIds(os_);
    return !ids || !ids->empty();
}

std::vector<UniqueKernelHandle> Ctl::ControllerProcesses() {
    std::vector<UniqueKernelHandle> processes;
    for (const std::uint32_t id :
         companion::TryControllerProcessIds(os_).value_or(std::vector<std::uint32_t>{})) {
        processes.emplace_back(os_, os_.OpenProcess(Synchronize, false, id));
        if (!processes.back()) processes.pop_back();
    }
    return processes;
}

// Until `done`, or until a controller has ended or `within` milliseconds have passed: false.
bool Ctl::Await(const std::function<bool()>& done, std::uint32_t within) {
    const auto processes = ControllerProcesses();
    std::vector<Handle> handles;
    for (const auto& process : processes)
        handles.push_back(process.get());
    for (std::uint32_t waited = 0;; waited += kPoll) {
        if (done()) return true;
        if (waited >= within) return false;
        if (handles.empty()) {
            os_.Sleep(kPoll);
        } else if (os_.WaitForMultipleObjects(handles, false, kPoll) != WaitTimeout) {
            return done();
        }
    }
}

std::string Ctl::InputDesktop() {
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, DesktopReadObjects));
    return input ? Utf8Text(os_.GetUserObjectInformationW(input.get())) : std::string();
}

// The controller block's events reach Zelkova2 from every desktop, through its bridge.
int Ctl::Signal(std::int16_t index) {
    EventNames names;
    names.InitEventNames();
    UniqueKernelHandle event(os_, os_.OpenEventA(EventModifyState, false,
                                                 os_.WideCharToMultiByte(names.EventName(index))));
    const std::uint32_t error = os_.GetLastError();
    if (!Running()) {
        err_ << kNotRunning << "\n";
        return kExitNotRunning;
    }
    if (!event) {
        err_ << "zelkovactl: Zelkova2 runs, but its command could not be opened: "
             << Line(ApiErrorText(os_, error));
        return kExitFailed;
    }
    if (!os_.SetEvent(event.get())) {
        err_ << "zelkovactl: could not signal Zelkova2\n";
        return kExitFailed;
    }
    return kExitOk;
}

// Done when the input desktop is the one asked for.
int Ctl::Switch(const Args& args) {
    const std::string& desktop = args[0];
    const auto n = Number(desktop, 1, kDesktopCount);
    if (!n) {
        return Usage("switch: the desktop is a number from 1 to " + std::to_string(kDesktopCount) +
                     ", not '" + desktop + "'");
    }
    const std::string target = Utf8Text(kDesktopNames[*n - 1]);
    const auto ids = companion::TryControllerProcessIds(os_).value_or(std::vector<std::uint32_t>{});
    std::optional<SharedState> state;
    if (!ids.empty()) {
        // The controller takes the desktop the user sees as the one left, for "previous".
        state.emplace(os_, ids.front());
        companion::Signals signals(os_, os_);
        (void)companion::ShownDesktop(os_, *state).InStep(signals);
    }
    if (const int status = Signal(SwitchCommand(static_cast<std::int16_t>(*n)))) return status;
    // The bridge records the switch as it passes the command on; the system then shows the
    // desktop, or (as Wine 8) keeps showing "Default".
    const bool passed =
        Await([&] { return InputDesktop() == target || (state && state->Current() == *n); },
              kAnswerWithin);
    if (passed && Await([&] { return InputDesktop() == target; }, kShownWithin)) return kExitOk;
    if (passed) {
        err_ << "zelkovactl: Zelkova2 switched to " << target << ", but the system still shows "
             << InputDesktop() << "\n";
    } else {
        err_ << "zelkovactl: Zelkova2 did not take the command; its bridge (DeskHerald.exe 5) "
                "may not be running. 'zelkovactl restart' starts it again.\n";
    }
    return kExitNoEffect;
}

// Done when the bridge has forwarded the reload and told the switchers.
int Ctl::Reload(const Args&) {
    companion::Signals signals(os_, os_);
    companion::Reload reload(os_, signals);
    if (const int status = Signal(kReadRegCommand)) return status;
    if (Await([&] { return reload.Confirmed(0); }, kAnswerWithin)) return kExitOk;
    err_ << "zelkovactl: Zelkova2 did not confirm the reload; its bridge (DeskHerald.exe 5) may "
            "not be running.\n";
    return kExitNoEffect;
}

// Done when a controller process has ended, and its companions with it (so that its files can
// be replaced or removed right after).
// Windows cannot move a window to another desktop: what the user left on desktops 2 and on stays
// out of reach until Zelkova2 runs again, and the shutdown says so.
int Ctl::Shutdown(const Args&) {
    std::string left;
    for (int desk = 2; desk <= kDesktopCount; ++desk) {
        std::string titles;
        for (const auto& window : companion::UserWindowsOn(os_, desk))
            titles += (titles.empty() ? "" : ", ") + Utf8Text(window.title);
        if (!titles.empty()) left += "\n  desktop " + std::to_string(desk) + ": " + titles;
    }
    const int status = EndZelkova();
    if (status == kExitOk && !left.empty())
        out_ << "Until Zelkova2 runs again, these windows stay out of reach:" << left << "\n";
    return status;
}

int Ctl::EndZelkova() {
    const auto processes = ControllerProcesses();
    std::vector<Handle> handles;
    for (const auto& process : processes)
        handles.push_back(process.get());
    std::vector<UniqueKernelHandle> companions;
    for (const std::uint32_t id :
         companion::TryControllerProcessIds(os_).value_or(std::vector<std::uint32_t>{})) {
        SharedState state(os_, id);
        for (const std::uint32_t companion : state.Block().companions) {
            if (companion != 0)
                companions.emplace_back(os_, os_.OpenProcess(Synchronize, false, companion));
        }
    }
    // The command's signal wakes one bridge: with two copies running, each copy's bridge takes
    // one, and the next is given once a copy has ended.
    do {
        if (const int status = Signal(kShutdownCommand)) return status;
        const std::uint32_t ended = handles.empty()
                                        ? WaitFailed
                                        : os_.WaitForMultipleObjects(handles, false, kAnswerWithin);
        if (ended >= WaitObject0 + handles.size()) {
            err_ << "zelkovactl: Zelkova2 did not end; its bridge (DeskHerald.exe 5) may not be "
                    "running. Ending Zelkova2.exe in the Task Manager ends its companions too.\n";
            return kExitNoEffect;
        }
        handles.erase(handles.begin() + static_cast<std::ptrdiff_t>(ended - WaitObject0));
    } while (!handles.empty());
    for (const auto& companion : companions) {
        if (companion) (void)os_.WaitForSingleObject(companion.get(), kAnswerWithin);
    }
    return kExitOk;
}

int Ctl::Start(const Args& args) {
    if (!args.empty() && args[0] != "--wait") return Usage("wrong arguments for 'start'");
    const bool wait = !args.empty();
    companion::Launch launch = companion::StartZelkova(os_, kAnswerWithin);
    switch (launch.result) {
        case companion::LaunchResult::AlreadyRunning:
            out_ << "Zelkova2 is running already.\n";
            return kExitOk;
        case companion::LaunchResult::ProgramsMissing:
            err_ << "zelkovactl: Zelkova2 cannot start: "
                 << Utf8Text(companion::MissingProgramsText(os_, launch.notFound)) << "\n";
            return kExitNoEffect;
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
        const bool pilot = (launch.missing & kPilotMissing) != 0;
        err_ << "zelkovactl: Zelkova2 runs without all of its companions: "
             << Utf8Text(ProgramFileName(pilot ? Program::Pilot : Program::Herald))
             << " is missing beside Zelkova2.exe. See 'zelkovactl log'.\n";
        return kExitNoEffect;
    }
    out_ << "Zelkova2 runs, with desktop 1 shown.\n";
    if (!wait) return kExitOk;
    (void)os_.WaitForSingleObject(launch.process.get(), Infinite);
    return kExitOk;
}

int Ctl::Restart(const Args&) {
    if (Running()) {
        if (const int status = EndZelkova()) return status;
    }
    return Start({});
}

// Each hotkey as stored, and as the running Zelkova2 holds it where that differs (a reload keeps
// a pair it cannot read); a stored pair that names no key is said to be one.
int Ctl::HotKeys(const Args&) {
    const auto status = companion::ReadHotKeyStatus(os_, registry_);
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const companion::HotKeyStatus& s = status[id - 1];
        std::string action = HotKeySettingOf(id).name;
        action.resize(18, ' ');
        out_ << id << "  " << action << FormatHotKey(s.stored) << (s.isStored ? "" : "  (default)");
        if (s.inForce && *s.inForce != s.stored)
            out_ << "  (in force: " << FormatHotKey(*s.inForce) << ")";
        if (!companion::NamesAKey(s.stored)) {
            out_ << "  stored as something that is not a key; 'zelkovactl hotkey reset " << id
                 << "' gives the default, " << FormatHotKey(companion::DefaultHotKey(id));
        }
        out_ << "\n";
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

int Ctl::SetHotKey(const Args& args) {
    const std::string& idText = args[0];
    const std::string& comboText = args[1];
    const auto id = Number(idText, 1, kAllHotKeyCount);
    if (!id) {
        return Usage("hotkey set: the id is a number from 1 to " + std::to_string(kAllHotKeyCount) +
                     ", not '" + idText + "'");
    }
    std::string error;
    const auto combo = TryParseHotKey(comboText, error);
    if (!combo) return Usage("hotkey set: " + error);
    if (!WriteHotKey(*id, combo->key, combo->modifiers)) return kExitFailed;
    out_ << "Hotkey " << *id << " (" << HotKeySettingOf(*id).name << ") is now "
         << FormatHotKey(*combo) << ".\n";
    return Running() ? Reload({}) : kExitOk;
}

int Ctl::ResetHotKey(const Args& args) {
    const std::string& which = args[0];
    int first = 1, last = kAllHotKeyCount;
    if (which != "all") {
        const auto id = Number(which, 1, kAllHotKeyCount);
        if (!id) {
            return Usage("hotkey reset: give an id from 1 to " + std::to_string(kAllHotKeyCount) +
                         " or 'all', not '" + which + "'");
        }
        first = last = *id;
    }
    for (int id = first; id <= last; ++id) {
        const HotKeySetting& setting = HotKeySettingOf(id);
        if (!WriteHotKey(id, setting.defaultKey, setting.defaultModifiers)) return kExitFailed;
        out_ << "Hotkey " << id << " (" << setting.name << ") is "
             << FormatHotKey({setting.defaultModifiers, setting.defaultKey}) << " again.\n";
    }
    return Running() ? Reload({}) : kExitOk;
}

int Ctl::PresetHotKeys(const Args& args) {
    const std::string& preset = args[0];
    if (preset != "keypad" && preset != "laptop")
        return Usage("hotkey preset: say keypad or laptop, not '" + preset + "'");
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const HotKeyCombo combo =
            preset == "laptop" ? companion::LaptopHotKey(id) : companion::DefaultHotKey(id);
        if (!WriteHotKey(id, combo.key, combo.modifiers)) return kExitFailed;
        out_ << "Hotkey " << id << " (" << HotKeySettingOf(id).name << ") is now "
             << FormatHotKey(combo) << ".\n";
    }
    return Running() ? Reload({}) : kExitOk;
}

int Ctl::Status(const Args&) {
    const auto ids = companion::TryControllerProcessIds(os_);
    out_ << (!ids ? kCannotTell : ids->empty() ? kNotRunning : "Zelkova2 is running") << "\n";
    const std::string input = InputDesktop();
    if (!input.empty()) out_ << "Input desktop: " << input << "\n";
    std::string list;
    for (const Text& name : os_.EnumDesktopsW()) {
        std::string entry = Utf8Text(name);
        if (const int desk = companion::DesktopNumberOf(name)) {
            entry += " (" + std::to_string(desk) + ": " +
                     Utf8Text(companion::DesktopName(registry_, desk)) + ")";
        }
        list += (list.empty() ? "" : ", ") + entry;
    }
    out_ << "Desktops: " << list << "\n";
    if (ids && !ids->empty()) {
        SharedState state(os_, ids->front());
        for (const companion::NewsWindow& news : companion::NewsBesides(os_, state.Block(), 0)) {
            out_ << "New on desktop " << news.desk << " ("
                 << Utf8Text(companion::DesktopName(registry_, news.desk))
                 << "): " << Utf8Text(news.title) << "\n";
        }
    }
    return kExitOk;
}

int Ctl::Log(const Args& args) {
    int tail = 20;
    if (args.size() == 2 && args[0] == "--tail") {
        const auto n = Number(args[1], 1, 100000);
        if (!n) return Usage("log: --tail takes a number of entries, not '" + args[1] + "'");
        tail = *n;
    } else if (!args.empty()) {
        return Usage("wrong arguments for 'log'");
    }
    const LogFile log = ReadLog(os_);
    if (const auto notice = LogUnwritableNotice(os_, log.path)) {
        std::string lines = Utf8Text(*notice);
        std::erase(lines, '\r');
        out_ << lines;
    }
    const auto entries = log.bytes ? LogEntries(*log.bytes) : std::vector<std::string>{};
    if (entries.empty()) {
        out_ << Utf8Text(kNothingLogged) << "\n";
        return kExitOk;
    }
    const std::size_t first = entries.size() > static_cast<std::size_t>(tail)
                                  ? entries.size() - static_cast<std::size_t>(tail)
                                  : 0;
    const auto pairs = companion::HotKeysAsTheyAre(os_, registry_);
    for (std::size_t i = first; i < entries.size(); ++i)
        out_ << Utf8Text(companion::ExplainLogEntry(os_, entries[i], pairs)) << "\n";
    return kExitOk;
}

namespace {

// A JSON string: quotes, backslashes and control characters escaped.
std::string Json(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            out += escaped;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

}  // namespace

int Ctl::Windows(const Args& args) {
    if (!args.empty() && args[0] != "--json") return Usage("wrong arguments for 'windows'");
    const bool json = !args.empty();
    std::string list;
    const auto ids = companion::TryControllerProcessIds(os_).value_or(std::vector<std::uint32_t>{});
    std::optional<SharedState> state;
    if (!ids.empty()) state.emplace(os_, ids.front());
    for (const companion::FoundWindow& w :
         companion::AllUserWindows(os_, state ? &state->Block() : nullptr)) {
        const std::string name = Utf8Text(companion::DesktopName(registry_, w.desk));
        if (json) {
            list += std::string(list.empty() ? "" : ",\n ") +
                    "{\"desktop\": " + std::to_string(w.desk) + ", \"desktopName\": " + Json(name) +
                    ", \"title\": " + Json(Utf8Text(w.title)) +
                    ", \"program\": " + Json(Utf8Text(w.program)) +
                    ", \"processId\": " + std::to_string(w.processId) +
                    ", \"news\": " + (w.news ? "true" : "false") + "}";
        } else {
            list += std::to_string(w.desk) + "  " + name + "  " + Utf8Text(w.program) + "  " +
                    std::to_string(w.processId) + "  " + Utf8Text(w.title) +
                    (w.news ? "  (new)" : "") + "\n";
        }
    }
    out_ << (json ? "[" + list + "]\n" : list);
    return kExitOk;
}

// The first window the finder would list for the words; its desktop is shown and its switcher
// brings it to the front.
int Ctl::Find(const Args& args) {
    std::string words;
    for (const std::string& word : args)
        words += (words.empty() ? "" : " ") + word;
    companion::WindowFinder finder(companion::AllUserWindows(os_));
    finder.SetQuery(TextFromUtf8(words));
    const companion::FoundWindow* found = finder.ChosenWindow();
    if (found == nullptr) {
        err_ << "zelkovactl: no window has '" << words << "' in its title or program\n";
        return kExitNoEffect;
    }
    out_ << "desktop " << found->desk << ": " << Utf8Text(found->title) << " ("
         << Utf8Text(found->program) << ")\n";
    const auto ids = companion::TryControllerProcessIds(os_);
    if (!ids) {
        err_ << "zelkovactl: " << kCannotTell << "\n";
        return kExitFailed;
    }
    if (ids->empty()) {
        err_ << kNotRunning << "\n";
        return kExitNotRunning;
    }
    SharedState state(os_, ids->front());
    companion::Signals signals(os_, os_);
    int status = kExitOk;
    const int shown = companion::ShownDesktop(os_, state).InStep(signals);
    companion::ShowFoundWindow(os_, signals, state, shown, *found,
                               [&](int desk) { status = Switch({std::to_string(desk)}); });
    return status;
}

int Ctl::Autostart(const Args& args) {
    const std::string& state = args[0];
    if (state != "on" && state != "off")
        return Usage("autostart: say on or off, not '" + state + "'");
    const bool on = state == "on";
    if (!companion::SetAutostart(os_, registry_, on)) {
        err_ << "zelkovactl: could not write the Run key: " << Line(registry_.LastErrorText());
        return kExitFailed;
    }
    if (on) {
        out_ << "Zelkova2 starts when you log on: " << Utf8Text(companion::AutostartCommand(os_))
             << "\n";
    } else {
        out_ << "Zelkova2 does not start when you log on.\n";
    }
    return kExitOk;
}

}  // namespace zk::ctl
