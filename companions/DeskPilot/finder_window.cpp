#include "DeskPilot/finder_window.h"

#include <algorithm>

#include "platform/win32/wide_text.h"
#include "settings/registry.h"
#include "shared/companion_settings.h"
#include "window/monitor.h"

using zk::win32::W;

namespace zk::companion {
namespace {

constexpr int kWidth = 640, kRowHeight = 30, kQueryHeight = 44, kVisibleRows = 12;

void Fill(HDC dc, const RECT& r, Rgb colour) {
    const UniqueBrush brush(::CreateSolidBrush(Ref(colour)));
    ::FillRect(dc, &r, brush.get());
}

// The window's own small icon (asked briefly: its program may hang), its class's, or the
// system's for a program.
HICON IconOf(HWND window) {
    DWORD_PTR own = 0;
    if (::SendMessageTimeoutW(window, WM_GETICON, ICON_SMALL2, 0, SMTO_ABORTIFHUNG, 50, &own) &&
        own != 0) {
        return reinterpret_cast<HICON>(own);
    }
    auto icon = reinterpret_cast<HICON>(::GetClassLongPtrW(window, GCLP_HICONSM));
    if (icon == nullptr) icon = reinterpret_cast<HICON>(::GetClassLongPtrW(window, GCLP_HICON));
    return icon != nullptr ? icon : ::LoadIconW(nullptr, IDI_APPLICATION);
}

}  // namespace

FinderWindow::FinderWindow(Os& os, std::function<void(const FoundWindow&)> show)
    : os_(os), show_(std::move(show)) {
    CreateWindowOf(kFinderClass, WS_EX_TOPMOST | WS_EX_TOOLWINDOW, L"Zelkova2 Find",
                   WS_POPUP | WS_BORDER, RECT{0, 0, 1, 1});
    Accessible().Connect(Window(), *this);
}

FinderWindow::~FinderWindow() {
    Accessible().Disconnect();
}

// One for the process: a screen reader may hold it longer than the window lives.
ListAccessible& FinderWindow::Accessible() {
    static ListAccessible accessible;
    return accessible;
}

Text FinderWindow::ListName() {
    return finder_ && !finder_->Query().empty() ? u"Find a window: " + finder_->Query()
                                                : Text(u"Find a window");
}

int FinderWindow::ItemCount() {
    return finder_ ? static_cast<int>(finder_->Matches().size()) : 0;
}

Text FinderWindow::ItemName(int index) {
    const FoundWindow& w = *finder_->Matches()[static_cast<std::size_t>(index)];
    return FinderItemName(w.title, w.program, names_[w.desk - 1], w.news);
}

int FinderWindow::Chosen() {
    const auto chosen = finder_ ? finder_->Chosen() : std::nullopt;
    return chosen ? static_cast<int>(*chosen) : -1;
}

RECT FinderWindow::ItemRect(int index) {
    const auto row = static_cast<std::size_t>(index);
    if (row < first_ || row >= first_ + static_cast<std::size_t>(Rows())) return {};
    RECT client{};
    ::GetClientRect(Window(), &client);
    const int top = queryHeight_ + static_cast<int>(row - first_) * rowHeight_;
    return {0, top, client.right, top + rowHeight_};
}

void FinderWindow::Choose(int index) {
    finder_->ChooseAt(static_cast<std::size_t>(index));
    Choose();
}

int FinderWindow::Rows() const {
    return finder_ ? std::min<int>(kVisibleRows, static_cast<int>(finder_->Matches().size())) : 0;
}

void FinderWindow::LayOut() {
    dpi_ = static_cast<int>(::GetDpiForWindow(Window()));
    rowHeight_ = Scale(kRowHeight, dpi_);
    queryHeight_ = Scale(kQueryHeight, dpi_);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                 static_cast<UINT>(dpi_));
    metrics.lfMessageFont.lfHeight = -Scale(14, dpi_);
    font_.reset(::CreateFontIndirectW(&metrics.lfMessageFont));
    const Rect monitor = WorkMonitor();
    const int width = std::min(Scale(kWidth, dpi_), monitor.Width());
    const int height = queryHeight_ + std::max(Rows(), 1) * rowHeight_ + 2;
    ::SetWindowPos(Window(), HWND_TOPMOST, monitor.left + (monitor.Width() - width) / 2,
                   monitor.top + monitor.Height() / 5, width, height, SWP_NOACTIVATE);
}

void FinderWindow::Show(const SharedBlock& block) {
    Registry registry(os_);
    for (int d = 1; d <= kDesktopCount; ++d)
        names_[d - 1] = DesktopName(registry, d);
    Returned();
    finder_.emplace(AllUserWindows(os_, &block));
    first_ = 0;
    Changed();
    ::ShowWindow(Window(), SW_SHOW);
    ::SetForegroundWindow(Window());
    ::SetFocus(Window());
}

void FinderWindow::Hide() {
    Returned();
    ::ShowWindow(Window(), SW_HIDE);
    finder_.reset();
}

void FinderWindow::Changed() {
    const auto chosen = finder_->Chosen();
    if (chosen) {
        if (*chosen < first_) first_ = *chosen;
        if (*chosen >= first_ + kVisibleRows) first_ = *chosen + 1 - kVisibleRows;
    }
    LayOut();
    ::InvalidateRect(Window(), nullptr, FALSE);
    Accessible().Moved();
}

void FinderWindow::Choose() {
    const FoundWindow* chosen = finder_ ? finder_->ChosenWindow() : nullptr;
    if (chosen == nullptr) return;
    const FoundWindow found = *chosen;
    show_(found);  // put away by the switcher when the window's desktop is another
    if (!Away()) Hide();
}

void FinderWindow::Key(UINT key) {
    switch (key) {
        case VK_UP:
            finder_->Move(-1);
            break;
        case VK_DOWN:
            finder_->Move(1);
            break;
        case VK_PRIOR:
            finder_->Move(-kVisibleRows);
            break;
        case VK_NEXT:
            finder_->Move(kVisibleRows);
            break;
        case VK_RETURN:
            Choose();
            return;
        case VK_ESCAPE:
            Hide();
            return;
        default:
            return;
    }
    Changed();
}

LRESULT FinderWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!finder_ && message != WM_PAINT && message != WM_GETOBJECT)
        return Default(message, wParam, lParam);
    if (Away() && (message == WM_KEYDOWN || message == WM_CHAR)) {  // back before it was hidden
        Hide();
        return 0;
    }
    switch (message) {
        case WM_GETOBJECT:
            if (const LRESULT object = Accessible().GetObject(wParam, lParam)) return object;
            return Default(message, wParam, lParam);
        case WM_KEYDOWN:
            Key(static_cast<UINT>(wParam));
            return 0;
        case WM_CHAR: {
            Text query = finder_->Query();
            const auto c = static_cast<char16_t>(wParam);
            if (c == u'\b') {
                if (!query.empty()) query.pop_back();
            } else if (c >= u' ') {
                query += c;
            } else {
                return 0;
            }
            finder_->SetQuery(query);
            first_ = 0;
            Changed();
            return 0;
        }
        case WM_MOUSEWHEEL:
            finder_->Move(GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? -1 : 1);
            Changed();
            return 0;
        case WM_LBUTTONUP: {
            const int y = static_cast<short>(HIWORD(lParam)) - queryHeight_;
            if (y >= 0 && rowHeight_ > 0) {
                finder_->ChooseAt(first_ + static_cast<std::size_t>(y / rowHeight_));
                Choose();
            }
            return 0;
        }
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE && !Away()) Hide();  // clicked elsewhere
            return 0;
        case WM_DPICHANGED:
            LayOut();
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

void FinderWindow::Paint() {
    const BufferedPaint paint(Window());
    const HDC dc = paint.Dc();
    const RECT& client = paint.Client();
    const ViewColours colours = CurrentViewColours();
    Fill(dc, client, colours.background);
    if (finder_) {
        const Selection font(dc, font_.get());
        ::SetBkMode(dc, TRANSPARENT);
        const int pad = Scale(10, dpi_), icon = Scale(16, dpi_), chip = Scale(10, dpi_);
        RECT query{0, 0, client.right, queryHeight_};
        Fill(dc, query, colours.field);
        query.left += pad;
        const Text prompt = finder_->Query().empty()
                                ? Text(u"Find a window: type part of its title or program")
                                : finder_->Query() + u"\u258F";
        ::SetTextColor(dc, Ref(finder_->Query().empty() ? colours.dim : colours.text));
        ::DrawTextW(dc, W(prompt), -1, &query,
                    DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        const auto& matches = finder_->Matches();
        const auto chosen = finder_->Chosen();
        if (matches.empty()) {
            RECT none{pad, queryHeight_, client.right - pad, queryHeight_ + rowHeight_};
            ::SetTextColor(dc, Ref(colours.dim));
            ::DrawTextW(dc, L"No window has that in its title or program.", -1, &none,
                        DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        }
        for (int row = 0; row < Rows(); ++row) {
            const std::size_t at = first_ + static_cast<std::size_t>(row);
            if (at >= matches.size()) break;
            const FoundWindow& w = *matches[at];
            const int top = queryHeight_ + row * rowHeight_;
            RECT line{0, top, client.right, top + rowHeight_};
            const bool isChosen = chosen && *chosen == at;
            if (isChosen) Fill(dc, line, colours.chosen);
            ::DrawIconEx(dc, pad, top + (rowHeight_ - icon) / 2, IconOf(w.window), icon, icon, 0,
                         nullptr, DI_NORMAL);
            // The desktop, at the right: a chip in its colour and its name.
            const Text desk = names_[w.desk - 1];
            SIZE deskSize{};
            ::GetTextExtentPoint32W(dc, W(desk), static_cast<int>(desk.size()), &deskSize);
            const int deskLeft = client.right - pad - deskSize.cx;
            Fill(dc,
                 RECT{deskLeft - pad / 2 - chip, top + (rowHeight_ - chip) / 2, deskLeft - pad / 2,
                      top + (rowHeight_ + chip) / 2},
                 DesktopColour(w.desk));
            RECT deskRect{deskLeft, top, client.right - pad, top + rowHeight_};
            ::SetTextColor(dc, Ref(isChosen ? colours.chosenText : colours.dim));
            ::DrawTextW(dc, W(desk), -1, &deskRect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
            RECT title{pad * 2 + icon, top, deskLeft - pad - chip - pad, top + rowHeight_};
            const Text text = (w.news ? u"New: " : u"") + w.title + u"  \u2014  " + w.program;
            ::SetTextColor(dc, Ref(isChosen ? colours.chosenText : colours.text));
            ::DrawTextW(dc, W(text), -1, &title,
                        DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        }
    }
}

}  // namespace zk::companion
