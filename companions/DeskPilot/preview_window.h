#pragma once
// The preview of the four desktops on the switcher's desktop: a row of tiles with their number,
// name and picture, the shown one marked, and under each the titles of its first windows. Keys
// and clicks choose a desktop, a click on a title that window; it never steals the keyboard from
// another program but by the user's own hotkey or click.

#include <functional>

#include "DeskPilot/thumbnail_store.h"
#include "platform/os.h"
#include "shared/window_finder.h"
#include "vocabulary/desktops.h"
#include "window/appearance.h"
#include "window/list_accessible.h"
#include "window/view_colours.h"
#include "window/win32_handles.h"
#include "window/window_base.h"

namespace zk::companion {

inline constexpr wchar_t kPreviewClass[] = L"Zelkova2Preview";
inline constexpr wchar_t kPreviewCaption[] = L"Zelkova2 Preview";

// How a picture's pixels lie in its shared slot: 32-bit, top row first.
[[nodiscard]] BITMAPINFO ThumbnailBitmapInfo();

class PreviewWindow final : public WindowBase<PreviewWindow>, private AccessibleListSource {
  public:
    // `shown` is the switcher's desktop; `choose` is called with the chosen one, `showWindow`
    // with a window whose title was clicked.
    PreviewWindow(Os& os, int shown, ThumbnailStore& thumbnails, std::function<void(int)> choose,
                  std::function<void(const FoundWindow&)> showWindow);
    ~PreviewWindow() override;
    // Shows the desktops, with the news of `block` first under each and its tile marked.
    void Show(const SharedBlock& block);
    void Hide();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void Paint();
    void ChooseDesk(int desk);
    // For the title rows in use (titleRows_).
    void LayOut();
    static ListAccessible& Accessible();

    Text ListName() override;
    int ItemCount() override;
    Text ItemName(int index) override;
    int Chosen() override;
    RECT ItemRect(int index) override;
    void Choose(int index) override;

    Os& os_;
    int shown_;
    int selected_;
    ThumbnailStore& thumbnails_;
    std::function<void(int)> choose_;
    std::function<void(const FoundWindow&)> showWindow_;
    std::array<Text, kDesktopCount> names_;
    std::array<std::vector<FoundWindow>, kDesktopCount> windows_;
    PreviewLayout layout_;
    int titleRows_ = 0;
    UniqueFont font_;
    UniqueFont titleFont_;
};

}  // namespace zk::companion
