#include "companions/companion_session.h"

#include "signals/shared_state.h"
#include "vocabulary/protocol.h"

namespace zk::testing {
namespace {

CompanionSession* g_session = nullptr;

// Keeps the commands, and publishes its record on a switch command as the controller does.
Lresult ZK_CALLBACK ControllerProcedure(Hwnd, std::uint32_t message, Wparam, Lparam lParam) {
    if (message == WmCopyData) {
        const auto* data = reinterpret_cast<const CopyDataStruct*>(lParam);
        const std::string& command = CompanionSession::Commands().emplace_back(
            static_cast<const char*>(data->lpData), data->cbData);
        const std::string prefix = kSignalPrefix + "SwitchToDesktop";
        if (g_session != nullptr && command.size() == prefix.size() + 1 &&
            command.starts_with(prefix)) {
            SharedState state(g_session->os, g_session->controller);
            state.RecordSwitch(command.back() - '0');
            state.PublishShown(static_cast<std::int16_t>(state.Current()),
                               static_cast<std::int16_t>(state.Previous()));
        }
    }
    return 0;
}

}  // namespace

std::vector<std::string>& CompanionSession::Commands() {
    static std::vector<std::string> commands;
    return commands;
}

CompanionSession::CompanionSession(const Text& program, const Text& desktop) {
    Commands().clear();
    g_session = this;
    os.SetModuleFileName(kFolder + u"\\" + program);
    for (const char16_t* file : {u"DeskPilot.exe", u"DeskHerald.exe", u"Zelkova2.exe",
                                 u"ZelkovaError.exe", u"ZelkovaSettings.exe"})
        os.AddFile(kFolder + u"\\" + file);
    controller = os.AddOtherProcess(u"Zelkova2.exe");
    os.SetParentProcess(controller);
    controllerWindow = os.CreateWindowInOtherProcess(kControllerCaption, &ControllerProcedure,
                                                     controller, Text(u"Default"));
    (void)os.SetPropW(controllerWindow, kWindowMark, HandleFrom<Handle>(1));
    os.StartOnDesktop(desktop);
}

CompanionSession::~CompanionSession() {
    g_session = nullptr;
    Commands().clear();
}

std::vector<std::string> CompanionSession::Taken(const std::vector<std::string>& names) {
    std::vector<std::string> set;
    for (const auto& name : names) {
        if (Take(name)) set.push_back(name);
    }
    return set;
}

}  // namespace zk::testing
