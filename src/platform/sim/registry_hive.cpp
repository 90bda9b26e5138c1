#include "platform/sim/registry_hive.h"

#include <cstring>

namespace zk::sim {

RegistryHive::RegistryHive() {
    keys_[Text()] = {};
}

Text RegistryHive::Fold(const Text& name) {
    Text folded = name;
    for (auto& c : folded) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    while (!folded.empty() && folded.back() == u'\\')
        folded.pop_back();
    return folded;
}

Text RegistryHive::Join(const Text& parent, const Text& child) {
    if (parent.empty()) return child;
    if (child.empty()) return parent;
    return parent + u"\\" + child;
}

bool RegistryHive::KeyExists(const Text& path) const {
    return keys_.count(Fold(path)) != 0;
}

Text RegistryHive::Parent(const Text& path) {
    const auto last = path.rfind(u'\\');
    return last == Text::npos ? Text() : path.substr(0, last);
}

void RegistryHive::CreateKey(const Text& path) {
    const Text folded = Fold(path);
    for (std::size_t i = 0; i <= folded.size(); ++i) {
        if ((i == folded.size() || folded[i] == u'\\') && keys_.count(folded.substr(0, i)) == 0) {
            keys_[folded.substr(0, i)];
            if (i > 0) Changed(Parent(folded.substr(0, i)));  // a new subkey changes its parent
        }
    }
}

RegValue* RegistryHive::In(Key& key, const Text& name) {
    const Text folded = Fold(name);
    for (auto& value : key.values) {
        if (Fold(value.name) == folded) return &value;
    }
    return nullptr;
}

const RegValue* RegistryHive::FindValue(const Text& path, const Text& name) const {
    const auto key = keys_.find(Fold(path));
    if (key == keys_.end()) return nullptr;
    return In(const_cast<Key&>(key->second), name);
}

const std::vector<RegValue>* RegistryHive::Values(const Text& path) const {
    const auto key = keys_.find(Fold(path));
    return key == keys_.end() ? nullptr : &key->second.values;
}

void RegistryHive::SetValue(const Text& path, const Text& name, std::uint32_t type,
                            std::vector<std::byte> data) {
    CreateKey(path);
    Key& key = keys_[Fold(path)];
    if (RegValue* existing = In(key, name)) {
        existing->type = type;
        existing->data = std::move(data);
    } else {
        key.values.push_back(RegValue{name, type, std::move(data)});
    }
    Changed(path);
}

void RegistryHive::SetDword(const Text& path, const Text& name, std::int32_t value) {
    std::vector<std::byte> data(4);
    std::memcpy(data.data(), &value, 4);
    SetValue(path, name, 4, std::move(data));
}

void RegistryHive::SetText(const Text& path, const Text& name, const Text& value) {
    std::vector<std::byte> data((value.size() + 1) * 2);
    std::memcpy(data.data(), value.c_str(), data.size());
    SetValue(path, name, 1, std::move(data));
}

std::optional<std::int32_t> RegistryHive::Dword(const Text& path, const Text& name) const {
    const RegValue* value = FindValue(path, name);
    if (value == nullptr || value->type != 4 || value->data.size() != 4) return std::nullopt;
    std::int32_t n = 0;
    std::memcpy(&n, value->data.data(), 4);
    return n;
}

bool RegistryHive::DeleteValue(const Text& path, const Text& name) {
    const auto key = keys_.find(Fold(path));
    if (key == keys_.end()) return false;
    const Text folded = Fold(name);
    if (std::erase_if(key->second.values,
                      [&](const RegValue& v) { return Fold(v.name) == folded; }) == 0) {
        return false;
    }
    Changed(path);
    return true;
}
bool RegistryHive::DeleteTree(const Text& path) {
    const Text folded = Fold(path);
    if (keys_.count(folded) == 0) return false;
    for (auto it = keys_.begin(); it != keys_.end();) {
        const bool inside =
            it->first == folded ||
            (it->first.size() > folded.size() && it->first.compare(0, folded.size(), folded) == 0 &&
             it->first[folded.size()] == u'\\');
        it = inside && !folded.empty() ? keys_.erase(it) : std::next(it);
    }
    Changed(folded);
    Changed(Parent(folded));
    return true;
}

}  // namespace zk::sim
