#pragma once
// A companion process on the simulated session: its program in Zelkova2's folder, started on
// its desktop by a running controller, whose window takes the commands sent to it.

#include <string>
#include <vector>

#include "platform/sim/sim_os.h"
#include "vocabulary/shared_names.h"

namespace zk::testing {

inline const Text kFolder = u"C:\\Program Files\\Zelkova2";
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

}  // namespace zk::testing
