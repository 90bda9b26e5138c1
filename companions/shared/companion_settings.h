#pragma once
// The settings the companions read and the settings window writes, beside the controller's
// hotkey values under HKEY_CURRENT_USER "Software\Zelkova":
//   ShowBanner                      REG_DWORD, 0 hides the banner of a shown desktop
//   ShowNews                        REG_DWORD, 0 stops telling of windows on other desktops
//   Desktop<N>\Name                 REG_SZ, the desktop's name ("Desktop N" when empty or absent)
//   Desktop<N>\StartPrograms        REG_DWORD, 0 turns desktop N's start-up programs off
//   Desktop<N>\Programs\<any name>  REG_SZ or REG_EXPAND_SZ, one command line each; without
//                                   the key, desktops 2 to 4 start the Windows shell

#include <optional>
#include <vector>

#include "platform/os.h"
#include "settings/registry.h"

namespace zk::companion {

inline constexpr char16_t kShowBannerValue[] = u"ShowBanner";
inline constexpr char16_t kShowNewsValue[] = u"ShowNews";
inline constexpr char16_t kNameValue[] = u"Name";
inline constexpr char16_t kStartProgramsValue[] = u"StartPrograms";
inline constexpr char16_t kDefaultShell[] = u"%SystemRoot%\\explorer.exe";

[[nodiscard]] Text DesktopKey(int desk);
[[nodiscard]] Text ProgramsKey(int desk);

// A DWORD setting; `fallback` when it is missing or cannot be read.
[[nodiscard]] bool ReadFlagOrDefault(Registry& registry, const Text& key, const Text& value,
                                     bool fallback);
[[nodiscard]] Text DesktopName(Registry& registry, int desk);
[[nodiscard]] bool BannerShown(Registry& registry);
[[nodiscard]] bool NewsShown(Registry& registry);
[[nodiscard]] bool StartProgramsOn(Registry& registry, int desk);

// The command lines stored for desktop N, in the order of their values, as stored (references
// not expanded); nothing when the key does not exist.
[[nodiscard]] std::optional<std::vector<Text>> StoredPrograms(RegistryApi& os, int desk);

}  // namespace zk::companion
