#include "zelkovactl/ctl.h"

#include <algorithm>
#include <deque>

#include "diagnostics/err_log.h"
#include "hotkeys/hotkeys.h"
#include "platform/handles.h"
#include "platform/module_path.h"
#include "signals/event_names.h"
#include "support/text.h"
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
    "\n"
    "Settings:\n"
    "  hotkeys               list the six hotkeys\n"
    "  hotkey set ID COMBO   set hotkey ID (1 to 6) to COMBO, e.g. Ctrl+Alt+F9\n"
    "  hotkey reset ID|all   give hotkey ID, or all, its default again\n"
    "  autostart on|off      start Zelkova2 when you log on, or not\n"
    "\n"
    "Information:\n"
    "  status                whether Zelkova2 runs, the desktop shown, the desktops there are\n"
    "  log [--tail N]        the newest N lines of the error log (20 if not given)\n";

constexpr char16_t kRunKey[] = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr char16_t kRunValue[] = u"Zelkova2";
constexpr std::int16_t kReadRegSignal = 53;
constexpr std::int16_t kShutdownSignal = 54;
constexpr const char* kHotKeyActions[] = {"desktop 1", "desktop 2",        "desktop 3",
                                          "desktop 4", "previous desktop", "preview"};

constexpr std::uint32_t kDesktopReadObjects = 0x0001;

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
    if (command == "reload" && count == 1) return Signal(kReadRegSignal);
    if (command == "shutdown" && count == 1) return Signal(kShutdownSignal);
    if (command == "hotkeys" && count == 1) return HotKeys();
    if (command == "hotkey" && count == 4 && args[1] == "set") return SetHotKey(args[2], args[3]);
    if (command == "hotkey" && count == 3 && args[1] == "reset") return ResetHotKey(args[2]);
    if (command == "status" && count == 1) return Status();
    if (command == "log") return Log(args);
    if (command == "autostart" && count == 2) return Autostart(args[1]);
    const bool known = command == "switch" || command == "reload" || command == "shutdown" ||
                       command == "hotkeys" || command == "hotkey" || command == "status" ||
                       command == "autostart";
    return Usage(known ? "wrong arguments for '" + command + "'"
                       : "unknown command '" + command + "'");
}

int Ctl::Usage(const std::string& problem) {
    err_ << "zelkovactl: " << problem << " (see zelkovactl --help)\n";
    return kExitUsage;
}

bool Ctl::Running() {
    EventNames names;
    names.InitEventNames();
    UniqueKernelHandle event(
        os_, os_.OpenEventA(Synchronize, false,
                            os_.WideCharToMultiByte(names.EventName(kShutdownSignal))));
    return event.valid();
}

// The controller block's events reach Zelkova2 from every desktop (through its herald).
int Ctl::Signal(std::int16_t index) {
    EventNames names;
    names.InitEventNames();
    UniqueKernelHandle event(os_, os_.OpenEventA(EventModifyState, false,
                                                 os_.WideCharToMultiByte(names.EventName(index))));
    if (!event) {
        err_ << kNotRunning << "\n";
        return kExitNotRunning;
    }
    if (!os_.SetEvent(event.get())) {
        err_ << "zelkovactl: could not signal Zelkova2\n";
        return kExitFailed;
    }
    return kExitOk;
}

int Ctl::Switch(const std::string& desktop) {
    const auto n = Number(desktop, 1, 4);
    if (!n) return Usage("switch: the desktop is a number from 1 to 4, not '" + desktop + "'");
    return Signal(
        EventNames::EventIndex(KindSwitchTo, kControllerBlock, static_cast<std::int16_t>(*n)));
}

int Ctl::HotKeys() {
    for (int id = 1; id <= kHotKeyCount; ++id) {
        std::int16_t key = 0, modifiers = 0;
        const bool stored = ReadHotKeyPair(registry_, id, key, modifiers);
        if (!stored) {
            key = HotKeySettingOf(id).defaultKey;
            modifiers = HotKeySettingOf(id).defaultModifiers;
        }
        std::string action = kHotKeyActions[id - 1];
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
    out_ << "Hotkey " << *id << " (" << kHotKeyActions[*id - 1] << ") is now "
         << FormatHotKey(*combo) << ".\n";
    if (Running()) (void)Signal(kReadRegSignal);
    return kExitOk;
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
        out_ << "Hotkey " << id << " (" << kHotKeyActions[id - 1] << ") is "
             << FormatHotKey({setting.defaultModifiers, setting.defaultKey}) << " again.\n";
    }
    if (Running()) (void)Signal(kReadRegSignal);
    return kExitOk;
}

int Ctl::Status() {
    out_ << (Running() ? "Zelkova2 is running" : kNotRunning) << "\n";
    UniqueDesktop input(os_, os_.OpenInputDesktop(0, false, kDesktopReadObjects));
    if (input)
        out_ << "Input desktop: " << AsciiText(os_.GetUserObjectInformationW(input.get())) << "\n";
    std::string list;
    for (const Text& name : os_.EnumDesktopsW())
        list += (list.empty() ? "" : ", ") + AsciiText(name);
    out_ << "Desktops: " << list << "\n";
    return kExitOk;
}

int Ctl::Log(const std::vector<std::string>& args) {
    int tail = 20;
    if (args.size() == 3 && args[1] == "--tail") {
        const auto n = Number(args[2], 1, 100000);
        if (!n) return Usage("log: --tail takes a number of lines, not '" + args[2] + "'");
        tail = *n;
    } else if (args.size() != 1) {
        return Usage("wrong arguments for 'log'");
    }
    ErrLog log(os_);
    const Text path = log.LogFolder() + kLogFileName;
    UniqueFileHandle file(
        os_, os_.CreateFileW(path, GenericRead, FileShareRead | FileShareWrite, OpenExisting));
    std::deque<std::string> lines;
    if (file) {
        std::string text;
        std::array<std::byte, 4096> buffer{};
        std::uint32_t read = 0;
        while (os_.ReadFile(file.get(), buffer, read) && read > 0) {
            text.append(reinterpret_cast<const char*>(buffer.data()), read);
        }
        for (std::size_t start = 0; start < text.size();) {
            const auto end = text.find("\r\n", start);
            std::string line = text.substr(start, end == std::string::npos ? end : end - start);
            if (!line.empty()) lines.push_back(std::move(line));
            if (lines.size() > static_cast<std::size_t>(tail)) lines.pop_front();
            start = end == std::string::npos ? text.size() : end + 2;
        }
    }
    if (lines.empty()) {
        out_ << "Nothing has been logged.\n";
        return kExitOk;
    }
    for (const auto& line : lines)
        out_ << line << "\n";
    return kExitOk;
}

int Ctl::Autostart(const std::string& state) {
    if (state != "on" && state != "off")
        return Usage("autostart: say on or off, not '" + state + "'");
    if (state == "on") {
        const Text command = u"\"" + ExecutableFolder(os_) + u"\\Zelkova2.exe\"";
        std::uint32_t type = RegSz;
        if (!registry_.CreateKey(HkeyCurrentUser(), kRunKey) ||
            !registry_.WriteValue(HkeyCurrentUser(), kRunKey, kRunValue, type, command)) {
            err_ << "zelkovactl: could not write the Run key: " << Line(registry_.LastErrorText());
            return kExitFailed;
        }
        out_ << "Zelkova2 starts when you log on: " << AsciiText(command) << "\n";
        return kExitOk;
    }
    UniqueRegKey key(os_, nullptr);
    if (os_.RegOpenKeyExW(HkeyCurrentUser(), kRunKey, 0, KeySetValue, key.out()) == 0) {
        (void)os_.RegDeleteValueW(key.get(), kRunValue);
    }
    out_ << "Zelkova2 does not start when you log on.\n";
    return kExitOk;
}

}  // namespace zk::ctl
