#include "ZelkovaSettings/settings_model.h"

#include <algorithm>

#include "diagnostics/log_reader.h"
#include "hotkeys/hotkeys.h"
#include "platform/handles.h"
#include "shared/companion_settings.h"
#include "shared/hotkeys_in_force.h"
#include "shared/signals.h"
#include "tool_support/autostart.h"
#include "tool_support/reload.h"
#include "vocabulary/protocol.h"

namespace zk::companion {
namespace {

constexpr int kProbeId = 0xBF00;
constexpr std::uint32_t kReloadWithin = 5000;

bool WriteDword(Registry& registry, const Text& key, const Text& name, std::int32_t value) {
    std::uint32_t type = RegDword;
    return registry.CreateKey(HkeyCurrentUser(), key) &&
           registry.WriteValue(HkeyCurrentUser(), key, name, type, value);
}

}  // namespace

std::vector<Text> ProgramLines(const Text& box) {
    std::vector<Text> lines;
    Text line;
    for (const char16_t c : box + u"\n") {
        if (c != u'\r' && c != u'\n') {
            line += c;
            continue;
        }
        const auto first = line.find_first_not_of(u" \t");
        if (first != Text::npos)
            lines.push_back(line.substr(first, line.find_last_not_of(u" \t") - first + 1));
        line.clear();
    }
    return lines;
}

Text ProgramBox(const std::vector<Text>& programs) {
    Text box;
    for (const Text& line : programs)
        box += (box.empty() ? u"" : u"\r\n") + line;
    return box;
}

SettingsModel::SettingsModel(Os& os, Hwnd probe) : os_(os), probe_(probe), registry_(os) {}

Settings SettingsModel::Load() {
    Settings settings;
    notAKey_.clear();
    const auto status = ReadHotKeyStatus(os_, registry_);
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const HotKeyStatus& s = status[id - 1];
        inForce_[id - 1] = s.inForce.value_or(s.stored);
        // A stored pair that names no key is offered its default, which Apply then stores.
        settings.hotkeys[id - 1] = NamesAKey(s.stored) ? s.stored : DefaultHotKey(id);
        if (!NamesAKey(s.stored)) notAKey_.push_back(id);
    }
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        DesktopSettings& d = settings.desktops[desk - 1];
        const Text name = DesktopName(registry_, desk);
        d.name = name == u"Desktop " + DecimalText(desk) ? Text() : name;
        d.startPrograms = StartProgramsOn(registry_, desk);
        d.programs = StoredPrograms(os_, desk).value_or(std::vector<Text>{kDefaultShell});
    }
    settings.autostart = AutostartOn(registry_);
    settings.banner = BannerShown(registry_);
    settings.news = NewsShown(registry_);
    return settings;
}

ComboState SettingsModel::Check(const Settings& settings, int id) {
    const HotKeyCombo& combo = settings.hotkeys[id - 1];
    if (combo.key == 0) return ComboState::Empty;
    for (int other = 1; other <= kAllHotKeyCount; ++other) {
        if (other != id && settings.hotkeys[other - 1] == combo) return ComboState::Twice;
    }
    const auto modifiers = static_cast<std::uint32_t>(combo.modifiers);
    const auto key = static_cast<std::uint32_t>(combo.key);
    if (os_.RegisterHotKey(probe_, kProbeId, modifiers, key) != 0) {
        (void)os_.UnregisterHotKey(probe_, kProbeId);
        return ComboState::Free;
    }
    const bool ours = std::find(inForce_.begin(), inForce_.end(), combo) != inForce_.end();
    return ours ? ComboState::Zelkova : ComboState::Taken;
}

bool SettingsModel::Save(const Settings& settings) {
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const HotKeySetting& setting = HotKeySettingOf(id);
        const HotKeyCombo& combo = settings.hotkeys[id - 1];
        if (!WriteDword(registry_, kSettingsKey, setting.keyValue, combo.key) ||
            !WriteDword(registry_, kSettingsKey, setting.modifierValue, combo.modifiers)) {
            return false;
        }
    }
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        const DesktopSettings& d = settings.desktops[desk - 1];
        std::uint32_t type = RegSz;
        if (!registry_.CreateKey(HkeyCurrentUser(), DesktopKey(desk)) ||
            !registry_.WriteValue(HkeyCurrentUser(), DesktopKey(desk), kNameValue, type, d.name)) {
            return false;
        }
        if (desk == 1) continue;
        if (!WriteDword(registry_, DesktopKey(desk), kStartProgramsValue,
                        d.startPrograms ? 1 : 0)) {
            return false;
        }
        (void)os_.RegDeleteTreeW(HkeyCurrentUser(), ProgramsKey(desk));
        if (!registry_.CreateKey(HkeyCurrentUser(), ProgramsKey(desk))) return false;
        for (std::size_t i = 0; i < d.programs.size(); ++i) {
            type = RegExpandSz;
            if (!registry_.WriteValue(HkeyCurrentUser(), ProgramsKey(desk), DecimalText(i + 1),
                                      type, d.programs[i])) {
                return false;
            }
        }
    }
    return WriteDword(registry_, kSettingsKey, kShowBannerValue, settings.banner ? 1 : 0) &&
           WriteDword(registry_, kSettingsKey, kShowNewsValue, settings.news ? 1 : 0) &&
           SetAutostart(os_, registry_, settings.autostart);
}

ApplyResult SettingsModel::Apply(const Settings& settings) {
    ApplyResult result;
    const std::size_t logBefore = ReadLog(os_).bytes.value_or(std::string()).size();
    result.written = Save(settings);
    if (!result.written) {
        result.error = registry_.LastErrorText();
        return result;
    }
    Signals signals(os_, os_);
    Reload reload(os_, signals);
    if (!signals.Raise(kReadRegCommand)) return result;
    result.confirmed = reload.Confirmed(kReloadWithin);
    inForce_ = settings.hotkeys;
    if (const auto published = PublishedHotKeys(os_))
        std::copy(published->begin(), published->end(), inForce_.begin());
    const std::string log = ReadLog(os_).bytes.value_or(std::string());
    if (log.size() <= logBefore) return result;
    for (const std::string& entry : LogEntries(std::string_view(log).substr(logBefore))) {
        const int id = HotKeyIdInLogEntry(os_, entry, settings.hotkeys);
        if (id == 0 || std::find(result.failedIds.begin(), result.failedIds.end(), id) !=
                           result.failedIds.end()) {
            result.otherErrors.push_back(os_.MultiByteToWideChar(entry));
        } else {
            result.failedIds.push_back(id);
        }
    }
    return result;
}

}  // namespace zk::companion
