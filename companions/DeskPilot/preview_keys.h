#pragma once
// What a key does in the preview window: the four desktops stand in a row, the one shown now
// is selected first. Portable, so that it is tested on every platform.

#include <cstdint>

namespace zk::companion {

struct PreviewAction {
    enum Kind { None, Select, Choose, Cancel } kind = None;
    int desktop = 0;  // for Select and Choose: 1 to 4
};

// `selected` is the desktop selected now (1 to 4).
PreviewAction PreviewKey(std::uint32_t virtualKey, int selected);

}  // namespace zk::companion
