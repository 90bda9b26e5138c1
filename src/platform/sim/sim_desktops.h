#pragma once
// The simulated window station's desktops: which one is the input desktop, which one the
// simulated thread is on, and the handles the program holds to them.

#include <map>
#include "platform/api/desktop_api.h"

#include "platform/sim/session.h"

namespace zk::sim {

class SimDesktops : public virtual DesktopApi {
  public:
    explicit SimDesktops(Session& session) : session_(session) {}

    Hdesk GetThreadDesktop(std::uint32_t threadId) override;
    Hdesk OpenInputDesktop(std::uint32_t flags, bool inherit, std::uint32_t desiredAccess) override;
    Hdesk OpenDesktopW(const Text& name, std::uint32_t flags, bool inherit,
                       std::uint32_t desiredAccess) override;
    Hdesk CreateDesktopW(const Text& name, std::uint32_t flags,
                         std::uint32_t desiredAccess) override;
    bool SetThreadDesktop(Hdesk desktop) override;
    bool SwitchDesktop(Hdesk desktop) override;
    bool CloseDesktop(Hdesk desktop) override;
    Text GetUserObjectInformationW(Handle object) override;
    std::vector<Text> EnumDesktopsW() override;
    std::vector<Hwnd> EnumDesktopWindows(Hdesk desktop) override;

    // ----- driving from a test
    [[nodiscard]] Text InputDesktopName() const;
    [[nodiscard]] Text ThreadDesktopName() const;
    [[nodiscard]] bool DesktopExists(const Text& name) const {
        return session_.DesktopByName(name) >= 0;
    }
    void CreateDesktopInOtherProcess(const Text& name);
    // The simulated process was started on this desktop (made if missing), as by lpDesktop.
    void StartOnDesktop(const Text& name);
    // Several programs run on the one simulated thread (a test of the whole system): the thread
    // acts as one of the program on this desktop (made if missing) from now on.
    void ActOnDesktop(const Text& name);
    // Another program shows this desktop (made if missing).
    void ShowDesktopInOtherProcess(const Text& name);

  private:
    Hdesk Open(int desktop, std::uint32_t access);
    int Desktop(Hdesk desktop);

    Session& session_;
    std::map<int, Handle> actingOn_;
};

}  // namespace zk::sim
