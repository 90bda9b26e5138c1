#include "vocabulary/shared_names.h"

#include <array>
#include <utility>

namespace zk {
namespace {

struct Entry {
    SharedObject object;
    const char16_t* what;
    bool numbered;  // one for each desktop or slot
};

constexpr std::array<Entry, 11> kSharedObjects = {{
    {SharedObject::State, u"State", false},
    {SharedObject::Up, u"Up", true},
    {SharedObject::InStep, u"InStep", false},
    {SharedObject::WhichKey, u"WhichKey", true},
    {SharedObject::Shown, u"Shown", true},
    {SharedObject::News, u"News", true},
    {SharedObject::BringForward, u"BringForward", true},
    {SharedObject::Finder, u"Finder", true},
    {SharedObject::LetGo, u"HotKeysLetGo", true},
    {SharedObject::Thumbnail, u"Thumbnail", true},
    {SharedObject::Reloaded, u"Reloaded", false},
}};
static_assert([] {
    for (std::size_t i = 0; i < kSharedObjects.size(); ++i) {
        if (static_cast<std::size_t>(kSharedObjects[i].object) != i) return false;
    }
    return true;
}());

}  // namespace

Text SharedObjectName(SharedObject object, std::uint32_t controllerId, int number) {
    const Entry& entry = kSharedObjects.at(static_cast<std::size_t>(object));
    Text name = u"Local\\Zelkova2." + Text(entry.what) + u"." + DecimalText(controllerId);
    if (entry.numbered) name += u"." + DecimalText(number);
    return name;
}

}  // namespace zk
