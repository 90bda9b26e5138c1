#pragma once
// What the settings window shows and writes: the six hotkeys (the controller's twelve REG_DWORD
// values), the desktops' names, the start-up programs of desktops 2 to 4 with their switch,
// start at log-on and the banner. It says, as the user types a combination, whether another
// program holds it, and after Apply which hotkeys Zelkova2 could not register.

#include <array>
#include <optional>
#include <vector>

#include "platform/os.h"
#include "settings/registry.h"
#include "shared/hotkey_text.h"
#include "vocabulary/desktops.h"
#include "vocabulary/hotkey_table.h"

namespace zk::companion {

// The programs box holds one command line a line.
[[nodiscard]] std::vector<Text> ProgramLines(const Text& box);
[[nodiscard]] Text ProgramBox(const std::vector<Text>& programs);

struct DesktopSettings {
    Text name;                   // empty: "Desktop N"
    bool startPrograms = true;   // desktops 2 to 4
    std::vector<Text> programs;  // one command line each
};

struct Settings {
    std::array<HotKeyCombo, kAllHotKeyCount> hotkeys;
    std::array<DesktopSettings, kDesktopCount> desktops;
    bool autostart = false;
    bool banner = true;
    bool news = true;  // windows on other desktops are told of
};

enum class ComboState {
    Free,     // nobody holds it
    Zelkova,  // Zelkova2 holds it (as one of the hotkeys in force): not a conflict
    Taken,    // another program holds it
    Twice,    // another hotkey of these settings has it too
    Empty,    // no key
};

struct ApplyResult {
    bool written = false;
    Text error;                     // why the settings could not be written
    bool confirmed = false;         // Zelkova2 has read the hotkeys again
    std::vector<int> failedIds;     // hotkeys that could not be registered
    std::vector<Text> otherErrors;  // other new lines of the log
};

class SettingsModel {
  public:
    // `probe` is a window of the settings program, to try combinations on.
    SettingsModel(Os& os, Hwnd probe);

    // Where a stored pair names no key, the hotkey gets its default (see NotAKey).
    [[nodiscard]] Settings Load();
    // The hotkeys whose stored pair named no key at the last Load.
    [[nodiscard]] const std::vector<int>& NotAKey() const { return notAKey_; }
    // Whether combination `id` of `settings` can be had.
    [[nodiscard]] ComboState Check(const Settings& settings, int id);
    // Writes everything, asks Zelkova2 to read its hotkeys again, and reads what it logged.
    [[nodiscard]] ApplyResult Apply(const Settings& settings);

  private:
    bool Save(const Settings& settings);

    Os& os_;
    Hwnd probe_;
    Registry registry_;
    std::array<HotKeyCombo, kAllHotKeyCount> inForce_{};  // the hotkeys as Zelkova2 read them last
    std::vector<int> notAKey_;
};

}  // namespace zk::companion
