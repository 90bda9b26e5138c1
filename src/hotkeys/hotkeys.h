#pragma once
// Loading, registering, unregistering and reloading the six hotkeys on the controller's window.
// Failures are logged; registry values that cannot be read fall back silently.

#include "diagnostics/err_log.h"
#include "platform/os.h"
#include "settings/registry.h"
#include "vocabulary/hotkey_table.h"

namespace zk {

inline constexpr char16_t kRegisterFailed[] = u"Failed to register the following hotkey: ";
inline constexpr char16_t kUnregisterFailed[] = u"Failed to unregister the following hotkey: ";

// The keyboard layout's name of a key ("Num 2"), or empty text.
[[nodiscard]] Text KeyDisplayName(TextApi& os, std::int16_t virtualKey);

// Reads hotkey `id`'s pair: the key value, then (only if that was read) the modifier value.
// Each read fills its destination as it succeeds; the pair counts only when both did. A value
// that is missing, not a REG_DWORD, or outside the 16-bit range cannot be read.
[[nodiscard]] bool ReadHotKeyPair(Registry& registry, int id, std::int16_t& key,
                                  std::int16_t& modifiers);

class HotKeys {
  public:
    // Without a log (nullptr), failures go unreported: a companion's hotkeys may be held by the
    // controller, whose own hotkeys then do the work.
    // `extraModifiers` go to the system with every pair (MOD_NOREPEAT), beside the stored ones.
    HotKeys(HotKeyApi& hotkeys, TextApi& text, Registry& registry, ErrLog* log,
            HotKeyFields& fields, Hwnd mainWindow, std::uint32_t extraModifiers = 0)
        : os_(hotkeys),
          text_(text),
          registry_(registry),
          log_(log),
          fields_(fields),
          window_(mainWindow),
          extraModifiers_(extraModifiers) {}

    // Fills the pairs from the registry; a hotkey whose pair cannot be read gets its default.
    void LoadHotKeys();
    // Registers all six; failures are logged and the reporter is started once after them.
    void RegisterHotKeys();
    // Unregisters every registered hotkey; failures as above.
    void UnregisterHotKeys();
    // Reads the pairs again and re-registers only the ones that changed. Never starts the
    // reporter; a pair that cannot be read is kept.
    void ReloadHotKeys();
    // The log's message about hotkey `id`: kRegisterFailed or kUnregisterFailed and its pair.
    [[nodiscard]] Text FailureText(const char16_t* what, int id);

  private:
    bool Register(int id);
    bool Unregister(int id);

    HotKeyApi& os_;
    TextApi& text_;
    Registry& registry_;
    ErrLog* log_;
    HotKeyFields& fields_;
    Hwnd window_;
    std::uint32_t extraModifiers_;
};

}  // namespace zk
