#include "companions/companion_session.h"

#include "signals/protocol.h"

namespace zk::testing {
namespace {

Lresult ZK_CALLBACK ControllerProcedure(Hwnd, std::uint32_t message, Wparam, Lparam lParam) {
    if (message == WmCopyData) {
        const auto* data = reinterpret_cast<const CopyDataStruct*>(lParam);
        CompanionSession::Commands().emplace_back(static_cast<const char*>(data->lpData),
                                                  data->cbData);
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
