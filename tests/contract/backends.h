#pragma once
// The backends the contract suite runs against: the simulated session everywhere, and the real
// system as well when the tests run on Windows (or under Wine).

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/os.h"

namespace zk::contract {

// How a started program says it was started: its command line, desktop and window title.
struct Recorded {
    Text commandLine;
    Text desktop;
    Text title;
};

struct Backend {
    std::string name;
    std::function<std::unique_ptr<Os>()> make;
    // Wine's SwitchDesktop returns TRUE and leaves the input desktop as it is.
    bool switchDesktopLeavesInputDesktop = false;
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
