#pragma once
// The mouse wheel over the tray icon shows the next desktop (turned towards the user) or the one
// before (turned away), in order. The notification area tells an icon of clicks and of the
// pointer moving over it, but not of the wheel (NOTIFYICONDATA, uCallbackMessage): so from the
// moment the pointer is over the icon until it leaves, and only then, the herald watches the
// mouse with a low-level hook. This is what the watch decides; the hook is the shell's.

namespace zk::companion {

struct MousePoint {
    int x = 0;
    int y = 0;
};

class TrayWheel {
  public:
    enum class Turn { None, Next, Before };
    // One notch of a wheel; a fine wheel sends parts of it.
    static constexpr int kNotch = 120;

    // The pointer is over the icon, at `at`; the icon is `size` pixels across.
    void PointerOver(MousePoint at, int size);
    [[nodiscard]] bool Watching() const { return watching_; }
    // The pointer moved to `at`; false when it has left the icon, which ends the watch.
    bool Moved(MousePoint at);
    // The wheel turned by `delta` with the pointer at `at`: a whole notch turns the desktops.
    [[nodiscard]] Turn Wheel(MousePoint at, int delta);
    // The desktop is left: the next one's icon watches from here on.
    void Stop() { watching_ = false; }

  private:
    MousePoint over_;
    int size_ = 0;
    int turned_ = 0;
    bool watching_ = false;
};

}  // namespace zk::companion
