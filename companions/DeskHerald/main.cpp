// DeskHerald.exe N. With N = 5 it is the bridge (bridge.h); with N = 1 to 4 the herald of
// desktop N (herald.h), whose shell here holds the banner and the tray icon.
#include <windows.h>

#include "DeskHerald/banner_window.h"
#include "DeskHerald/bridge.h"
#include "DeskHerald/herald.h"
#include "DeskHerald/tray_icon.h"
#include "diagnostics/err_log.h"
#include "launch/entry_points.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_os.h"
#include "resident/companion_args.h"

using zk::win32::W;

using namespace zk;
using namespace zk::companion;

namespace {

class HeraldShell final : public Herald::Shell {
  public:
    explicit HeraldShell(int desk)
        : banner_(
              desk, [this] { return herald_ == nullptr || herald_->DesktopShown(); },
              [this] { return herald_ != nullptr && herald_->BannerGone(); },
              [this] { return herald_ != nullptr && herald_->LookAfterBanner(); }),
          tray_(desk) {}
    void Attach(Herald& herald) {
        herald_ = &herald;
        tray_.Attach(herald);
    }
    void ShowBanner(const Text& name) override { banner_.Show(name); }
    void TrayChanged() override { tray_.Update(); }
    void WatchWindows(bool on) override { tray_.WatchWindows(on); }
    void Arrived() override { tray_.WatchIfPointerOver(); }
    Hwnd HotKeyWindow() override { return tray_.Window(); }
    std::optional<bool> Ask(const Text& question) override {
        const int answer = ::MessageBoxW(tray_.Window(), W(question), L"Exit Zelkova2",
                                         MB_YESNOCANCEL | MB_ICONQUESTION | MB_SETFOREGROUND);
        if (answer == IDCANCEL) return std::nullopt;
        return answer == IDYES;
    }
    void Tell(const Text& message) override {
        ::MessageBoxW(tray_.Window(), W(message), L"Zelkova2",
                      MB_OK | MB_ICONWARNING | MB_SETFOREGROUND);
    }

  private:
    Herald* herald_ = nullptr;
    BannerWindow banner_;
    TrayIcon tray_;
};

}  // namespace

ZK_ENTRY int ZkDeskHerald(int) {
    Win32Os os;
    ProcessContext context(
        os, [&](const Text& what) { ErrLog(os).LogError(LogMessage(u"DeskHerald: " + what)); });
    const CompanionArgs args =
        ParseCompanionArgs(reinterpret_cast<const char16_t*>(::GetCommandLineW()));
    if (args.desk < 1 || args.desk > 5) return 2;
    ControllerProcess controller(os, args.controllerId);
    if (!controller.Found()) return 0;  // the controller is gone already
    if (args.desk == kControllerBlock) {
        Bridge(os, controller).Run();
        return 0;
    }
    HeraldShell shell(args.desk);
    Herald herald(os, args.desk, controller, shell);
    herald.Start();  // looks at the desktop before the icon (under Wine, a tray window) is added
    shell.Attach(herald);
    herald.Run();
    return 0;
}
