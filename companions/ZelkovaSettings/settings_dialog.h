#pragma once
// The settings window: a dialog (settings.rc) over the settings model. It shows the stored
// settings, flags a combination as the user types or picks it, says which of Zelkova2's programs
// are missing, starts Zelkova2 where it does not run, and writes everything on Apply or OK.

#include <windows.h>

#include <optional>

#include "ZelkovaSettings/settings_model.h"
#include "window/window_base.h"

namespace zk::companion {

class SettingsDialog final : public WindowBase<SettingsDialog> {
  public:
    explicit SettingsDialog(Os& os);

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool IsDialogMessage(MSG& message);

  private:
    HWND Item(int id);
    Text ItemText(int id);
    void Fill();
    void FillHotKeys();
    void SizeColumns();
    // Puts `text` in hotkey `id`'s row, in `column` (1: its keys, 2: what is wrong).
    void SetCell(int id, int column, const Text& text);
    // Shows hotkey `id`'s keys in its row, and below the list if it is the chosen one.
    void ShowHotKey(int id);
    // Shows the chosen hotkey in the key list and the modifier boxes.
    void ShowChosen();
    // Takes the chosen hotkey from the key list and the boxes after the user picked there.
    void PickHotKey();
    void ShowStartButton();
    // Flagged as the user types: a combination another program holds, or one used twice.
    void ShowStates();
    void Read();
    bool Apply();
    void Command(int id, int code);
    // Shows the controls of one page of the tabs (hotkeys, desktops, general), hides the rest.
    void ShowPage(int page);

    Os& os_;
    std::optional<SettingsModel> model_;
    Settings settings_;
    bool filling_ = false;
    int chosen_ = 1;  // the hotkey chosen in the list
};

}  // namespace zk::companion
