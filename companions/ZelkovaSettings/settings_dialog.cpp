#include "ZelkovaSettings/settings_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "ZelkovaSettings/settings_resources.h"
#include "diagnostics/win_api_error.h"
#include "hotkeys/hotkeys.h"
#include "platform/win32/wide_text.h"
#include "shared/hotkeys_in_force.h"
#include "tool_support/launcher.h"
#include "vocabulary/programs.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr UINT_PTR kStartButtonTimer = 1;
constexpr UINT kStartButtonEvery = 1000;
constexpr std::pair<int, std::int16_t> kModifierBoxes[] = {
    {IDC_CTRL, ModControl}, {IDC_ALT, ModAlt}, {IDC_SHIFT, ModShift}, {IDC_WIN, ModWin}};

}  // namespace

SettingsDialog::SettingsDialog(Os& os) : os_(os) {
    CreateDialogOf(IDD_SETTINGS);
}

LRESULT SettingsDialog::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            model_.emplace(os_, Window());
            settings_ = model_->Load();
            Fill();
            if (const auto missing = MissingPrograms(os_, os_); !missing.empty()) {
                ::SetDlgItemTextW(
                    Window(), IDC_RESULT,
                    W(u"\u26A0 Zelkova2 cannot run: " + MissingProgramsText(os_, missing)));
            }
            ShowStartButton();
            ::SetTimer(Window(), kStartButtonTimer, kStartButtonEvery, nullptr);
            ::EnableWindow(Item(IDC_APPLY), FALSE);  // until something changes
            for (const wchar_t* page : {L"Hotkeys", L"Desktops", L"General"}) {
                TCITEMW tab{};
                tab.mask = TCIF_TEXT;
                tab.pszText = const_cast<wchar_t*>(page);
                const auto at = ::SendMessageW(Item(IDC_TABS), TCM_GETITEMCOUNT, 0, 0);
                ::SendMessageW(Item(IDC_TABS), TCM_INSERTITEMW, static_cast<WPARAM>(at),
                               reinterpret_cast<LPARAM>(&tab));
            }
            ShowPage(0);
            ::SetFocus(Item(IDC_TABS));
            return FALSE;
        case WM_TIMER:
            ShowStartButton();
            return 0;
        case WM_DPICHANGED: {  // the dialog manager scales the dialog and its controls
            const LRESULT scaled = Default(message, wParam, lParam);
            SizeColumns();
            return scaled;
        }
        case WM_COMMAND:
            Command(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
            if (notice.idFrom == IDC_TABS && notice.code == TCN_SELCHANGE) {
                ShowPage(static_cast<int>(::SendMessageW(notice.hwndFrom, TCM_GETCURSEL, 0, 0)));
            } else if (notice.idFrom == IDC_HOTKEYS && notice.code == LVN_ITEMCHANGED) {
                const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
                if ((change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0) {
                    chosen_ = change.iItem + 1;
                    ShowChosen();
                    ShowStates();
                }
            }
            return 0;
        }
        case WM_CLOSE:
            ::DestroyWindow(Window());
            return 0;
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

bool SettingsDialog::IsDialogMessage(MSG& message) {
    return Window() != nullptr && ::IsDialogMessageW(Window(), &message) != FALSE;
}

HWND SettingsDialog::Item(int id) {
    return ::GetDlgItem(Window(), id);
}

Text SettingsDialog::ItemText(int id) {
    const int length = ::GetWindowTextLengthW(Item(id));
    Text text(static_cast<std::size_t>(length) + 1, u'\0');
    ::GetWindowTextW(Item(id), W(text.data()), length + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void SettingsDialog::Fill() {
    filling_ = true;
    FillHotKeys();
    for (int d = 1; d <= kDesktopCount; ++d) {
        const DesktopSettings& desk = settings_.desktops[d - 1];
        ::SetDlgItemTextW(Window(), IDC_NAME1 + d - 1, W(desk.name));
        if (d == 1) continue;
        ::CheckDlgButton(Window(), IDC_START2 + d - 2, desk.startPrograms ? BST_CHECKED : 0);
        ::SetDlgItemTextW(Window(), IDC_PROGRAMS2 + d - 2, W(ProgramBox(desk.programs)));
    }
    ::CheckDlgButton(Window(), IDC_AUTOSTART, settings_.autostart ? BST_CHECKED : 0);
    ::CheckDlgButton(Window(), IDC_BANNER, settings_.banner ? BST_CHECKED : 0);
    ::CheckDlgButton(Window(), IDC_NEWS, settings_.news ? BST_CHECKED : 0);
    bool laptop = true;
    for (int id = 1; id <= kAllHotKeyCount; ++id)
        laptop = laptop && settings_.hotkeys[id - 1] == LaptopHotKey(id);
    ::CheckDlgButton(Window(), IDC_LAPTOP, laptop ? BST_CHECKED : 0);
    filling_ = false;
    ShowStates();
}

// A row for each hotkey of the table: what it does, its keys, and what is wrong with them.
void SettingsDialog::FillHotKeys() {
    const HWND list = Item(IDC_HOTKEYS);
    ::SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                   LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    WPARAM index = 0;
    for (const wchar_t* title : {L"Hotkey", L"Keys", L"Note"}) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = const_cast<wchar_t*>(title);
        ::SendMessageW(list, LVM_INSERTCOLUMNW, index++, reinterpret_cast<LPARAM>(&column));
    }
    SizeColumns();
    for (int i = 0; i < kAllHotKeyCount; ++i) {
        const Text label = kHotKeyTable[i].label;
        LVITEMW row{};
        row.mask = LVIF_TEXT;
        row.iItem = i;
        row.pszText = const_cast<wchar_t*>(W(label));
        ::SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row));
        ShowHotKey(i + 1);
    }
    const HWND keys = Item(IDC_KEYLIST);
    for (const auto& [key, name] : NamedKeys()) {
        const Text text(name.begin(), name.end());
        const LRESULT at = ::SendMessageW(keys, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(text)));
        ::SendMessageW(keys, CB_SETITEMDATA, static_cast<WPARAM>(at), key);
    }
    LVITEMW first{};
    first.stateMask = first.state = LVIS_SELECTED | LVIS_FOCUSED;
    ::SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&first));
    ShowChosen();
}

// In dialog units, so that the columns follow the font and the scale, also when the window
// moves to a monitor of another scale.
void SettingsDialog::SizeColumns() {
    const HWND list = Item(IDC_HOTKEYS);
    RECT widths{96, 0, 84, 0};
    ::MapDialogRect(Window(), &widths);
    RECT client{};
    ::GetClientRect(list, &client);
    const UINT dpi = ::GetDpiForWindow(Window());
    const int rest =
        client.right - widths.left - widths.right - ::GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
    for (const auto& [column, width] : {std::pair{0, widths.left}, {1, widths.right}, {2, rest}})
        ::SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), width);
}

void SettingsDialog::SetCell(int id, int column, const Text& text) {
    LVITEMW cell{};
    cell.iSubItem = column;
    cell.pszText = const_cast<wchar_t*>(W(text));
    ::SendMessageW(Item(IDC_HOTKEYS), LVM_SETITEMTEXTW, static_cast<WPARAM>(id - 1),
                   reinterpret_cast<LPARAM>(&cell));
}

void SettingsDialog::ShowHotKey(int id) {
    const std::string keys = FormatHotKey(settings_.hotkeys[id - 1]);
    SetCell(id, 1, Text(keys.begin(), keys.end()));
    if (id == chosen_) ShowChosen();
}

void SettingsDialog::ShowChosen() {
    const bool filling = std::exchange(filling_, true);
    const HotKeyCombo& combo = settings_.hotkeys[chosen_ - 1];
    const HWND list = Item(IDC_KEYLIST);
    const LRESULT count = ::SendMessageW(list, CB_GETCOUNT, 0, 0);
    LRESULT selected = CB_ERR;
    for (LRESULT at = 0; at < count; ++at) {
        if (::SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(at), 0) == combo.key)
            selected = at;
    }
    ::SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(selected), 0);
    for (const auto& [box, flag] : kModifierBoxes)
        ::CheckDlgButton(Window(), box, (combo.modifiers & flag) != 0 ? BST_CHECKED : 0);
    filling_ = filling;
}

void SettingsDialog::PickHotKey() {
    HotKeyCombo& combo = settings_.hotkeys[chosen_ - 1];
    const HWND list = Item(IDC_KEYLIST);
    const LRESULT at = ::SendMessageW(list, CB_GETCURSEL, 0, 0);
    if (at != CB_ERR)
        combo.key = static_cast<std::int16_t>(
            ::SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(at), 0));
    combo.modifiers = 0;
    for (const auto& [box, flag] : kModifierBoxes) {
        if (::IsDlgButtonChecked(Window(), box) == BST_CHECKED) combo.modifiers |= flag;
    }
    ShowHotKey(chosen_);
}

void SettingsDialog::ShowStartButton() {
    const auto running = TryControllerProcessIds(os_);
    ::ShowWindow(Item(IDC_STARTZK), running && running->empty() ? SW_SHOW : SW_HIDE);
}

void SettingsDialog::ShowStates() {
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        Text text;
        const auto& notAKey = model_->NotAKey();
        const bool offered = std::find(notAKey.begin(), notAKey.end(), id) != notAKey.end() &&
                             settings_.hotkeys[id - 1] == DefaultHotKey(id);
        switch (offered ? ComboState::Free : model_->Check(settings_, id)) {
            case ComboState::Taken:
                text = u"\u26A0 Another program holds it.";
                break;
            case ComboState::Twice:
                text = u"\u26A0 Another hotkey has it.";
                break;
            case ComboState::Empty:
                text = u"No hotkey.";
                break;
            default:
                if (offered) text = u"\u26A0 Stored as no key: the default is shown.";
                break;
        }
        SetCell(id, 2, text);
        if (id == chosen_) ::SetDlgItemTextW(Window(), IDC_STATUS, W(text));
    }
}

void SettingsDialog::Read() {
    for (int d = 1; d <= kDesktopCount; ++d) {
        DesktopSettings& desk = settings_.desktops[d - 1];
        desk.name = ItemText(IDC_NAME1 + d - 1);
        if (d == 1) continue;
        desk.startPrograms = ::IsDlgButtonChecked(Window(), IDC_START2 + d - 2) == BST_CHECKED;
        desk.programs = ProgramLines(ItemText(IDC_PROGRAMS2 + d - 2));
    }
    settings_.autostart = ::IsDlgButtonChecked(Window(), IDC_AUTOSTART) == BST_CHECKED;
    settings_.banner = ::IsDlgButtonChecked(Window(), IDC_BANNER) == BST_CHECKED;
    settings_.news = ::IsDlgButtonChecked(Window(), IDC_NEWS) == BST_CHECKED;
}

bool SettingsDialog::Apply() {
    Read();
    const ApplyResult result = model_->Apply(settings_);
    Text text;
    if (!result.written) {
        text = u"The settings could not be saved: " + result.error;
    } else if (!result.failedIds.empty()) {
        text = u"Saved. Zelkova2 could not register:";
        for (const int id : result.failedIds) {
            text += u" " + Text(HotKeySettingOf(id).label) + u" (" +
                    KeyDisplayName(os_, settings_.hotkeys[id - 1].key) + u");";
        }
        text += u" another program holds them.";
    } else if (!result.confirmed) {
        text = u"Saved. Zelkova2 is not running; the hotkeys take effect when it starts.";
    } else {
        text = u"Saved. Zelkova2 uses the new hotkeys.";
    }
    ::SetDlgItemTextW(Window(), IDC_RESULT, W(text));
    return result.written && result.failedIds.empty();
}

void SettingsDialog::ShowPage(int page) {
    std::vector<int> pages[3];
    pages[0] = {IDC_HOTKEYSLABEL, IDC_HOTKEYS, IDC_KEYLABEL, IDC_KEYLIST, IDC_STATUS, IDC_LAPTOP};
    for (const auto& [box, flag] : kModifierBoxes)
        pages[0].push_back(box);
    pages[1] = {IDC_PROGRAMSNOTE, IDC_DESK1NOTE};
    for (int d = 0; d < kDesktopCount; ++d) {
        pages[1].insert(pages[1].end(), {IDC_NAMELABEL1 + d, IDC_NAME1 + d});
        if (d > 0) pages[1].insert(pages[1].end(), {IDC_START2 + d - 1, IDC_PROGRAMS2 + d - 1});
    }
    pages[2] = {IDC_AUTOSTART, IDC_BANNER, IDC_NEWS};
    for (int p = 0; p < 3; ++p) {
        for (const int id : pages[p])
            ::ShowWindow(Item(id), p == page ? SW_SHOW : SW_HIDE);
    }
}

void SettingsDialog::Command(int id, int code) {
    const bool changes = code == EN_CHANGE || code == CBN_SELCHANGE ||
                         (code == BN_CLICKED && id != IDC_APPLY && id != IDOK && id != IDCANCEL &&
                          id != IDC_STARTZK);
    if (changes && !filling_) ::EnableWindow(Item(IDC_APPLY), TRUE);
    const bool modifier = std::any_of(std::begin(kModifierBoxes), std::end(kModifierBoxes),
                                      [id](const auto& box) { return box.first == id; });
    if (!filling_ &&
        ((id == IDC_KEYLIST && code == CBN_SELCHANGE) || (modifier && code == BN_CLICKED))) {
        PickHotKey();
        ShowStates();
    } else if (id == IDC_LAPTOP) {
        const bool laptop = ::IsDlgButtonChecked(Window(), IDC_LAPTOP) == BST_CHECKED;
        for (int hotkey = 1; hotkey <= kAllHotKeyCount; ++hotkey) {
            settings_.hotkeys[hotkey - 1] = laptop ? LaptopHotKey(hotkey) : DefaultHotKey(hotkey);
            ShowHotKey(hotkey);
        }
        ShowStates();
    } else if (id == IDC_STARTZK) {
        const Text launcher = ProgramPath(os_, Program::Launcher);
        if (!TryCreateProcess(os_, launcher, u"\"" + launcher + u"\"", false, {})) {
            ::SetDlgItemTextW(
                Window(), IDC_RESULT,
                W(launcher + u" could not be started: " + ApiErrorText(os_, os_.GetLastError())));
        }
    } else if (id == IDC_APPLY) {
        if (Apply()) ::EnableWindow(Item(IDC_APPLY), FALSE);
    } else if (id == IDOK) {
        if (Apply()) ::DestroyWindow(Window());
    } else if (id == IDCANCEL) {
        ::DestroyWindow(Window());
    }
}

}  // namespace zk::companion
