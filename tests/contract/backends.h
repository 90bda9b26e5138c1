#pragma once
// The backends the contract suite runs against: the simulated session everywhere, and the real
// system as well when the tests run on Windows (or under Wine).

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/os.h"
#include "support/recorder_file.h"

namespace zk::contract {

// How a started program says it was started: its command line, desktop and window title.
using Recorded = support::Record;

// Another program on a desktop that holds a hotkey; when asked afterwards: whether it could
// register the hotkey, and whether a press of it reached it.
struct HotKeyHolder {
    std::function<std::pair<bool, bool>()> outcome;
};

struct Backend {
    std::string name;
    std::function<std::unique_ptr<Os>()> make;
    // Wine 8's SwitchDesktop returns TRUE and leaves the input desktop as it is.
    bool switchDesktopLeavesInputDesktop = false;
    // Wine 8 takes input from a thread of any desktop; Windows and Wine 10 only from one of the
    // input desktop.
    bool sendInputFromAnyDesktop = false;
    // Starts another program on `desktop` that registers the combination on a window of its own
    // and waits a moment for it to be pressed.
    std::function<HotKeyHolder(Os&, const Text& desktop, std::uint32_t modifiers,
                               std::uint32_t key)>
        holdHotKeyOn;
    // Wine's RegSetValueExW adds a terminator to text data that lack one; Windows stores the
    // bytes it is given.
    bool registryTerminatesText = false;
    // Wine's keyboard driver names keys by X keysyms ("BackSpace") where Windows says
    // "Backspace", and maps no scan code for the keypad digits while Num Lock is off.
    bool keyNamesFromX = false;
    // Readies a program that records how it was started and gives its path; and the way to read
    // that record back.
    std::function<Text(Os&)> recorderPath;
    std::function<std::optional<Recorded>(Os&, const ProcessInformation&)> observe;
};

std::vector<Backend> Backends();

}  // namespace zk::contract
