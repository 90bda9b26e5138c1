#pragma once
// zelkovactl: drives a running Zelkova2 from any desktop by its named events, starts it the way
// a user expects, and edits the settings it reads. Everything goes through the platform seam.

#include <string>
#include <vector>

#include <functional>

#include "platform/handles.h"
#include "platform/os.h"
#include "settings/registry.h"
#include "zelkovactl/output.h"

namespace zk::ctl {

inline constexpr int kExitOk = 0;
inline constexpr int kExitNotRunning = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitFailed = 3;
inline constexpr int kExitNoEffect = 4;

inline constexpr char kNotRunning[] = "Zelkova2 is not running";
inline constexpr char kCannotTell[] =
    "Whether Zelkova2 runs cannot be told: the system gave no list of processes";

class Ctl {
  public:
    Ctl(Os& os, Output& out, Output& err) : os_(os), registry_(os), out_(out), err_(err) {}
    // Runs one command line (without the program's name); returns the exit code.
    int Run(const std::vector<std::string>& args);

  private:
    using Args = std::vector<std::string>;
    enum Group { kRunning, kSettings, kInformation };
    struct Command {
        const char* name;       // one word, or two ("hotkey set")
        const char* arguments;  // as the help shows them
        const char* help;
        Group group;
        std::size_t fewest, most;  // arguments after the name
        int (Ctl::*handler)(const Args& arguments);
    };
    static const std::vector<Command>& Commands();
    static std::string Help();

    int Usage(const std::string& problem);
    // Ends the running Zelkova2 and waits until it and its companions have ended.
    int EndZelkova();
    int Signal(std::int16_t index);
    // The commands' handlers; each gets the arguments after the command's name.
    int Switch(const Args& args);
    int Reload(const Args& args);
    int Shutdown(const Args& args);
    int Start(const Args& args);
    int Restart(const Args& args);
    int HotKeys(const Args& args);
    int SetHotKey(const Args& args);
    int ResetHotKey(const Args& args);
    int PresetHotKeys(const Args& args);
    int Status(const Args& args);
    int Log(const Args& args);
    int Autostart(const Args& args);
    int Windows(const Args& args);
    int Find(const Args& args);
    bool WriteHotKey(int id, std::int16_t key, std::int16_t modifiers);
    [[nodiscard]] bool Running();
    [[nodiscard]] std::vector<UniqueKernelHandle> ControllerProcesses();
    [[nodiscard]] bool Await(const std::function<bool()>& done, std::uint32_t within);
    [[nodiscard]] std::string InputDesktop();

    Os& os_;
    Registry registry_;
    Output& out_;
    Output& err_;
};

}  // namespace zk::ctl
