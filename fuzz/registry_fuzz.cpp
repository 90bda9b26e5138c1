// Registry::ReadValue over any stored type and data, asked for any type. What must hold: a
// failure leaves the destination untouched and says why; a success delivers the requested type.
//
// Input: the stored type, the requested type, then the data.
#include <vector>

#include "platform/sim/sim_os.h"
#include "settings/registry.h"

namespace {

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zk;
    if (size < 2) return 0;
    sim::SimOs os;
    const std::uint32_t stored = data[0] % 12, requested = data[1] % 12;
    std::vector<std::byte> bytes(size - 2);
    for (std::size_t i = 2; i < size; ++i)
        bytes[i - 2] = static_cast<std::byte>(data[i]);
    os.registry().SetValue(u"Software\\Zelkova", u"V", stored, bytes);
    Registry registry(os);
    const RegData untouched = Text(u"untouched");
    RegData destination = untouched;
    const bool read =
        registry.ReadValue(HkeyCurrentUser(), u"Software\\Zelkova", u"V", requested, destination);
    if (!read) {
        Check(destination == untouched);
        Check(!registry.LastErrorText().empty());
        return 0;
    }
    Check(stored == requested);
    switch (requested) {
        case RegSz:
        case RegExpandSz:
        case RegMultiSz:
            Check(std::get<Text>(destination).size() == bytes.size() / 2);
            break;
        case RegDword:
        case RegDwordBigEndian:
            Check(bytes.size() == 4 && std::holds_alternative<std::int32_t>(destination));
            break;
        default:
            Check(std::get<std::vector<std::byte>>(destination).size() == bytes.size() + 1);
            break;
    }
    Check(os.OpenKeyCount() == 0);
    return 0;
}
