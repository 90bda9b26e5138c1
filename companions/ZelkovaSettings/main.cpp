// ZelkovaSettings.exe: the settings window (settings_model.h decides what it means). With
// --start it shows desktop 1 and starts Zelkova2, as the log-on entry and the Start menu do.
#include <windows.h>

#include <commctrl.h>

#include "ZelkovaSettings/settings_dialog.h"
#include "ZelkovaSettings/settings_model.h"
#include "common/launcher.h"
#include "common/window_base.h"
#include "diagnostics/err_log.h"
#include "diagnostics/win_api_error.h"
#include "hotkeys/hotkeys.h"
#include "launch/entry_points.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_os.h"

using zk::win32::W;

using namespace zk;
using namespace zk::companion;

namespace {

class SettingsDialog final : public WindowBase<SettingsDialog> {
  public:
    explicit SettingsDialog(Os& os) : os_(os) { CreateDialogOf(IDD_SETTINGS); }

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
            case WM_INITDIALOG:
                model_.emplace(os_, Window());
                settings_ = model_->Load();
                Fill();
                return TRUE;
            case WM_COMMAND:
                Command(LOWORD(wParam), HIWORD(wParam));
                return 0;
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

    [[nodiscard]] bool IsDialogMessage(MSG& message) {
        return Window() != nullptr && ::IsDialogMessageW(Window(), &message) != FALSE;
    }

  private:
    HWND Item(int id) { return ::GetDlgItem(Window(), id); }

    Text ItemText(int id) {
        const int length = ::GetWindowTextLengthW(Item(id));
        Text text(static_cast<std::size_t>(length) + 1, u'\0');
        ::GetWindowTextW(Item(id), reinterpret_cast<wchar_t*>(text.data()), length + 1);
        text.resize(static_cast<std::size_t>(length));
        return text;
    }

    void Fill() {
        filling_ = true;
        for (int i = 0; i < kHotKeyCount; ++i) {
            ::SetDlgItemTextW(Window(), IDC_LABEL1 + i, W(Text(kHotKeyTable[i].label) + u":"));
            ::SendMessageW(Item(IDC_HOTKEY1 + i), HKM_SETHOTKEY,
                           ToHotKeyControl(settings_.hotkeys[i]), 0);
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
        filling_ = false;
        ShowStates();
    }

    // Flagged as the user types: a combination another program holds, or one used twice.
    void ShowStates() {
        for (int id = 1; id <= kHotKeyCount; ++id) {
            const wchar_t* text = L"";
            switch (model_->Check(settings_, id)) {
                case ComboState::Taken:
                    text = L"\u26A0 Another program holds this combination.";
                    break;
                case ComboState::Twice:
                    text = L"\u26A0 Another hotkey has this combination.";
                    break;
                case ComboState::Empty:
                    text = L"No hotkey.";
                    break;
                default:
                    break;
            }
            ::SetDlgItemTextW(Window(), IDC_STATUS1 + id - 1, text);
        }
    }

    void Read() {
        for (int d = 1; d <= kDesktopCount; ++d) {
            DesktopSettings& desk = settings_.desktops[d - 1];
            desk.name = ItemText(IDC_NAME1 + d - 1);
            if (d == 1) continue;
            desk.startPrograms = ::IsDlgButtonChecked(Window(), IDC_START2 + d - 2) == BST_CHECKED;
            desk.programs = ProgramLines(ItemText(IDC_PROGRAMS2 + d - 2));
        }
        settings_.autostart = ::IsDlgButtonChecked(Window(), IDC_AUTOSTART) == BST_CHECKED;
        settings_.banner = ::IsDlgButtonChecked(Window(), IDC_BANNER) == BST_CHECKED;
    }

    bool Apply() {
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

    void Command(int id, int code) {
        if (id >= IDC_HOTKEY1 && id < IDC_HOTKEY1 + kHotKeyCount && code == EN_CHANGE &&
            !filling_) {
            const auto value =
                static_cast<std::uint16_t>(::SendMessageW(Item(id), HKM_GETHOTKEY, 0, 0));
            settings_.hotkeys[id - IDC_HOTKEY1] = FromHotKeyControl(value);
            ShowStates();
        } else if (id == IDC_APPLY) {
            (void)Apply();
        } else if (id == IDOK) {
            if (Apply()) ::DestroyWindow(Window());
        } else if (id == IDCANCEL) {
            ::DestroyWindow(Window());
        }
    }

    Os& os_;
    std::optional<SettingsModel> model_;
    Settings settings_;
    bool filling_ = false;
};

// The hotkey control comes from the common controls, which no other window of Zelkova2 uses. They
// are loaded here, for the life of this process, and not imported by Zelkova2Core.dll: every
// program maps that library, and under Wine the common controls cost each process about 1.8 MB.
bool LoadCommonControls() {
    const HMODULE library = ::LoadLibraryW(L"comctl32.dll");
    if (library == nullptr) return false;
    using Initialize = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto initialize = reinterpret_cast<Initialize>(
        reinterpret_cast<void*>(::GetProcAddress(library, "InitCommonControlsEx")));
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_HOTKEY_CLASS | ICC_STANDARD_CLASSES};
    return initialize != nullptr && initialize(&controls) != FALSE;
}

int StartFromLogOn(Os& os) {
    const Launch launch = StartZelkova(os, 30000);
    if (launch.result == LaunchResult::Started || launch.result == LaunchResult::AlreadyRunning) {
        return 0;
    }
    const Text why = launch.result == LaunchResult::Failed
                         ? u"Zelkova2.exe could not be started: " + ApiErrorText(os, launch.error)
                         : Text(u"Zelkova2 started but did not come up. Its error log says why.");
    ::MessageBoxW(nullptr, W(why), L"Zelkova2", MB_OK | MB_ICONWARNING);
    return 1;
}

}  // namespace

ZK_ENTRY int ZkZelkovaSettings(int show) {
    const wchar_t* commandLine = ::GetCommandLineW();
    Win32Os os;
    ProcessContext context(os, [&](const Text& what) {
        ErrLog(os).LogError(LogMessage(u"ZelkovaSettings: " + what));
    });
    if (std::wstring(commandLine).find(L"--start") != std::wstring::npos) {
        return StartFromLogOn(os);
    }
    if (!LoadCommonControls()) {
        const Text why =
            u"The settings window needs the system's common controls (comctl32.dll): " +
            ApiErrorText(os, ::GetLastError());
        ::MessageBoxW(nullptr, W(why), L"Zelkova2 settings", MB_OK | MB_ICONERROR);
        return 1;
    }
    SettingsDialog dialog(os);
    if (dialog.Window() == nullptr) return 1;
    ::ShowWindow(dialog.Window(), show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (dialog.IsDialogMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}
