#include "desktop/companions.h"

#include <string>

#include "signals/event_names.h"

namespace zk {

std::vector<CompanionStart> CompanionsOfDesktop(std::int16_t desk) {
    std::vector<CompanionStart> starts = {{Companion::Pilot, desk}, {Companion::Herald, desk}};
    if (desk == 1) starts.push_back({Companion::Herald, kControllerBlock});
    return starts;
}

Text CompanionArgument(std::int16_t argument) {
    const std::string digits = std::to_string(argument);
    return Text(digits.begin(), digits.end());
}

}  // namespace zk
