#include "shared/news.h"

#include <algorithm>

namespace zk::companion {
namespace {

std::uint64_t Stored(Hwnd window) {
    return static_cast<std::uint64_t>(HandleValue(window));
}

}  // namespace

bool IsNews(const SharedBlock& block, int desk, Hwnd window) {
    if (!IsDesktopNumber(desk) || window == nullptr) return false;
    const auto& row = block.news[desk - 1];
    return std::find(std::begin(row), std::end(row), Stored(window)) != std::end(row);
}

std::vector<NewsWindow> NewsBesides(WindowApi& windows, const SharedBlock& block, int shown) {
    std::vector<NewsWindow> news;
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        if (desk == shown) continue;
        for (const std::uint64_t stored : block.news[desk - 1]) {
            const Hwnd window = HandleFrom<Hwnd>(static_cast<std::intptr_t>(stored));
            if (stored == 0 || !windows.IsWindow(window)) continue;
            news.push_back({desk, window, windows.GetWindowTextW(window)});
        }
    }
    return news;
}

bool PublishNews(SharedBlock& block, int desk, const std::vector<Hwnd>& news) {
    std::uint64_t row[kNewsPerDesktop] = {};
    for (std::size_t i = 0; i < news.size() && i < std::size(row); ++i)
        row[i] = Stored(news[i]);
    auto& stored = block.news[desk - 1];
    if (std::equal(std::begin(row), std::end(row), std::begin(stored))) return false;
    std::copy(std::begin(row), std::end(row), std::begin(stored));
    return true;
}

}  // namespace zk::companion
