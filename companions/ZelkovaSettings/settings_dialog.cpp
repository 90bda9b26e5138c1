#include "ZelkovaSettings/settings_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "ZelkovaSettings/settings_resources.h"
#include "diagnostics/win_api_error.h"
#include "hotkeys/hotkeys.h"
#include "platform/win32/wide_text.h"
#include "programs/programs.h"
#include "shared/hotkeys_in_force.h"
#include "tool_support/launcher.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr UINT_PTR kStartButtonTimer = 1;
constexpr UINT kStartButtonEvery = 1000;

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
            // The tabs, not a hotkey field: a key typed first must not replace a hotkey.
            ::SetFocus(Item(IDC_TABS));
            return FALSE;
        case WM_TIMER:
            ShowStartButton();
            return 0;
        case WM_COMMAND:
            Command(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
            if (notice.idFrom == IDC_TABS && notice.code == TCN_SELCHANGE) {
                ShowPage(static_cast<int>(::SendMessageW(notice.hwndFrom, TCM_GETCURSEL, 0, 0)));
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
    const auto keys = NamedKeys();
    for (int i = 0; i < kAllHotKeyCount; ++i) {
        ::SetDlgItemTextW(Window(), IDC_LABEL1 + i, W(Text(kHotKeyTable[i].label) + u":"));
        const HWND list = Item(IDC_KEYLIST1 + i);
        ::SendMessageW(list, CB_RESETCONTENT, 0, 0);
        for (const auto& [key, name] : keys) {
            const Text text(name.begin(), name.end());
            const LRESULT at =
                ::SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(text)));
            ::SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(at), key);
        }
        ShowHotKey(i + 1);
    }
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

void SettingsDialog::ShowHotKey(int id) {
    const bool filling = std::exchange(filling_, true);
    const int i = id - 1;
    const HotKeyCombo& combo = settings_.hotkeys[i];
    ::SendMessageW(Item(IDC_HOTKEY1 + i), HKM_SETHOTKEY, ToHotKeyControl(combo), 0);
    const HWND list = Item(IDC_KEYLIST1 + i);
    const LRESULT count = ::SendMessageW(list, CB_GETCOUNT, 0, 0);
    LRESULT selected = CB_ERR;
    for (LRESULT at = 0; at < count; ++at) {
        if (::SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(at), 0) == combo.key)
            selected = at;
    }
    ::SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(selected), 0);
    for (const auto& [box, flag] : {std::pair{IDC_CTRL1, ModControl},
                                    {IDC_ALT1, ModAlt},
                                    {IDC_SHIFT1, ModShift},
                                    {IDC_WIN1, ModWin}}) {
        ::CheckDlgButton(Window(), box + i, (combo.modifiers & flag) != 0 ? BST_CHECKED : 0);
    }
    filling_ = filling;
}

void SettingsDialog::PickHotKey(int id) {
    const int i = id - 1;
    HotKeyCombo& combo = settings_.hotkeys[i];
    const HWND list = Item(IDC_KEYLIST1 + i);
    const LRESULT at = ::SendMessageW(list, CB_GETCURSEL, 0, 0);
    if (at != CB_ERR)
        combo.key = static_cast<std::int16_t>(
            ::SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(at), 0));
    combo.modifiers = 0;
    for (const auto& [box, flag] : {std::pair{IDC_CTRL1, ModControl},
                                    {IDC_ALT1, ModAlt},
                                    {IDC_SHIFT1, ModShift},
                                    {IDC_WIN1, ModWin}}) {
        if (::IsDlgButtonChecked(Window(), box + i) == BST_CHECKED) combo.modifiers |= flag;
    }
    ShowHotKey(id);
}

void SettingsDialog::ShowStartButton() {
    const auto running = TryControllerProcessIds(os_);
    ::ShowWindow(Item(IDC_STARTZK), running && running->empty() ? SW_SHOW : SW_HIDE);
}

void SettingsDialog::ShowStates() {
    for (int id = 1; id <= kAllHotKeyCount; ++id) {
        const wchar_t* text = L"";
        const auto& notAKey = model_->NotAKey();
        const bool offered = std::find(notAKey.begin(), notAKey.end(), id) != notAKey.end() &&
                             settings_.hotkeys[id - 1] == DefaultHotKey(id);
        switch (offered ? ComboState::Free : model_->Check(settings_, id)) {
            case ComboState::Taken:
                text = L"\u26A0 Another program holds it.";
                break;
            case ComboState::Twice:
                text = L"\u26A0 Another hotkey has it.";
                break;
            case ComboState::Empty:
                text = L"No hotkey.";
                break;
            default:
                if (offered) text = L"\u26A0 Stored as no key: the default is shown.";
                break;
        }
        ::SetDlgItemTextW(Window(), IDC_STATUS1 + id - 1, text);
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
            text += u" " + HotKeyLabel(id) + u" (" +
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
    for (int i = 0; i < kAllHotKeyCount; ++i) {
        for (const int first : {IDC_LABEL1, IDC_HOTKEY1, IDC_KEYLIST1, IDC_CTRL1, IDC_ALT1,
                                IDC_SHIFT1, IDC_WIN1, IDC_STATUS1})
            pages[0].push_back(first + i);
    }
    pages[0].push_back(IDC_LAPTOP);
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
    const auto inRow = [id](int first) { return id >= first && id < first + kAllHotKeyCount; };
    const bool changes = code == EN_CHANGE || code == CBN_SELCHANGE ||
                         (code == BN_CLICKED && id != IDC_APPLY && id != IDOK && id != IDCANCEL &&
                          id != IDC_STARTZK);
    if (changes && !filling_) ::EnableWindow(Item(IDC_APPLY), TRUE);
    if (inRow(IDC_HOTKEY1) && code == EN_CHANGE && !filling_) {
        const auto value =
            static_cast<std::uint16_t>(::SendMessageW(Item(id), HKM_GETHOTKEY, 0, 0));
        settings_.hotkeys[id - IDC_HOTKEY1] = FromHotKeyControl(value);
        ShowHotKey(id - IDC_HOTKEY1 + 1);
        ShowStates();
    } else if (!filling_ &&
               ((inRow(IDC_KEYLIST1) && code == CBN_SELCHANGE) ||
                ((inRow(IDC_CTRL1) || inRow(IDC_ALT1) || inRow(IDC_SHIFT1) || inRow(IDC_WIN1)) &&
                 code == BN_CLICKED))) {
        PickHotKey((id - IDC_KEYLIST1) % 10 + 1);
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
