#pragma once
// cDesktop: one of the program's four desktops. It takes hold of the input desktop or creates a
// named one, starts the companion programs on it, shows it, and closes its handle at the end.
// It keeps the text of its last failure for the controller's error message.

#include <cstdint>

#include "desktop/companions.h"
#include "platform/os.h"

namespace zk {

class cDesktop {
  public:
    explicit cDesktop(Os& os) : os_(os) {}
    cDesktop(const cDesktop&) = delete;
    cDesktop& operator=(const cDesktop&) = delete;

    [[nodiscard]] Text PilotPath();
    [[nodiscard]] Text HeraldPath();
    // Takes the current input desktop as desktop 1 and starts its three companions.
    [[nodiscard]] bool SetAsDefault();
    // Creates (or opens) the named desktop, shows it and starts its two companions.
    [[nodiscard]] bool Create(const Text& sDesktopName, std::int16_t DeskNum);
    [[nodiscard]] bool StartProcess(const Text& sPath, const Text& CmdLine = {});
    void SwitchTo();
    void ClearUp();
    [[nodiscard]] const Text& GetLastError() const { return sLastError; }

    // For inspection by the controller's tests.
    [[nodiscard]] const Text& name() const { return sName; }
    [[nodiscard]] Hdesk desk() const { return hDesk; }

  private:
    void RecordError(std::uint32_t code);
    bool StartCompanions(std::int16_t desk);

    Os& os_;
    Text sName;
    // Closed only by ClearUp: releasing the object leaves it to the controller's shutdown.
    Hdesk hDesk = nullptr;
    // For desktop 1 the thread's own desktop, which belongs to the thread and is never closed.
    Hdesk hThreadDesk = nullptr;
    Text sLastError;
};

}  // namespace zk
