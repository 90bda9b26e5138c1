#pragma once
// How the companions look, apart from the drawing calls: the desktops' colours, sizes that follow
// the screen's DPI, where the preview's tiles and the banner go, and the pixels of the tray icon.
// The program's tile style: rounded tiles with a darker edge, the shown desktop in zelkova green.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "support/text.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

struct Rgb {
    std::uint8_t r, g, b;
};
// Desktop 1 in zelkova green, the others each in a colour of its own.
[[nodiscard]] Rgb DesktopColour(int desk);
[[nodiscard]] Rgb EdgeColour(Rgb fill);
// The colours of the views drawn by hand (the finder, the preview, the banner): Zelkova2's own,
// or in high contrast the ones the user chose for the system. The chosen row or tile stands out
// from its neighbours by at least 3:1, and text from what is behind it by at least 4.5:1.
struct ViewColours {
    Rgb background, text, dim, field, chosen, chosenText;
};
// COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_GRAYTEXT, COLOR_HIGHLIGHT and COLOR_HIGHLIGHTTEXT.
struct SystemColours {
    Rgb window, windowText, grayText, highlight, highlightText;
};
// Zelkova2's own colours, or with `highContrast` the system's.
[[nodiscard]] ViewColours ViewColoursFor(const SystemColours* highContrast);
// How far apart two colours are for the eye (the WCAG contrast ratio, 1 to 21).
[[nodiscard]] double ContrastRatio(Rgb a, Rgb b);

// The mark of a desktop with news, on the tray icon and in the preview.
inline constexpr Rgb kNewsColour{0xF5, 0x9E, 0x0B};

inline constexpr int kBaseDpi = 96;
// A length given for 96 DPI, at `dpi`.
[[nodiscard]] constexpr int Scale(int length, int dpi) {
    return (length * dpi + kBaseDpi / 2) / kBaseDpi;
}

struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    [[nodiscard]] int Width() const { return right - left; }
    [[nodiscard]] int Height() const { return bottom - top; }
    [[nodiscard]] bool Contains(int x, int y) const {
        return x >= left && x < right && y >= top && y < bottom;
    }
};

// The preview: a tile for each desktop in a row with a label under each, and under that the
// first titles of its windows; centred on the monitor and never wider than it.
inline constexpr int kPreviewTitleRows = 4;
struct PreviewLayout {
    Rect window;                             // in screen coordinates
    std::array<Rect, kDesktopCount> tiles;   // in the window's client coordinates
    std::array<Rect, kDesktopCount> labels;  // likewise
    std::array<std::array<Rect, kPreviewTitleRows>, kDesktopCount> titles;  // likewise
    Rect hint;      // the line that says the keys, under the rest
    int frame = 0;  // the width of the frame round the chosen tile
};
// `monitor` is the work area of the monitor where the user works, in the virtual screen's
// coordinates (a monitor left of the primary one starts below 0). `titleRows` rows of titles are
// under the labels (none until the titles are known, and none where no desktop has a window).
[[nodiscard]] PreviewLayout LayOutPreview(int dpi, const Rect& monitor,
                                          int titleRows = kPreviewTitleRows);
// The hint line's text.
inline constexpr char16_t kPreviewHint[] =
    u"\u25CF shown   \u2190 \u2192 or 1\u20134 choose   Enter shows it   Esc closes";
// The desktop whose tile is under a point of the client area; 0 for none.
[[nodiscard]] int TileAt(const PreviewLayout& layout, int x, int y);
// The desktop and the row of the title under a point; nothing when no title row is there.
[[nodiscard]] std::optional<std::pair<int, int>> TitleRowAt(const PreviewLayout& layout, int x,
                                                            int y);
// What a desktop's title rows say: its windows' titles, or where they do not fit, the first ones
// and "and N more" in the last row.
[[nodiscard]] std::vector<Text> PreviewTitleRows(const std::vector<Text>& titles);
// How many of those rows name a window, for `windows` windows.
[[nodiscard]] std::size_t PreviewWindowRows(std::size_t windows);
[[nodiscard]] Text PreviewLabel(int desk, const Text& name, bool shown);

// What a screen reader says of a desktop in the preview, and of a window in the finder.
[[nodiscard]] Text PreviewItemName(int desk, const Text& name, bool shown, const Text& newWindow);
[[nodiscard]] Text FinderItemName(const Text& title, const Text& program, const Text& desktopName,
                                  bool news);

// The banner that names a shown desktop, centred on the screen.
[[nodiscard]] Rect BannerRect(int dpi, const Rect& monitor);

// The tray icon of desktop N at `size` pixels: one tile of the style in the desktop's colour,
// with its number. `glyph` is the number's coverage (0 to 255), drawn by the system's font
// renderer on a square of size * kSupersample pixels. Pixels are premultiplied BGRA, top down.
inline constexpr int kSupersample = 4;
// With `news`, a dot of kNewsColour in its top right corner says another desktop has news.
[[nodiscard]] std::vector<std::uint32_t> TrayIconPixels(int size, int desk,
                                                        std::span<const std::uint8_t> glyph,
                                                        bool news = false);

}  // namespace zk::companion
