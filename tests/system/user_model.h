#pragma once
// What the user expects of the desktops, whatever way they ask: the desktop shown and the one
// shown before it. A switch to the desktop shown changes nothing; "previous" goes back to the one
// before, and does nothing before the first switch; next and the one before go round 1 to 4.
// The system moving the user behind Zelkova2's back is a switch like any other.

namespace zk::testing {

struct UserModel {
    int shown = 1;
    int previous = 0;

    void Show(int desk) {
        if (desk == shown) return;
        previous = shown;
        shown = desk;
    }
    void Previous() {
        if (previous != 0) Show(previous);
    }
    void Next() { Show(shown % 4 + 1); }
    void Before() { Show((shown + 2) % 4 + 1); }
};

}  // namespace zk::testing
