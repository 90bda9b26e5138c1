#pragma once
// AppIcon: gives a window (and, if asked, the top window of its owner chain) its big and small
// icon from an icon group of the program's own resources.

#include "platform/os.h"

namespace zk::AppIcon {

inline constexpr char16_t kAppIconName[] = u"AAA";

// Nothing is checked: an icon that cannot be loaded is sent as 0, which clears it.
void SetWindowIcons(Os& os, Hwnd hWnd, const Text& iconName, bool alsoTopOwner);

}  // namespace zk::AppIcon
