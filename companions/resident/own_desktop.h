#pragma once
// The desktop a companion runs on, and whether the system shows it now. A companion acts for
// the desktop shown only: under Wine 10 a window shown on another desktop takes the input there.

#include "platform/os.h"

namespace zk::companion {

class OwnDesktop {
  public:
    explicit OwnDesktop(Os& os);

    [[nodiscard]] const Text& Name() const { return name_; }
    // Whether it is the input desktop at this moment.
    [[nodiscard]] bool Shown() { return InputName() == name_; }
    // Whether the system shows another of Zelkova2's made desktops. Where it does not switch
    // desktops (Wine 8) the input desktop stays "Default", which then says nothing.
    [[nodiscard]] bool AnotherShown();
    // Which of Zelkova2's made desktops (2 to 4) the system shows; 0 for Default or none.
    [[nodiscard]] int MadeDesktopShown();
    // The name of the input desktop now; empty when the system does not say.
    [[nodiscard]] Text InputName();

  private:
    Os& os_;
    Text name_;
};

}  // namespace zk::companion
