#include "DeskPilot/preview_keys.h"
#include "vocabulary/desktops.h"

namespace zk::companion {
namespace {

constexpr std::uint32_t kReturn = 0x0D, kEscape = 0x1B, kSpace = 0x20, kLeft = 0x25, kUp = 0x26,
                        kRight = 0x27, kDown = 0x28, kNumpad1 = 0x61, kTab = 0x09, kHome = 0x24,
                        kEnd = 0x23;

}  // namespace

PreviewAction PreviewKey(std::uint32_t key, int selected) {
    if (key >= '1' && key < '1' + kDesktopCount) {
        return {PreviewAction::Choose, static_cast<int>(key - '0')};
    }
    if (key >= kNumpad1 && key < kNumpad1 + kDesktopCount) {
        return {PreviewAction::Choose, static_cast<int>(key - kNumpad1 + 1)};
    }
    switch (key) {
        case kLeft:
        case kUp:
            return {PreviewAction::Select, selected == 1 ? kDesktopCount : selected - 1};
        case kRight:
        case kDown:
        case kTab:
            return {PreviewAction::Select, selected == kDesktopCount ? 1 : selected + 1};
        case kHome:
            return {PreviewAction::Select, 1};
        case kEnd:
            return {PreviewAction::Select, kDesktopCount};
        case kReturn:
        case kSpace:
            return {PreviewAction::Choose, selected};
        case kEscape:
            return {PreviewAction::Cancel, 0};
        default:
            return {};
    }
}

}  // namespace zk::companion
