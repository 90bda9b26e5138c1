#include "platform/module_path.h"

#include <vector>

namespace zk {

Text ExecutablePath(KernelApi& os) {
    std::vector<char16_t> buffer(260);
    constexpr std::size_t kLongestPath = 32768;
    for (;;) {
        const std::uint32_t n = os.GetModuleFileNameW(buffer);
        if (n < buffer.size() || buffer.size() >= kLongestPath) return Text(buffer.data(), n);
        buffer.resize(buffer.size() * 2);  // truncated: the path is longer than the buffer
    }
}

Text ExecutableFolder(KernelApi& os) {
    const Text path = ExecutablePath(os);
    const auto slash = path.find_last_of(u'\\');
    return slash == Text::npos ? Text() : path.substr(0, slash);
}

Text ExecutableName(KernelApi& os) {
    const Text path = ExecutablePath(os);
    const auto slash = path.find_last_of(u'\\');
    Text name = slash == Text::npos ? path : path.substr(slash + 1);
    const auto dot = name.find_last_of(u'.');
    if (dot != Text::npos) name.erase(dot);
    return name;
}

}  // namespace zk
