#pragma once
// A companion process on the simulated session: its program in Zelkova2's folder, started on
// its desktop by a running controller, whose window takes the commands sent to it.

#include <string>
#include <vector>

#include "DeskHerald/herald.h"
#include "platform/sim/sim_os.h"
#include "vocabulary/shared_names.h"

namespace zk::testing {

inline const Text kFolder = u"C:\\Program Files\\Zelkova2";
inline const Text kLog = u"C:\\Users\\user1\\AppData\\Local\\ZelkovaErrors.txt";  // the error log
inline const std::string kSignalPrefix = "Local\\larchmont_";

class CompanionSession {
  public:
    // `program` is the file name; `desktop` the desktop it was started on.
    CompanionSession(const Text& program, const Text& desktop);
    ~CompanionSession();

    sim::SimOs os;
    std::uint32_t controller = 0;
    // The controller's window (of the controller's process) on "Default", and the command
    // texts it got by WM_COPYDATA.
    Hwnd controllerWindow = nullptr;
    static std::vector<std::string>& Commands();

    // Takes the signals of these names that are set, as the companions waiting on them would.
    std::vector<std::string> Taken(const std::vector<std::string>& names);
    bool Take(const std::string& name) {
        return os.WaitForEventInOtherProcess(kSignalPrefix + name);
    }
    void Raise(const std::string& name) { os.SetEventInOtherProcess(kSignalPrefix + name); }
    // The name of one of the controller's shared objects.
    std::string Name(SharedObject object, int number = 0) {
        return os.WideCharToMultiByte(SharedObjectName(object, controller, number));
    }
};

// A herald's window side that notes what the herald asks of it.
struct HeraldShellRecord : companion::Herald::Shell {
    void ShowBanner(const Text& name) override { banners.push_back(name); }
    void TrayChanged() override { ++trayChanges; }
    void Arrived() override {}
    std::optional<bool> Ask(const Text& question) override {
        questions.push_back(question);
        return answer;
    }
    void Tell(const Text& message) override { told.push_back(message); }
    void WatchWindows(bool on) override { watching = on; }
    Hwnd HotKeyWindow() override { return window; }
    Hwnd window = nullptr;
    std::vector<Text> banners, questions, told;
    int trayChanges = 0;
    bool watching = false;
    std::optional<bool> answer;  // what Ask answers
};

}  // namespace zk::testing
