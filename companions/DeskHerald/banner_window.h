#pragma once
// The banner that names a desktop for a second when it is shown. It never takes the focus and
// goes away by itself.

#include <functional>

#include "support/text.h"
#include "window/win32_handles.h"
#include "window/window_base.h"

namespace zk::companion {

inline constexpr wchar_t kBannerClass[] = L"Zelkova2Banner";

class BannerWindow final : public WindowBase<BannerWindow> {
  public:
    // `desktopShown` says whether the banner's desktop is the one shown now; `gone`, called when
    // the banner has gone away, whether to call `look` every moment after, until it says no.
    BannerWindow(int desk, std::function<bool()> desktopShown, std::function<bool()> gone,
                 std::function<bool()> look);
    void Show(const Text& name);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void Paint();

    int desk_;
    std::function<bool()> desktopShown_, gone_, look_;
    bool shownOnInput_ = false;
    Text text_;
    UniqueFont font_;
};

}  // namespace zk::companion
