#include "programs/programs.h"

#include <array>

#include "platform/module_path.h"

namespace zk {
namespace {

// In the order of Program.
constexpr std::array<const char16_t*, 5> kFileNames = {
    u"Zelkova2.exe",     u"DeskPilot.exe",       u"DeskHerald.exe",
    u"ZelkovaError.exe", u"ZelkovaSettings.exe",
};
static_assert(kFileNames.size() == static_cast<std::size_t>(Program::Settings) + 1);

}  // namespace

const char16_t* ProgramFileName(Program program) {
    return kFileNames.at(static_cast<std::size_t>(program));
}

Text ProgramPath(KernelApi& os, Program program) {
    return ExecutableFolder(os) + u"\\" + ProgramFileName(program);
}

}  // namespace zk
