#include "shared/companion_settings.h"

#include <algorithm>
#include <cstring>

#include "platform/handles.h"
#include "vocabulary/hotkey_table.h"

namespace zk::companion {

Text DesktopKey(int desk) {
    return Text(kSettingsKey) + u"\\Desktop" + DecimalText(desk);
}

Text ProgramsKey(int desk) {
    return DesktopKey(desk) + u"\\Programs";
}

bool ReadFlagOrDefault(Registry& registry, const Text& key, const Text& value, bool fallback) {
    RegData data;
    if (!registry.ReadValue(HkeyCurrentUser(), key, value, RegDword, data)) return fallback;
    return std::get<std::int32_t>(data) != 0;
}

Text DesktopName(Registry& registry, int desk) {
    RegData data;
    if (registry.ReadValue(HkeyCurrentUser(), DesktopKey(desk), kNameValue, RegSz, data)) {
        Text name = std::get<Text>(data);
        while (!name.empty() && (name.back() == u'\0' || name.back() == u' '))
            name.pop_back();
        if (!name.empty()) return name;
    }
    return u"Desktop " + DecimalText(desk);
}

bool BannerShown(Registry& registry) {
    return ReadFlagOrDefault(registry, kSettingsKey, kShowBannerValue, true);
}

bool NewsShown(Registry& registry) {
    return ReadFlagOrDefault(registry, kSettingsKey, kShowNewsValue, true);
}

bool StartProgramsOn(Registry& registry, int desk) {
    return ReadFlagOrDefault(registry, DesktopKey(desk), kStartProgramsValue, true);
}

std::optional<std::vector<Text>> StoredPrograms(RegistryApi& os, int desk) {
    UniqueRegKey key(os, nullptr);
    if (os.RegOpenKeyExW(HkeyCurrentUser(), ProgramsKey(desk), 0, KeyQueryValue, key.out()) != 0) {
        return std::nullopt;
    }
    std::vector<Text> programs;
    for (std::uint32_t i = 0;; ++i) {
        Text name;
        std::uint32_t type = 0;
        std::vector<std::byte> data;
        const std::int32_t status = os.RegEnumValueW(key.get(), i, name, type, data);
        if (status != 0) break;  // no more values, or none can be read
        if (type != RegSz && type != RegExpandSz) continue;
        Text line(data.size() / 2, u'\0');
        std::memcpy(line.data(), data.data(), line.size() * 2);
        line.erase(std::find(line.begin(), line.end(), u'\0'), line.end());
        if (!line.empty()) programs.push_back(std::move(line));
    }
    return programs;
}

}  // namespace zk::companion
