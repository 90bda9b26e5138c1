#include "vocabulary/programs.h"

#include <algorithm>
#include <array>

#include "platform/module_path.h"

namespace zk {
namespace {

// In the order of Program.
constexpr std::array<const char16_t*, 6> kFileNames = {
    u"Zelkova2.exe",     u"DeskPilot.exe",       u"DeskHerald.exe",
    u"ZelkovaError.exe", u"ZelkovaSettings.exe", u"StartZelkova2.exe",
};
static_assert(kFileNames.size() == static_cast<std::size_t>(Program::Launcher) + 1);

}  // namespace

const char16_t* ProgramFileName(Program program) {
    return kFileNames.at(static_cast<std::size_t>(program));
}

Text ProgramPath(KernelApi& os, Program program) {
    return ExecutableFolder(os) + u"\\" + ProgramFileName(program);
}

bool IsProgramFile(const Text& fileName, Program program) {
    const auto fold = [](char16_t c) {
        return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
    };
    const std::u16string_view ours = ProgramFileName(program);
    return std::equal(fileName.begin(), fileName.end(), ours.begin(), ours.end(),
                      [&](char16_t a, char16_t b) { return fold(a) == fold(b); });
}

}  // namespace zk
