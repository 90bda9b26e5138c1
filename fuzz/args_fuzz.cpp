// A companion's command-line number. What must hold: the desktop is 0 or 1 to 5, a controller id
// comes only with a desktop, and a line the companions write is read back as written.
//
// Input: the command line as UTF-16 code units.
#include <string>

#include "resident/companion_args.h"

namespace {

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zk::companion;
    std::u16string line(size / 2, u'\0');
    for (std::size_t i = 0; i < line.size(); ++i)
        line[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    const CompanionArgs args = ParseCompanionArgs(line);
    Check(args.desk >= 0 && args.desk <= 5);
    Check(args.desk != 0 || args.controllerId == 0);
    if (args.desk != 0 && args.controllerId != 0) {
        const CompanionArgs again =
            ParseCompanionArgs(CompanionCommandLine(args.desk, args.controllerId));
        Check(again.desk == args.desk && again.controllerId == args.controllerId);
    }
    return 0;
}
