#include "desktop/companions.h"

#include "signals/event_names.h"
#include "support/text.h"

namespace zk {

std::vector<CompanionStart> CompanionsOfDesktop(std::int16_t desk) {
    std::vector<CompanionStart> starts = {{Companion::Pilot, desk}, {Companion::Herald, desk}};
    if (desk == 1) starts.push_back({Companion::Herald, kControllerBlock});
    return starts;
}

Text CompanionArgument(std::int16_t argument) {
    return DecimalText(argument);
}

}  // namespace zk
