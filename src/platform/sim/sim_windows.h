#pragma once
// The simulated windows: classes, windows with their procedures, property lists, styles and
// icons, and messages sent to them.

#include <map>
#include <set>

#include "platform/api/window_api.h"
#include "platform/sim/session.h"

namespace zk::sim {

struct SimWindow {
    Text className;
    Text caption;
    WndProc procedure = nullptr;
    Hwnd owner = nullptr;
    std::uint32_t processId = 0;
    int desktop = 0;
    std::uint32_t exStyle = 0;
    std::uint32_t style = 0;
    std::vector<std::pair<Text, Handle>> props;
    std::intptr_t userData = 0;
    Handle bigIcon = nullptr;
    Handle smallIcon = nullptr;
};

class SimWindows : public virtual WindowApi {
  public:
    explicit SimWindows(Session& session);

    bool SetPropA(Hwnd window, const Ansi& name, Handle data) override;
    Handle GetPropW(Hwnd window, const Text& name) override;
    bool SetPropW(Hwnd window, const Text& name, Handle data) override;
    Handle RemovePropW(Hwnd window, const Text& name) override;
    bool IsWindow(Hwnd window) override;
    bool IsWindowVisible(Hwnd window) override;
    bool IsIconic(Hwnd window) override;
    bool ShowWindow(Hwnd window, int command) override;
    bool SetForegroundWindow(Hwnd window) override;
    bool AllowSetForegroundWindow(std::uint32_t processId) override;
    std::uint32_t GetWindowThreadProcessId(Hwnd window, std::uint32_t* processId) override;
    Text GetWindowTextW(Hwnd window) override;
    Text GetClassNameW(Hwnd window) override;
    std::intptr_t SetWindowLongPtrW(Hwnd window, int index, std::intptr_t value) override;
    std::intptr_t GetWindowLongPtrW(Hwnd window, int index) override;
    Lresult CallWindowProcW(WndProc previous, Hwnd window, std::uint32_t message, Wparam wParam,
                            Lparam lParam) override;
    std::vector<Hwnd> EnumWindows() override;
    Hwnd GetWindow(Hwnd window, std::uint32_t command) override;
    int GetSystemMetrics(int index) override;
    Handle LoadImageA(Hinstance instance, const Ansi& name, std::uint32_t type, int cx, int cy,
                      std::uint32_t flags) override;
    Lresult SendMessageA(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    std::uint16_t RegisterClassW(const Text& className, WndProc procedure,
                                 Hinstance instance) override;
    Hwnd CreateWindowExW(std::uint32_t exStyle, const Text& className, const Text& windowName,
                         std::uint32_t style, Hwnd parent, Hinstance instance) override;
    bool DestroyWindow(Hwnd window) override;
    Lresult DefWindowProcW(Hwnd window, std::uint32_t message, Wparam wParam,
                           Lparam lParam) override;
    Lresult SendMessageW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam) override;
    bool SendMessageTimeoutW(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam,
                             std::uint32_t flags, std::uint32_t timeout, Lresult& result) override;

    // ----- for the other parts of the session
    const SimWindow* Find(Hwnd window) const;
    // Calls the window's procedure, as the system does for a sent or dispatched message.
    Lresult Deliver(Hwnd window, std::uint32_t message, Wparam wParam, Lparam lParam);

    // ----- driving from a test
    [[nodiscard]] Hwnd FindWindowByCaption(const Text& caption) const;
    // The processes the simulated one let bring a window to the front, in order.
    [[nodiscard]] const std::vector<std::uint32_t>& ForegroundGrants() const {
        return foregroundGrants_;
    }
    // The window the simulated process last brought to the front.
    [[nodiscard]] Hwnd ForegroundWindow() const { return foreground_; }
    // Another process that may bring a window to the front passes the right on to this one.
    void GrantForegroundFromOtherProcess() { session_.startedByForeground = true; }
    // A window of another process, shown on the input desktop unless another is named; its
    // procedure (if any) handles what is sent to it.
    Hwnd CreateWindowInOtherProcess(const Text& caption = {}, WndProc procedure = nullptr,
                                    std::uint32_t processId = kOtherProcessId,
                                    std::optional<Text> desktop = std::nullopt,
                                    std::uint32_t style = 0, const Text& className = {},
                                    std::uint32_t exStyle = 0);
    void SetNextWindowHandle(std::intptr_t value) { nextWindow_ = value; }
    std::vector<std::pair<Text, Handle>> WindowProps(Hwnd window) const;
    Handle WindowIcon(Hwnd window, bool big) const;
    std::uint32_t WindowExStyle(Hwnd window) const;
    // Another process sends WM_COPYDATA with these bytes; the window's procedure handles it
    // before this returns, as when the program's thread takes a sent message.
    Lresult SendCopyData(Hwnd window, std::string_view bytes, std::uintptr_t dwData = 0);
    // Icon groups in the program's own resources (the name, or "#1" for a numbered group).
    void SetIconGroups(std::set<Ansi> names) { iconGroups_ = std::move(names); }

  private:
    SimWindow* FindOwn(Hwnd window);
    bool Missing(Hwnd window);
    void PutProp(Hwnd window, const Text& name, Handle data);

    Session& session_;
    std::map<Text, WndProc> classes_;
    std::map<std::intptr_t, SimWindow> windows_;
    std::intptr_t nextWindow_ = 0x10010;
    std::set<Ansi> iconGroups_ = {"AAA", "#1"};
    std::map<std::pair<Ansi, int>, Handle> sharedIcons_;
    std::intptr_t nextIcon_ = 0x30001;
    std::vector<std::uint32_t> foregroundGrants_;
    Hwnd foreground_ = nullptr;
};

}  // namespace zk::sim
