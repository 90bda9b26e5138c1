#pragma once
// The program's desktops: how many there are and what they are called. Desktop 1 is the input
// desktop found at start, which the program calls "Default"; the others are the ones it makes.

#include <array>

namespace zk {

inline constexpr int kDesktopCount = 4;
inline constexpr char16_t kDefaultDesktopName[] = u"Default";
inline constexpr std::array<const char16_t*, kDesktopCount> kDesktopNames = {
    kDefaultDesktopName, u"desk2", u"desk3", u"desk4"};

[[nodiscard]] constexpr bool IsDesktopNumber(int desk) {
    return desk >= 1 && desk <= kDesktopCount;
}

}  // namespace zk
