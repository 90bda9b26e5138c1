#include "platform/sim/sim_registry.h"

#include <algorithm>

#include "platform/sim/code_page_1252.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kKeyAllAccess = 0xF003F;

std::int32_t Code(std::uint32_t error) {
    return static_cast<std::int32_t>(error);
}

}  // namespace

SimRegistry::SimRegistry(Session& session) : session_(session) {
    hive_.onChange = [this](const Text& path) {
        Notify([&](const Text& watched, bool subtree) {
            return SameName(watched, path) ||
                   (subtree &&
                    (watched.empty() || (path.size() > watched.size() &&
                                         SameName(path.substr(0, watched.size()), watched) &&
                                         path[watched.size()] == u'\\')));
        });
    };
}

void SimRegistry::Notify(const std::function<bool(const Text& watched, bool subtree)>& answers) {
    std::erase_if(notices_, [&](const Notice& notice) {
        if (!answers(notice.path, notice.subtree)) return false;
        session_.Object(notice.event).signalled = true;
        session_.Release(notice.event);
        return true;
    });
}

const SimRegistry::KeyHandle* SimRegistry::LookupKey(Hkey key) const {
    const auto it = keys_.find(HandleValue(key));
    return it == keys_.end() ? nullptr : &it->second;
}

std::int32_t SimRegistry::OpenKey(Hkey root, const Text& subKey, std::uint32_t access, bool create,
                                  Hkey& result) {
    Text base;
    if (root != HkeyCurrentUser()) {
        const KeyHandle* parent = LookupKey(root);
        if (parent == nullptr) return Code(ErrorInvalidHandle);
        base = parent->path;
    }
    const Text path = RegistryHive::Join(base, subKey);
    if (!hive_.KeyExists(path)) {
        if (!create) return Code(ErrorFileNotFound);
        hive_.CreateKey(path);
    }
    const std::intptr_t value = nextKey_;
    nextKey_ += 4;
    keys_[value] = KeyHandle{path, access};
    result = HandleFrom<Hkey>(value);
    return 0;
}

std::int32_t SimRegistry::RegOpenKeyExW(Hkey root, const Text& subKey, std::uint32_t options,
                                        std::uint32_t desiredAccess, Hkey& result) {
    if (session_.Enter("RegOpenKeyExW", Utf8(subKey) + " " + std::to_string(options) + " access " +
                                            std::to_string(desiredAccess))) {
        return Failed();
    }
    return OpenKey(root, subKey, desiredAccess, false, result);
}

std::int32_t SimRegistry::RegCreateKeyW(Hkey root, const Text& subKey, Hkey& result) {
    if (session_.Enter("RegCreateKeyW", Utf8(subKey))) return Failed();
    return OpenKey(root, subKey, kKeyAllAccess, true, result);
}

std::int32_t SimRegistry::RegQueryValueExW(Hkey key, const Text& valueName, std::uint32_t* type,
                                           std::byte* data, std::uint32_t* dataSize) {
    if (session_.Enter("RegQueryValueExW",
                       Utf8(valueName) + (data == nullptr ? " (size)" : " (data)"))) {
        return Failed();
    }
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return Code(ErrorInvalidHandle);
    if ((k->access & KeyQueryValue) == 0) return Code(ErrorAccessDenied);
    const RegValue* v = hive_.FindValue(k->path, valueName);
    if (v == nullptr) return Code(ErrorFileNotFound);
    if (type != nullptr) *type = v->type;
    const auto size = static_cast<std::uint32_t>(v->data.size());
    if (data == nullptr) {
        if (dataSize != nullptr) *dataSize = size;
        return 0;
    }
    if (dataSize == nullptr) return Code(ErrorInvalidParameter);
    if (*dataSize < size) {
        *dataSize = size;
        return Code(ErrorMoreData);
    }
    std::copy(v->data.begin(), v->data.end(), data);
    *dataSize = size;
    return 0;
}

std::int32_t SimRegistry::RegSetValueExW(Hkey key, const Text& valueName, std::uint32_t type,
                                         std::span<const std::byte> data) {
    if (session_.Enter("RegSetValueExW", Utf8(valueName) + " type " + std::to_string(type) + " " +
                                             std::to_string(data.size()) + " bytes")) {
        return Failed();
    }
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return Code(ErrorInvalidHandle);
    if ((k->access & KeySetValue) == 0) return Code(ErrorAccessDenied);
    hive_.SetValue(k->path, valueName, type, std::vector<std::byte>(data.begin(), data.end()));
    return 0;
}

std::int32_t SimRegistry::RegEnumValueW(Hkey key, std::uint32_t index, Text& name,
                                        std::uint32_t& type, std::vector<std::byte>& data) {
    if (session_.Enter("RegEnumValueW", Hex(key) + " " + std::to_string(index))) return Failed();
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return Code(ErrorInvalidHandle);
    if ((k->access & KeyQueryValue) == 0) return Code(ErrorAccessDenied);
    const auto* values = hive_.Values(k->path);
    if (values == nullptr || index >= values->size()) return Code(ErrorNoMoreItems);
    const RegValue& v = (*values)[index];
    name = v.name;
    type = v.type;
    data = v.data;
    return 0;
}

std::int32_t SimRegistry::RegDeleteValueW(Hkey key, const Text& valueName) {
    if (session_.Enter("RegDeleteValueW", Utf8(valueName))) return Failed();
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return Code(ErrorInvalidHandle);
    if ((k->access & KeySetValue) == 0) return Code(ErrorAccessDenied);
    return hive_.DeleteValue(k->path, valueName) ? 0 : Code(ErrorFileNotFound);
}

std::int32_t SimRegistry::RegDeleteTreeW(Hkey root, const Text& subKey) {
    if (session_.Enter("RegDeleteTreeW", Utf8(subKey))) return Failed();
    Text base;
    if (root != HkeyCurrentUser()) {
        const KeyHandle* parent = LookupKey(root);
        if (parent == nullptr) return Code(ErrorInvalidHandle);
        base = parent->path;
    }
    return hive_.DeleteTree(RegistryHive::Join(base, subKey)) ? 0 : Code(ErrorFileNotFound);
}

std::int32_t SimRegistry::RegCloseKey(Hkey key) {
    if (session_.Enter("RegCloseKey", Hex(key))) return Failed();
    if (keys_.erase(HandleValue(key)) == 0) return Code(ErrorInvalidHandle);
    // A key closed with notices pending answers them.
    std::erase_if(notices_, [&](const Notice& notice) {
        if (notice.key != HandleValue(key)) return false;
        session_.Object(notice.event).signalled = true;
        session_.Release(notice.event);
        return true;
    });
    return 0;
}

std::int32_t SimRegistry::RegNotifyChangeKeyValue(Hkey key, bool subtree, Handle event) {
    if (session_.Enter("RegNotifyChangeKeyValue", Hex(key) + (subtree ? " subtree" : ""))) {
        return Failed();
    }
    const KeyHandle* k = LookupKey(key);
    if (k == nullptr) return Code(ErrorInvalidHandle);
    if ((k->access & KeyNotify) == 0) return Code(ErrorAccessDenied);
    HandleEntry* e = session_.Lookup(event, Kind::Event);
    if (e == nullptr) return Code(ErrorInvalidHandle);
    ++session_.Object(e->object).references;
    notices_.push_back({HandleValue(key), k->path, subtree, e->object});
    return 0;
}

}  // namespace zk::sim
