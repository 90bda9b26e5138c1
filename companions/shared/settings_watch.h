#pragma once
// Notice of a change to Zelkova2's settings (HKEY_CURRENT_USER "Software\Zelkova" and its
// subkeys), by any writer: the settings window, the control tool, or a registry editor. What shows
// a setting (a tray icon's tooltip) follows at once.

#include "platform/handles.h"

namespace zk::companion {

class SettingsWatch {
  public:
    explicit SettingsWatch(Os& os);
    // Set once after a change; nullptr when the settings cannot be watched.
    [[nodiscard]] Handle Event() const { return event_.get(); }
    // Asks for the next notice, after the event has been set.
    bool Renew();

  private:
    Os& os_;
    UniqueRegKey key_;
    UniqueKernelHandle event_;
};

}  // namespace zk::companion
