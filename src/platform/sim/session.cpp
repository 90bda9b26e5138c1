#include "platform/sim/session.h"

#include <algorithm>
#include <cstdio>

namespace zk::sim {

std::string Hex(std::intptr_t value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%#llx", static_cast<unsigned long long>(value));
    return buffer;
}

bool SameName(const Text& a, const Text& b) {
    auto fold = [](char16_t c) {
        return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
    };
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(),
                      [&](char16_t x, char16_t y) { return fold(x) == fold(y); });
}

Session::Session(std::uint32_t processId) : processId(processId) {
    KernelObject station{Kind::Desktop};
    station.references = 1;  // the window station keeps "Default"
    desktops.push_back({u"Default", NewObject(std::move(station))});
    threadDesktopHandle = NewHandle(desktops[0].object, 0x10000000, true);
}

bool Session::Enter(const char* call, std::string detail) {
    journal.Record(call, std::move(detail));
    if (const auto error = faults.Check(call)) {
        last = *error;
        journal.MarkLastFailed();
        return true;
    }
    return false;
}

int Session::NewObject(KernelObject object) {
    const int id = nextObject_++;
    objects_.emplace(id, std::move(object));
    return id;
}

int Session::FindObject(const std::function<bool(const KernelObject&)>& match) const {
    for (const auto& [id, object] : objects_) {
        if (match(object)) return id;
    }
    return 0;
}

Handle Session::NewHandle(int object, std::uint32_t access, bool isThreadDesktop) {
    const std::intptr_t value = nextHandle_;
    nextHandle_ += 4;
    handles_[value] = HandleEntry{object, access, isThreadDesktop};
    ++objects_.at(object).references;
    return HandleFrom<Handle>(value);
}

HandleEntry* Session::Lookup(Handle handle) {
    const auto it = handles_.find(HandleValue(handle));
    return it == handles_.end() ? nullptr : &it->second;
}

HandleEntry* Session::Lookup(Handle handle, Kind kind) {
    HandleEntry* entry = Lookup(handle);
    return entry != nullptr && objects_.at(entry->object).kind == kind ? entry : nullptr;
}

std::optional<bool> Session::TakeSignal(Handle handle) {
    const HandleEntry* entry = Lookup(handle);
    if (entry == nullptr || !entry->Grants(Synchronize)) {
        last = entry == nullptr ? ErrorInvalidHandle : ErrorAccessDenied;
        return std::nullopt;
    }
    KernelObject& o = Object(entry->object);
    if (!o.signalled) return false;
    if ((o.kind == Kind::Event && !o.manualReset) || o.kind == Kind::Mutex) o.signalled = false;
    return true;
}

bool Session::CloseHandle(Handle handle) {
    const auto it = handles_.find(HandleValue(handle));
    if (it == handles_.end()) return false;
    const int id = it->second.object;
    handles_.erase(it);
    Release(id);
    return true;
}

void Session::Release(int id) {
    auto it = objects_.find(id);
    if (it == objects_.end() || --it->second.references > 0) return;
    if (!it->second.name.empty()) named.erase(it->second.name);
    if (it->second.kind == Kind::Desktop) desktops[it->second.desktop].name.clear();
    objects_.erase(it);
}

void Session::CloseAllHandles() {
    while (!handles_.empty()) {
        const int id = handles_.begin()->second.object;
        handles_.erase(handles_.begin());
        Release(id);
    }
}

std::size_t Session::OpenHandleCount() const {
    return static_cast<std::size_t>(std::count_if(
        handles_.begin(), handles_.end(), [](const auto& h) { return !h.second.threadDesktop; }));
}

const KernelObject* Session::Named(const Ansi& name) const {
    const auto it = named.find(name);
    return it == named.end() ? nullptr : &objects_.at(it->second);
}

int Session::DesktopByName(const Text& name) const {
    for (std::size_t i = 0; i < desktops.size(); ++i) {
        if (!desktops[i].name.empty() && SameName(desktops[i].name, name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace zk::sim
