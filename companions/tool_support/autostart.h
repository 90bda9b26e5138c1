#pragma once
// Starting Zelkova2 at log-on: a value of the user's Run key. It runs the settings program's
// start, which shows "Default" before it starts Zelkova2.

#include "platform/os.h"
#include "settings/registry.h"

namespace zk::companion {

inline constexpr char16_t kRunKey[] = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
inline constexpr char16_t kRunValue[] = u"Zelkova2";

[[nodiscard]] Text AutostartCommand(KernelApi& os);
[[nodiscard]] bool AutostartOn(Registry& registry);
// Writes or removes the value; false (the reason in the registry's text) when it cannot.
[[nodiscard]] bool SetAutostart(Os& os, Registry& registry, bool on);

}  // namespace zk::companion
