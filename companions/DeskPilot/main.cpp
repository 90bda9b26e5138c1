// DeskPilot.exe N: the switcher of desktop N. Its core (pilot.h) decides; this shell holds the
// window that owns the hotkeys and timers, the preview, and the pictures of the desktop.
#include <windows.h>

#include <cstring>
#include <optional>

#include "DeskPilot/finder_window.h"
#include "DeskPilot/pilot.h"
#include "DeskPilot/preview_window.h"
#include "diagnostics/err_log.h"
#include "launch/entry_points.h"
#include "platform/win32/win32_os.h"
#include "resident/companion_args.h"
#include "window/monitor.h"
#include "window/win32_handles.h"
#include "window/window_base.h"
#include "window/window_events.h"

using namespace zk;
using namespace zk::companion;

namespace {

constexpr wchar_t kPilotClass[] = L"Zelkova2Pilot";

class PilotWindow final : public WindowBase<PilotWindow>, public Pilot::Shell {
  public:
    PilotWindow(Os& os, int desk, std::uint32_t controllerId)
        : desk_(desk),
          thumbnails_(os, controllerId),
          preview_(
              os, desk, thumbnails_,
              [this](int target) {
                  if (pilot_ != nullptr) pilot_->RequestSwitch(target);
              },
              [this](const FoundWindow& found) {
                  if (pilot_ != nullptr) pilot_->ShowFound(found);
              }),
          finder_(os, [this](const FoundWindow& found) {
              if (pilot_ != nullptr) pilot_->ShowFound(found);
          }) {
        // A hidden top-level window of this desktop: the system ties hotkeys to a window's desktop.
        CreateWindowOf(kPilotClass, WS_EX_TOOLWINDOW, L"Zelkova2 switcher", WS_POPUP,
                       RECT{0, 0, 0, 0});
    }
    void Attach(Pilot& pilot) {
        pilot_ = &pilot;
        // The pictures follow what changes on the desktop: at rest, none is taken.
        events_.emplace(nullptr, [this](HWND) { pilot_->WindowsChanged(); });
    }

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) {
        if (pilot_ != nullptr && message == WM_HOTKEY) {
            pilot_->HotKey(static_cast<int>(wParam));
            return 0;
        }
        if (pilot_ != nullptr && message == WM_TIMER) {
            pilot_->TimerFired(wParam);
            return 0;
        }
        if (pilot_ != nullptr && message == WM_QUERYENDSESSION) {
            pilot_->SessionEnding();
            return TRUE;  // the session may end: nothing of Zelkova2's is left unsaved
        }
        return Default(message, wParam, lParam);
    }

    void ShowPreview() override { preview_.Show(pilot_->Block()); }
    void HidePreview() override { preview_.Hide(); }
    void PutAway() override {
        preview_.PutAway();
        finder_.PutAway();
    }
    void HidePutAway() override {
        if (preview_.Away()) preview_.Hide();
        if (finder_.Away()) finder_.Hide();
    }
    bool PreviewShown() override {  // one put out of sight is in no picture
        return ::IsWindowVisible(preview_.Window()) != FALSE && !preview_.Away();
    }
    void ShowFinder() override {
        preview_.Hide();
        finder_.Show(pilot_->Block());
    }

    // Shrinks what this desktop shows into its shared picture.
    void Capture() override {
        Thumbnail* picture = thumbnails_.Of(desk_);
        if (picture == nullptr) return;
        const HDC screen = ::GetDC(nullptr);
        {
            const UniqueMemoryDc memory(::CreateCompatibleDC(screen));
            const BITMAPINFO info = ThumbnailBitmapInfo();
            void* bits = nullptr;
            const UniqueBitmap bitmap(
                ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
            if (bitmap) {
                const Selection canvas(memory.get(), bitmap.get());
                ::SetStretchBltMode(memory.get(), HALFTONE);
                const Rect all = VirtualScreen();
                if (::StretchBlt(memory.get(), 0, 0, kThumbnailWidth, kThumbnailHeight, screen,
                                 all.left, all.top, all.Width(), all.Height(), SRCCOPY)) {
                    ::GdiFlush();
                    std::memcpy(picture->pixels, bits, sizeof picture->pixels);
                    picture->valid = 1;
                }
            }
        }
        ::ReleaseDC(nullptr, screen);
    }

  private:
    int desk_;
    ThumbnailStore thumbnails_;
    PreviewWindow preview_;
    FinderWindow finder_;
    Pilot* pilot_ = nullptr;
    std::optional<WindowEvents> events_;
};

}  // namespace

ZK_ENTRY int ZkDeskPilot(int) {
    Win32Os os;
    ProcessContext context(
        os, [&](const Text& what) { ErrLog(os).LogError(LogMessage(u"DeskPilot: " + what)); });
    const CompanionArgs args =
        ParseCompanionArgs(reinterpret_cast<const char16_t*>(::GetCommandLineW()));
    if (!IsDesktopNumber(args.desk)) return 2;
    ControllerProcess controller(os, args.controllerId);
    if (!controller.Found()) return 0;  // the controller is gone already
    // The finder and the preview hand their accessible objects to screen readers through COM.
    const struct Com {
        Com() : ok(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
        ~Com() {
            if (ok) ::CoUninitialize();
        }
        bool ok;
    } com;
    PilotWindow window(os, args.desk, controller.Id());
    Pilot pilot(os, args.desk, controller, window.Window(), window);
    window.Attach(pilot);
    pilot.Run();
    return 0;
}
