#pragma once
// EventNames: the 54 signals that the controller shares with its companion programs, each a
// named event "Local\larchmont_" + signal name, and the rule that maps an action addressed to a
// desktop onto its signal index.

#include <array>
#include <climits>
#include <cstdint>

#include "support/text.h"
#include "support/zk_error.h"

namespace zk {

enum SignalKind : std::int32_t {
    KindSwitchTo = 1,
    KindUpdate = 2,
    KindShowPreview = 3,
    KindShowPopup = 4,
    KindShutdown = 5,
    KindReadReg = 6,
};

inline constexpr std::int16_t kSignalCount = 54;
inline constexpr std::int16_t kSignalsPerDesktop = 12;
// The desktop number that addresses the controller's own block (indexes 49 to 54).
inline constexpr std::int16_t kControllerBlock = 5;
inline constexpr char16_t kEventPrefix[] = u"Local\\larchmont_";

class EventNames {
  public:
    // Fills the table; until then every name is empty.
    void InitEventNames();
    // The full event name of signal index 1..54; empty for any other index.
    [[nodiscard]] Text EventName(std::int16_t index) const;
    // The signal index of `kind` addressed to block `desk`, in 16-bit arithmetic; throws the
    // overflow error where a step leaves the 16-bit range. No argument is range-checked.
    [[nodiscard]] static constexpr std::int16_t EventIndex(std::int32_t kind, std::int16_t desk,
                                                           std::int16_t target);

  private:
    static constexpr std::int16_t Checked(std::int32_t value) {
        if (value < INT16_MIN || value > INT16_MAX) RaiseOverflow();
        return static_cast<std::int16_t>(value);
    }
    std::array<Text, kSignalCount> names_;
};

constexpr std::int16_t EventNames::EventIndex(std::int32_t kind, std::int16_t desk,
                                              std::int16_t target) {
    const std::int16_t base = Checked(Checked(desk - 1) * kSignalsPerDesktop);
    switch (kind) {
        case KindSwitchTo:
            return Checked(base + target);
        case KindUpdate:
            return Checked(Checked(base + 4) + target);
        case KindShowPreview:
            return Checked(base + 11);
        case KindShowPopup:
            return Checked(base + 12);
        case KindShutdown:
            return Checked(base + (desk == kControllerBlock ? 6 : 10));
        case KindReadReg:
            return Checked(base + (desk == kControllerBlock ? 5 : 9));
        default:
            return base;
    }
}

}  // namespace zk
