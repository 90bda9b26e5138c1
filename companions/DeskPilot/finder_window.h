#pragma once
// The window finder on the switcher's desktop: a search line over the user's windows of every
// desktop, each row with the window's icon, title and program, and its desktop's name in the
// desktop's colour. Typing narrows the list; the arrows, the page keys and the wheel choose;
// Enter or a click shows the window; Esc, or a click elsewhere, closes it.

#include <functional>
#include <optional>

#include "platform/os.h"
#include "shared/window_finder.h"
#include "window/appearance.h"
#include "window/list_accessible.h"
#include "window/view_colours.h"
#include "window/win32_handles.h"
#include "window/window_base.h"

namespace zk::companion {

inline constexpr wchar_t kFinderClass[] = L"Zelkova2Finder";

class FinderWindow final : public WindowBase<FinderWindow>, private AccessibleListSource {
  public:
    // `show` is called with the window the user chose.
    FinderWindow(Os& os, std::function<void(const FoundWindow&)> show);
    ~FinderWindow() override;
    // Lists the windows, with the news of `block` first.
    void Show(const SharedBlock& block);
    void Hide();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void LayOut();
    void Changed();
    void Paint();
    void Choose();
    void Key(UINT key);
    static ListAccessible& Accessible();
    [[nodiscard]] int Rows() const;

    Text ListName() override;
    int ItemCount() override;
    Text ItemName(int index) override;
    int Chosen() override;
    RECT ItemRect(int index) override;
    void Choose(int index) override;

    Os& os_;
    std::function<void(const FoundWindow&)> show_;
    std::optional<WindowFinder> finder_;
    std::array<Text, kDesktopCount> names_;
    UniqueFont font_;
    int dpi_ = kBaseDpi;
    int rowHeight_ = 0;
    int queryHeight_ = 0;
    std::size_t first_ = 0;  // the match in the top row
};

}  // namespace zk::companion
