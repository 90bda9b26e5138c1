#pragma once
// zelkovactl: drives a running Zelkova2 from any desktop by its named events, starts it the way
// a user expects, and edits the settings it reads. Everything goes through the platform seam.

#include <string>
#include <vector>

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

class Ctl {
  public:
    Ctl(Os& os, Output& out, Output& err) : os_(os), registry_(os), out_(out), err_(err) {}
    // Runs one command line (without the program's name); returns the exit code.
    int Run(const std::vector<std::string>& args);

  private:
    int Usage(const std::string& problem);
    int Signal(std::int16_t index);
    int Switch(const std::string& desktop);
    int Reload();
    int Shutdown();
    int Start(bool wait);
    int Restart();
    int HotKeys();
    int SetHotKey(const std::string& id, const std::string& combo);
    int ResetHotKey(const std::string& which);
    int Status();
    int Log(const std::vector<std::string>& args);
    int Autostart(const std::string& state);
    bool WriteHotKey(int id, std::int16_t key, std::int16_t modifiers);
    [[nodiscard]] bool Running();
    [[nodiscard]] std::string InputDesktop();

    Os& os_;
    Registry registry_;
    Output& out_;
    Output& err_;
};

}  // namespace zk::ctl
