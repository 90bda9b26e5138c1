#include "winsupport/app_icon.h"

namespace zk::AppIcon {
namespace {

constexpr int kSmCxIcon = 11;
constexpr int kSmCyIcon = 12;
constexpr int kSmCxSmIcon = 49;
constexpr int kSmCySmIcon = 50;
constexpr std::uint32_t kImageIcon = 1;
constexpr std::uint32_t kLrShared = 0x8000;
constexpr Wparam kIconSmall = 0;
constexpr Wparam kIconBig = 1;

}  // namespace

void SetWindowIcons(Os& os, Hwnd hWnd, const Text& iconName, bool alsoTopOwner) {
    Hwnd top = hWnd;
    if (alsoTopOwner) {
        for (Hwnd owner = os.GetWindow(top, GwOwner); owner != nullptr;
             owner = os.GetWindow(top, GwOwner)) {
            top = owner;
        }
    }
    const Ansi name = os.WideCharToMultiByte(iconName);
    struct Size {
        Wparam which;
        int cxMetric, cyMetric;
    };
    for (const Size size :
         {Size{kIconBig, kSmCxIcon, kSmCyIcon}, Size{kIconSmall, kSmCxSmIcon, kSmCySmIcon}}) {
        const int cx = os.GetSystemMetrics(size.cxMetric);
        const int cy = os.GetSystemMetrics(size.cyMetric);
        const Handle icon =
            os.LoadImageA(os.GetModuleHandleW(), name, kImageIcon, cx, cy, kLrShared);
        if (alsoTopOwner) (void)os.SendMessageA(top, WmSetIcon, size.which, HandleValue(icon));
        (void)os.SendMessageA(hWnd, WmSetIcon, size.which, HandleValue(icon));
    }
}

}  // namespace zk::AppIcon
