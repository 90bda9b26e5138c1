#pragma once
// The simulated session's keyboard layout: US English, as the system maps and names keys.

#include <cstdint>
#include <string>

namespace zk::sim {

// MapVirtualKeyEx with map type 0 (virtual key to scan code); 0 when the key has none.
std::uint32_t UsScanCodeOf(std::uint32_t virtualKey);
// The GetKeyNameText name of a scan code (bit 8 set: extended key); empty when it has none.
std::string UsKeyNameOf(std::uint32_t scanCode, bool extended);

}  // namespace zk::sim
