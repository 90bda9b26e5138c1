#include "DeskHerald/tray_wheel.h"

#include <cstdlib>

namespace zk::companion {

void TrayWheel::PointerOver(MousePoint at, int size) {
    if (!watching_) turned_ = 0;
    over_ = at;
    size_ = size;
    watching_ = true;
}

// Any point of the icon lies within its size of the point where the pointer was seen over it.
bool TrayWheel::Moved(MousePoint at) {
    if (watching_ && std::abs(at.x - over_.x) <= size_ && std::abs(at.y - over_.y) <= size_) {
        return true;
    }
    watching_ = false;
    return false;
}

TrayWheel::Turn TrayWheel::Wheel(MousePoint at, int delta) {
    if (!Moved(at)) return Turn::None;
    turned_ += delta;
    if (turned_ >= kNotch) {
        turned_ -= kNotch;
        return Turn::Before;
    }
    if (turned_ <= -kNotch) {
        turned_ += kNotch;
        return Turn::Next;
    }
    return Turn::None;
}

}  // namespace zk::companion
