#pragma once
// The views' colours as the system says they are now: in high contrast the user's system
// colours (SPI_GETHIGHCONTRAST, GetSysColor), else Zelkova2's own (appearance.h). A view reads
// them as it paints, and paints again on WM_SYSCOLORCHANGE and WM_SETTINGCHANGE.

#include <windows.h>

#include "window/appearance.h"

namespace zk::companion {

[[nodiscard]] inline COLORREF Ref(Rgb c) {
    return RGB(c.r, c.g, c.b);
}

[[nodiscard]] inline ViewColours CurrentViewColours() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    if (!::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) ||
        (contrast.dwFlags & HCF_HIGHCONTRASTON) == 0) {
        return ViewColoursFor(nullptr);
    }
    const auto system = [](int index) {
        const COLORREF c = ::GetSysColor(index);
        return Rgb{GetRValue(c), GetGValue(c), GetBValue(c)};
    };
    const SystemColours colours{system(COLOR_WINDOW), system(COLOR_WINDOWTEXT),
                                system(COLOR_GRAYTEXT), system(COLOR_HIGHLIGHT),
                                system(COLOR_HIGHLIGHTTEXT)};
    return ViewColoursFor(&colours);
}

}  // namespace zk::companion
