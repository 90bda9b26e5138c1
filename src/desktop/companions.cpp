#include "desktop/companions.h"

#include "support/text.h"
#include "vocabulary/event_names.h"

namespace zk {

std::vector<CompanionStart> CompanionsOfDesktop(std::int16_t desk) {
    std::vector<CompanionStart> starts = {{Program::Pilot, desk}, {Program::Herald, desk}};
    if (desk == 1) starts.push_back({Program::Herald, kControllerBlock});
    return starts;
}

Text CompanionArgument(std::int16_t argument) {
    return DecimalText(argument);
}

}  // namespace zk
