#pragma once
// The desktop a companion runs on, and whether the system shows it now (which desktop the user
// sees is shared/shown_desktop.h's to say: this is a switcher's own look at the system).

#include "platform/os.h"

namespace zk::companion {

class OwnDesktop {
  public:
    explicit OwnDesktop(Os& os);

    [[nodiscard]] const Text& Name() const { return name_; }
    // Whether it is the input desktop at this moment.
    [[nodiscard]] bool Shown() { return InputName() == name_; }
    // The name of the input desktop now; empty when the system does not say.
    [[nodiscard]] Text InputName();

  private:
    Os& os_;
    Text name_;
};

}  // namespace zk::companion
