#include "DeskPilot/preview_window.h"

#include "DeskPilot/preview_keys.h"
#include "platform/win32/wide_text.h"
#include "settings/registry.h"
#include "shared/companion_settings.h"
#include "window/monitor.h"

using zk::win32::W;

namespace zk::companion {
namespace {

void Fill(HDC dc, const Rect& r, Rgb colour) {
    const RECT rect{r.left, r.top, r.right, r.bottom};
    const UniqueBrush brush(::CreateSolidBrush(Ref(colour)));
    ::FillRect(dc, &rect, brush.get());
}

}  // namespace

BITMAPINFO ThumbnailBitmapInfo() {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = kThumbnailWidth;
    info.bmiHeader.biHeight = -kThumbnailHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

PreviewWindow::PreviewWindow(Os& os, int shown, ThumbnailStore& thumbnails,
                             std::function<void(int)> choose,
                             std::function<void(const FoundWindow&)> showWindow)
    : os_(os),
      shown_(shown),
      selected_(shown),
      thumbnails_(thumbnails),
      choose_(std::move(choose)),
      showWindow_(std::move(showWindow)) {
    CreateWindowOf(kPreviewClass, WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kPreviewCaption,
                   WS_POPUP | WS_BORDER, RECT{0, 0, 1, 1});
    Accessible().Connect(Window(), *this);
}

PreviewWindow::~PreviewWindow() {
    Accessible().Disconnect();
}

// One for the process: a screen reader may hold it longer than the window lives.
ListAccessible& PreviewWindow::Accessible() {
    static ListAccessible accessible;
    return accessible;
}

Text PreviewWindow::ListName() {
    return u"Zelkova2 desktops";
}

int PreviewWindow::ItemCount() {
    return kDesktopCount;
}

Text PreviewWindow::ItemName(int index) {
    const auto& windows = windows_[static_cast<std::size_t>(index)];
    const Text news = !windows.empty() && windows.front().news ? windows.front().title : Text();
    return PreviewItemName(index + 1, names_[static_cast<std::size_t>(index)], index + 1 == shown_,
                           news);
}

int PreviewWindow::Chosen() {
    return selected_ - 1;
}

RECT PreviewWindow::ItemRect(int index) {
    const Rect& tile = layout_.tiles[static_cast<std::size_t>(index)];
    const Rect& label = layout_.labels[static_cast<std::size_t>(index)];
    return {tile.left, tile.top, tile.right, label.bottom};
}

void PreviewWindow::Choose(int index) {
    ChooseDesk(index + 1);
}

void PreviewWindow::LayOut() {
    const UINT dpi = ::GetDpiForWindow(Window());
    layout_ = LayOutPreview(static_cast<int>(dpi), WorkMonitor(), titleRows_);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    metrics.lfMessageFont.lfHeight = -Scale(12, static_cast<int>(dpi));
    titleFont_.reset(::CreateFontIndirectW(&metrics.lfMessageFont));
    metrics.lfMessageFont.lfWeight = FW_SEMIBOLD;
    metrics.lfMessageFont.lfHeight = -Scale(15, static_cast<int>(dpi));
    font_.reset(::CreateFontIndirectW(&metrics.lfMessageFont));
    const Rect& w = layout_.window;
    ::SetWindowPos(Window(), HWND_TOPMOST, w.left, w.top, w.Width(), w.Height(), SWP_NOACTIVATE);
}

void PreviewWindow::Show(const SharedBlock& block) {
    Returned();
    Registry registry(os_);
    for (int d = 1; d <= kDesktopCount; ++d)
        names_[d - 1] = DesktopName(registry, d);
    selected_ = shown_;
    titleRows_ = 0;
    LayOut();
    for (auto& windows : windows_)
        windows.clear();
    ::ShowWindow(Window(), SW_SHOW);
    ::SetForegroundWindow(Window());
    ::SetFocus(Window());
    ::UpdateWindow(Window());
    // The titles come after the first picture: the preview opens as fast as before.
    for (FoundWindow& w : AllUserWindows(os_, &block))
        windows_[w.desk - 1].push_back(std::move(w));
    for (auto& windows : windows_) {
        std::stable_partition(windows.begin(), windows.end(),
                              [](const FoundWindow& w) { return w.news; });
        titleRows_ =
            std::max(titleRows_,
                     static_cast<int>(PreviewTitleRows(std::vector<Text>(windows.size())).size()));
    }
    if (titleRows_ > 0) LayOut();  // the rows the titles take, and no empty band
    ::InvalidateRect(Window(), nullptr, FALSE);
    Accessible().Moved();
}

void PreviewWindow::Hide() {
    Returned();
    if (::IsWindowVisible(Window())) ::ShowWindow(Window(), SW_HIDE);
}

// The switcher puts the preview away when the choice leaves this desktop, or hides it.
void PreviewWindow::ChooseDesk(int desk) {
    choose_(desk);
}

LRESULT PreviewWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETOBJECT:
            if (const LRESULT object = Accessible().GetObject(wParam, lParam)) return object;
            return Default(message, wParam, lParam);
        case WM_KEYDOWN: {
            if (Away()) {  // back on its desktop before the switcher hid it
                Hide();
                return 0;
            }
            const PreviewAction action = PreviewKey(static_cast<std::uint32_t>(wParam), selected_);
            if (action.kind == PreviewAction::Select) {
                selected_ = action.desktop;
                ::InvalidateRect(Window(), nullptr, FALSE);
                Accessible().Moved();
            } else if (action.kind == PreviewAction::Choose) {
                ChooseDesk(action.desktop);
            } else if (action.kind == PreviewAction::Cancel) {
                Hide();
            }
            return 0;
        }
        case WM_LBUTTONUP: {
            const int x = static_cast<short>(LOWORD(lParam)),
                      y = static_cast<short>(HIWORD(lParam));
            if (const auto title = TitleRowAt(layout_, x, y)) {
                const auto& windows = windows_[title->first - 1];
                const auto row = static_cast<std::size_t>(title->second);
                if (row < PreviewWindowRows(windows.size())) {  // not "and N more"
                    const FoundWindow found = windows[row];
                    showWindow_(found);
                    if (!Away()) Hide();
                }
                return 0;
            }
            const int desk = TileAt(layout_, x, y);
            if (desk != 0) ChooseDesk(desk);
            return 0;
        }
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE && !Away()) Hide();  // clicked elsewhere
            return 0;
        case WM_DPICHANGED:
            if (::IsWindowVisible(Window())) LayOut();
            return 0;
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
        case WM_THEMECHANGED:
            ::InvalidateRect(Window(), nullptr, FALSE);
            return 0;
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // painted whole, off screen: no flicker
        default:
            return Default(message, wParam, lParam);
    }
}

void PreviewWindow::Paint() {
    const BufferedPaint paint(Window());
    const HDC dc = paint.Dc();
    const RECT& client = paint.Client();
    {
        const ViewColours colours = CurrentViewColours();
        Fill(dc, {0, 0, client.right, client.bottom}, colours.background);
        const Selection font(dc, font_.get());
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, Ref(colours.text));
        ::SetStretchBltMode(dc, HALFTONE);
        const BITMAPINFO info = ThumbnailBitmapInfo();
        for (int d = 1; d <= kDesktopCount; ++d) {
            const Rect& tile = layout_.tiles[d - 1];
            const int f = layout_.frame;
            if (d == selected_) {  // the shown one says so in its label
                Fill(dc, {tile.left - f, tile.top - f, tile.right + f, tile.bottom + f},
                     colours.chosen);
            }
            const Thumbnail* picture = thumbnails_.Of(d);
            if (picture != nullptr && picture->valid != 0) {
                ::StretchDIBits(dc, tile.left, tile.top, tile.Width(), tile.Height(), 0, 0,
                                kThumbnailWidth, kThumbnailHeight, picture->pixels, &info,
                                DIB_RGB_COLORS, SRCCOPY);
            } else {
                Fill(dc, tile, colours.field);
            }
            const Rect& l = layout_.labels[d - 1];
            RECT label{l.left, l.top, l.right, l.bottom};
            const Text text = PreviewLabel(d, names_[d - 1], d == shown_);
            ::DrawTextW(dc, W(text), -1, &label,
                        DT_CENTER | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
            std::vector<Text> titles;
            for (const FoundWindow& w : windows_[d - 1])
                titles.push_back(w.news ? u"New: " + w.title : w.title);
            if (!windows_[d - 1].empty() && windows_[d - 1].front().news) {
                const int dot = layout_.frame * 3;
                Fill(dc,
                     {tile.right - 2 * dot, tile.top + dot, tile.right - dot, tile.top + 2 * dot},
                     kNewsColour);
            }
            const auto rows = PreviewTitleRows(titles);
            const Selection small(dc, titleFont_.get());
            ::SetTextColor(dc, Ref(colours.dim));
            for (std::size_t r = 0; r < rows.size(); ++r) {
                const Rect& t = layout_.titles[d - 1][r];
                RECT row{t.left, t.top, t.right, t.bottom};
                ::DrawTextW(dc, W(rows[r]), -1, &row,
                            DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
            }
            ::SetTextColor(dc, Ref(colours.text));
        }
        const Selection small(dc, titleFont_.get());
        ::SetTextColor(dc, Ref(colours.dim));
        RECT hint{layout_.hint.left, layout_.hint.top, layout_.hint.right, layout_.hint.bottom};
        ::DrawTextW(dc, W(Text(kPreviewHint)), -1, &hint,
                    DT_CENTER | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    }
}

}  // namespace zk::companion
