#include "window/appearance.h"

#include <algorithm>
#include <cmath>

namespace zk::companion {
namespace {

constexpr int kTileWidth = 192, kTileHeight = 120, kMargin = 16, kLabel = 28, kFrame = 4,
              kTitleRow = 18;
constexpr int kBannerWidth = 280, kBannerHeight = 90;

// Inside a rounded square of side `side` whose corners have radius `radius`?
bool InsideRounded(double x, double y, double side, double radius) {
    if (x < 0 || y < 0 || x > side || y > side) return false;
    const double cx = std::clamp(x, radius, side - radius);
    const double cy = std::clamp(y, radius, side - radius);
    return (x - cx) * (x - cx) + (y - cy) * (y - cy) <= radius * radius;
}

}  // namespace

Rgb DesktopColour(int desk) {
    static constexpr std::array<Rgb, kDesktopCount> kColours = {
        {{0x46, 0xA8, 0x4F}, {0x3F, 0x6F, 0xB5}, {0xC0, 0x7A, 0x1C}, {0x8A, 0x4F, 0xB0}}};
    return kColours[static_cast<std::size_t>(std::clamp(desk, 1, kDesktopCount) - 1)];
}

Rgb EdgeColour(Rgb fill) {
    return {static_cast<std::uint8_t>(fill.r * 45 / 100),
            static_cast<std::uint8_t>(fill.g * 45 / 100),
            static_cast<std::uint8_t>(fill.b * 45 / 100)};
}

// A rectangle of this size in the middle of `area`.
Rect Centred(const Rect& area, int width, int height) {
    const int left = area.left + (area.Width() - width) / 2;
    const int top = area.top + (area.Height() - height) / 2;
    return {left, top, left + width, top + height};
}

PreviewLayout LayOutPreview(int dpi, const Rect& monitor, int titleRows) {
    int tileWidth = Scale(kTileWidth, dpi);
    int margin = Scale(kMargin, dpi);
    // A tile per desktop with a margin on each side take at most nine tenths of the screen's
    // width.
    const int room = monitor.Width() * 9 / 10;
    constexpr int kMargins = kDesktopCount + 1;
    if (kDesktopCount * tileWidth + kMargins * margin > room) {
        margin = std::max(2, room / 60);
        tileWidth = std::max(16, (room - kMargins * margin) / kDesktopCount);
    }
    const int tileHeight = tileWidth * kTileHeight / kTileWidth;
    const int label = Scale(kLabel, dpi);
    const int row = Scale(kTitleRow, dpi);
    PreviewLayout layout;
    layout.frame = std::max(1, Scale(kFrame, dpi));
    const int width = kDesktopCount * tileWidth + kMargins * margin;
    const int rows = std::clamp(titleRows, 0, kPreviewTitleRows);
    // Placed as if every title row were there, so that the tiles stay where they are when the
    // titles come: the window ends under the last row in use and the hint.
    const int fullHeight = tileHeight + label + (kPreviewTitleRows + 1) * row + 2 * margin;
    const Rect placed = Centred(monitor, width, fullHeight);
    const int height = tileHeight + label + (rows + 1) * row + 2 * margin;
    layout.window = {placed.left, placed.top, placed.right, placed.top + height};
    for (int i = 0; i < kDesktopCount; ++i) {
        const int left = margin + i * (tileWidth + margin);
        layout.tiles[i] = {left, margin, left + tileWidth, margin + tileHeight};
        layout.labels[i] = {left, margin + tileHeight, left + tileWidth,
                            margin + tileHeight + label};
        for (int r = 0; r < rows; ++r) {
            const int top = layout.labels[i].bottom + r * row;
            layout.titles[i][r] = {left, top, left + tileWidth, top + row};
        }
    }
    const int hintTop = margin + tileHeight + label + rows * row;
    layout.hint = {margin, hintTop, width - margin, hintTop + row};
    return layout;
}

int TileAt(const PreviewLayout& layout, int x, int y) {
    for (int i = 0; i < kDesktopCount; ++i) {
        if (layout.tiles[i].Contains(x, y) || layout.labels[i].Contains(x, y)) return i + 1;
    }
    return 0;
}

std::optional<std::pair<int, int>> TitleRowAt(const PreviewLayout& layout, int x, int y) {
    for (int i = 0; i < kDesktopCount; ++i) {
        for (int r = 0; r < kPreviewTitleRows; ++r) {
            if (layout.titles[i][r].Contains(x, y)) return std::pair{i + 1, r};
        }
    }
    return std::nullopt;
}

std::size_t PreviewWindowRows(std::size_t windows) {
    constexpr auto kRows = static_cast<std::size_t>(kPreviewTitleRows);
    return windows <= kRows ? windows : kRows - 1;
}

std::vector<Text> PreviewTitleRows(const std::vector<Text>& titles) {
    const std::size_t named = PreviewWindowRows(titles.size());
    std::vector<Text> rows(titles.begin(), titles.begin() + static_cast<std::ptrdiff_t>(named));
    if (named < titles.size()) {
        rows.push_back(u"and " + DecimalText(static_cast<std::int64_t>(titles.size() - named)) +
                       u" more");
    }
    return rows;
}

ViewColours ViewColoursFor(const SystemColours* highContrast) {
    if (highContrast != nullptr) {
        const SystemColours& s = *highContrast;
        return {s.window, s.windowText, s.grayText, s.window, s.highlight, s.highlightText};
    }
    return {{32, 36, 44}, {235, 238, 242}, {166, 172, 182},
            {44, 50, 62}, {51, 114, 196},  {255, 255, 255}};
}

double ContrastRatio(Rgb a, Rgb b) {
    const auto luminance = [](Rgb c) {
        const auto linear = [](std::uint8_t v) {
            const double s = v / 255.0;
            return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Text PreviewItemName(int desk, const Text& name, bool shown, const Text& newWindow) {
    Text item = DecimalText(desk) + u" " + name;
    if (shown) item += u", shown";
    if (!newWindow.empty()) item += u", new: " + newWindow;
    return item;
}

Text FinderItemName(const Text& title, const Text& program, const Text& desktopName, bool news) {
    return (news ? u"New: " : u"") + title + u", " + program + u", " + desktopName;
}

Text PreviewLabel(int desk, const Text& name, bool shown) {
    Text label = DecimalText(desk) + u"  " + name;
    if (shown) label = u"\u25CF " + label;  // the hint says what the dot means
    return label;
}

Rect BannerRect(int dpi, const Rect& monitor) {
    return Centred(monitor, std::min(Scale(kBannerWidth, dpi), monitor.Width()),
                   std::min(Scale(kBannerHeight, dpi), monitor.Height()));
}

std::vector<std::uint32_t> TrayIconPixels(int size, int desk, std::span<const std::uint8_t> glyph,
                                          bool news) {
    const Rgb fill = DesktopColour(desk);
    const Rgb edge = EdgeColour(fill);
    const int big = size * kSupersample;
    const double side = big, radius = big * 0.2, border = std::max(1.0, big * 0.08);
    // The mark of news: a dot in the top right corner, ringed in white over the number.
    const double dotX = side * 0.78, dotY = side * 0.22, dot = side * 0.22;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size) * size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            double r = 0, g = 0, b = 0, a = 0;
            for (int sy = 0; sy < kSupersample; ++sy) {
                for (int sx = 0; sx < kSupersample; ++sx) {
                    const int px = x * kSupersample + sx, py = y * kSupersample + sy;
                    const double fx = px + 0.5, fy = py + 0.5;
                    if (!InsideRounded(fx, fy, side, radius)) continue;
                    const bool inner = InsideRounded(fx - border, fy - border, side - 2 * border,
                                                     std::max(0.0, radius - border));
                    Rgb base = inner ? fill : edge;
                    const std::size_t at = static_cast<std::size_t>(py) * big + px;
                    double ink = at < glyph.size() ? glyph[at] / 255.0 : 0.0;
                    const double fromDot = std::hypot(fx - dotX, fy - dotY);
                    if (news && fromDot < dot) {
                        base = kNewsColour;
                        ink = fromDot < dot - border ? 0.0 : 1.0;
                    }
                    r += base.r + (255 - base.r) * ink;
                    g += base.g + (255 - base.g) * ink;
                    b += base.b + (255 - base.b) * ink;
                    a += 1;
                }
            }
            const double samples = kSupersample * kSupersample;
            const auto channel = [&](double v) {
                return static_cast<std::uint32_t>(std::lround(v / samples));
            };
            pixels[static_cast<std::size_t>(y) * size + x] =
                (channel(a * 255) << 24) | (channel(r) << 16) | (channel(g) << 8) | channel(b);
        }
    }
    return pixels;
}

}  // namespace zk::companion
