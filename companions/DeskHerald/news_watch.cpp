#include "DeskHerald/news_watch.h"

#include <algorithm>

#include "shared/companion_settings.h"
#include "shared/news.h"
#include "shared/user_windows.h"

namespace zk::companion {
namespace {

bool Holds(const std::vector<Hwnd>& windows, Hwnd window) {
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

}  // namespace

NewsWatch::NewsWatch(Os& os, Registry& registry, SharedState& state, Signals& signals, int desk)
    : os_(os), registry_(registry), state_(state), signals_(signals), desk_(desk) {
    Seen();
}

void NewsWatch::Seen() {
    seen_.clear();
    for (const UserWindow& window : UserWindowsOn(os_, desk_))
        seen_.push_back(window.window);
    flashed_.clear();
    Publish({});
}

void NewsWatch::Flashed(Hwnd window) {
    if (!Holds(flashed_, window)) flashed_.push_back(window);
}

void NewsWatch::Look(bool shown) {
    if (shown) return Seen();
    if (!NewsShown(registry_)) {
        flashed_.clear();
        return Publish({});
    }
    std::vector<Hwnd> news, flashedStill;
    for (const UserWindow& window : UserWindowsOn(os_, desk_)) {
        const bool hasFlashed = Holds(flashed_, window.window);
        if (hasFlashed) flashedStill.push_back(window.window);
        if (hasFlashed || !Holds(seen_, window.window)) news.push_back(window.window);
    }
    flashed_ = std::move(flashedStill);
    Publish(news);
}

void NewsWatch::Publish(const std::vector<Hwnd>& news) {
    if (!PublishNews(state_.Block(), desk_, news)) return;
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        if (desk != desk_) (void)signals_.RaiseOwn(SharedObject::News, state_.ControllerId(), desk);
    }
}

}  // namespace zk::companion
