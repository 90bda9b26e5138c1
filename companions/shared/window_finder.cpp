#include "shared/window_finder.h"

#include <algorithm>

#include "shared/news.h"
#include "shared/user_windows.h"
#include "vocabulary/desktops.h"
#include "vocabulary/protocol.h"

namespace zk::companion {
namespace {

constexpr int kShowRestore = 9;  // SW_RESTORE

// Lower case for comparing: ASCII and the Latin-1 letters.
char16_t Fold(char16_t c) {
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return static_cast<char16_t>(c + 0x20);
    return c;
}

Text Folded(const Text& text) {
    Text folded = text;
    std::transform(folded.begin(), folded.end(), folded.begin(), Fold);
    return folded;
}

std::vector<Text> Words(const Text& text) {
    std::vector<Text> words;
    Text word;
    for (const char16_t c : text + u" ") {
        if (c != u' ' && c != u'\t') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

// 0: the title begins with the query; 1: a word of it does; 2: the query is found elsewhere.
int Rank(const Text& title, const Text& query) {
    if (title.rfind(query, 0) == 0) return 0;
    for (std::size_t at = title.find(query); at != Text::npos; at = title.find(query, at + 1)) {
        if (at == 0 || title[at - 1] == u' ' || title[at - 1] == u'-') return 1;
    }
    return 2;
}

std::uint32_t ProcessOf(SharedState& state, int desk) {
    return state.Block().companions[PilotSlot(desk)];
}

}  // namespace

std::vector<FoundWindow> AllUserWindows(Os& os, const SharedBlock* block) {
    std::vector<FoundWindow> found;
    const std::vector<ProcessEntry> processes = os.CreateToolhelp32Snapshot();
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        for (UserWindow& window : UserWindowsOn(os, desk, processes)) {
            const bool news = block != nullptr && IsNews(*block, desk, window.window);
            found.push_back({desk, window.window, std::move(window.title),
                             std::move(window.program), window.processId, news});
        }
    }
    return found;
}

WindowFinder::WindowFinder(std::vector<FoundWindow> windows) : windows_(std::move(windows)) {
    SetQuery({});
}

void WindowFinder::SetQuery(const Text& query) {
    query_ = query;
    const std::vector<Text> words = Words(Folded(query));
    Text whole;
    for (const Text& word : words)
        whole += (whole.empty() ? u"" : u" ") + word;
    std::vector<std::pair<int, const FoundWindow*>> ranked;
    for (const FoundWindow& window : windows_) {
        const Text title = Folded(window.title), program = Folded(window.program);
        const bool all = std::all_of(words.begin(), words.end(), [&](const Text& word) {
            return title.find(word) != Text::npos || program.find(word) != Text::npos;
        });
        if (all)
            ranked.emplace_back(
                (whole.empty() ? 0 : 2 * Rank(title, whole)) + (window.news ? 0 : 1), &window);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    matches_.clear();
    for (const auto& [rank, window] : ranked)
        matches_.push_back(window);
    if (std::find(matches_.begin(), matches_.end(), chosen_) == matches_.end())
        chosen_ = matches_.empty() ? nullptr : matches_.front();
}

std::optional<std::size_t> WindowFinder::Chosen() const {
    const auto at = std::find(matches_.begin(), matches_.end(), chosen_);
    if (at == matches_.end()) return std::nullopt;
    return static_cast<std::size_t>(at - matches_.begin());
}

void WindowFinder::Move(int rows) {
    const auto at = Chosen();
    if (!at) return;
    const auto last = static_cast<std::ptrdiff_t>(matches_.size()) - 1;
    ChooseAt(static_cast<std::size_t>(
        std::clamp(static_cast<std::ptrdiff_t>(*at) + rows, std::ptrdiff_t{0}, last)));
}

void WindowFinder::ChooseAt(std::size_t position) {
    if (position < matches_.size()) chosen_ = matches_[position];
}

const FoundWindow* WindowFinder::ChosenWindow() const {
    return chosen_;
}

void ShowFoundWindow(WindowApi& windows, Signals& signals, SharedState& state, int shown,
                     const FoundWindow& found, const std::function<void(int desk)>& switchTo) {
    SharedBlock& block = state.Block();
    block.bringForward = static_cast<std::uint64_t>(HandleValue(found.window));
    block.bringForwardDesk = static_cast<std::int16_t>(found.desk);
    if (const std::uint32_t switcher = ProcessOf(state, found.desk))
        (void)windows.AllowSetForegroundWindow(switcher);
    if (shown != found.desk) switchTo(found.desk);
    (void)signals.RaiseOwn(SharedObject::BringForward, state.ControllerId(), found.desk);
}

bool BringForwardIfAsked(WindowApi& windows, SharedState& state, int desk, int shown) {
    SharedBlock& block = state.Block();
    if (block.bringForwardDesk != desk || block.bringForward == 0) return false;
    if (shown != desk) return true;  // once the desktop is shown
    const Hwnd window = HandleFrom<Hwnd>(static_cast<std::intptr_t>(block.bringForward));
    if (windows.IsIconic(window)) (void)windows.ShowWindow(window, kShowRestore);
    if (!windows.SetForegroundWindow(window) && windows.IsWindow(window)) return true;
    block.bringForward = 0;
    block.bringForwardDesk = 0;
    return false;
}

}  // namespace zk::companion
