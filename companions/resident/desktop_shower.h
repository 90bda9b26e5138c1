#pragma once
// Shows a desktop from the process that first learns that it is wanted: the switcher woken by a
// key shows the target itself, one process and one message before the controller could, and the
// command it sends afterwards keeps the controller's record and its own switch as they were. A
// switch the system refuses here is left to the controller, which makes it on the command.

#include <array>

#include "platform/handles.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

class DesktopShower {
  public:
    explicit DesktopShower(DesktopApi& os);

    // Opens, with the switch right alone, each desktop that exists now, so that the way of a
    // switch opens nothing; a desktop made later is opened the first time it is shown.
    void OpenAll();
    // Whether the system showed desktop `desk`.
    [[nodiscard]] bool Show(int desk);

  private:
    [[nodiscard]] Hdesk Handle(int desk);

    DesktopApi& os_;
    std::array<UniqueDesktop, kDesktopCount> desktops_;
};

}  // namespace zk::companion
