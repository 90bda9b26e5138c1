#include "tool_support/autostart.h"

#include "platform/handles.h"
#include "vocabulary/programs.h"

namespace zk::companion {

Text AutostartCommand(KernelApi& os) {
    return u"\"" + ProgramPath(os, Program::Settings) + u"\" --start";
}

bool AutostartOn(Registry& registry) {
    RegData value;
    return registry.ReadValue(HkeyCurrentUser(), kRunKey, kRunValue, RegSz, value);
}

bool SetAutostart(Os& os, Registry& registry, bool on) {
    if (on) {
        std::uint32_t type = RegSz;
        return registry.CreateKey(HkeyCurrentUser(), kRunKey) &&
               registry.WriteValue(HkeyCurrentUser(), kRunKey, kRunValue, type,
                                   AutostartCommand(os));
    }
    UniqueRegKey key(os, nullptr);
    if (os.RegOpenKeyExW(HkeyCurrentUser(), kRunKey, 0, KeySetValue, key.out()) == 0) {
        (void)os.RegDeleteValueW(key.get(), kRunValue);
    }
    return true;
}

}  // namespace zk::companion
