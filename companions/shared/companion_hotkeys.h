#pragma once
// The hotkeys that the companions hold beside the controller's six (the window finder, the next
// desktop and the one before), on a switcher's window. Where hotkeys belong to the session, the
// first switcher has each one, and the others' refusals are silent: one of ours holds it.

#include <array>

#include "platform/os.h"
#include "settings/registry.h"
#include "vocabulary/hotkey_table.h"

namespace zk::companion {

class CompanionHotKeys {
  public:
    CompanionHotKeys(HotKeyApi& os, Registry& registry, Hwnd window);
    ~CompanionHotKeys();
    CompanionHotKeys(const CompanionHotKeys&) = delete;
    CompanionHotKeys& operator=(const CompanionHotKeys&) = delete;

    // Reads the pairs (the default where one cannot be read) and registers them.
    void Register();
    // Reads them again and registers the ones that changed.
    void Reload();
    // The key of hotkey `id` as registered; 0 when it is not held here.
    [[nodiscard]] std::int16_t HeldKey(int id) const;

  private:
    struct Pair {
        std::int16_t key = 0;
        std::int16_t modifiers = 0;
        bool held = false;
    };
    static constexpr int kCount = kAllHotKeyCount - kControllerHotKeyCount;
    [[nodiscard]] Pair Read(int id);

    HotKeyApi& os_;
    Registry& registry_;
    Hwnd window_;
    std::array<Pair, kCount> pairs_{};  // by id, from kFirstCompanionHotKey
};

// The desktop that hotkey `id` (next or the one before) shows from `current`, in order, wrapping
// from the last to the first and back; 0 for another hotkey.
[[nodiscard]] int DesktopInOrder(int id, int current);

}  // namespace zk::companion
