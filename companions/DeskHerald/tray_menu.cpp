#include "DeskHerald/tray_menu.h"

#include "signals/shared_state.h"

namespace zk::companion {

namespace {

// A menu shows "&" as the next letter's access key; "&&" is the sign itself.
Text MenuText(const Text& text) {
    Text shown;
    for (const char16_t c : text)
        shown += c == u'&' ? Text(u"&&") : Text(1, c);
    return shown;
}

}  // namespace

std::vector<TrayMenuItem> TrayMenu(const std::array<Text, kDesktopCount>& names, int shown,
                                   const std::vector<TrayNews>& news) {
    std::vector<TrayMenuItem> items;
    for (std::size_t i = 0; i < news.size(); ++i) {
        items.push_back(
            {static_cast<TrayCommand>(static_cast<int>(TrayCommand::GoToNews) +
                                      static_cast<int>(i)),
             u"Go to " + MenuText(news[i].title) + u" (" + MenuText(news[i].desktopName) + u")"});
    }
    for (int desk = 1; desk <= kDesktopCount; ++desk) {
        items.push_back({static_cast<TrayCommand>(desk),
                         u"&" + DecimalText(desk) + u"  " + names[desk - 1], desk == shown,
                         desk == 1 && !news.empty()});
    }
    items.push_back({TrayCommand::Preview, u"&Preview", false, true});
    items.push_back({TrayCommand::Settings, u"&Settings\u2026"});
    items.push_back({TrayCommand::ErrorLog, u"Error &log\u2026"});
    items.push_back({TrayCommand::Exit, u"E&xit Zelkova2", false, true});
    return items;
}

Text TrayTooltip(int desk, const Text& name, std::uint32_t missing,
                 const std::vector<TrayNews>& news, const std::vector<int>& notAKey) {
    Text tip = u"Zelkova2 \u2014 desktop " + DecimalText(desk);
    if (name != u"Desktop " + DecimalText(desk)) tip += u": " + name;
    for (const TrayNews& window : news)
        tip += u"\nNew on " + window.desktopName + u": " + window.title;
    if ((missing & kPilotMissing) != 0) tip += u"\nDeskPilot.exe is missing: no hotkeys here";
    if ((missing & kHeraldMissing) != 0) tip += u"\nDeskHerald.exe is missing";
    if (!notAKey.empty()) {
        tip += notAKey.size() == 1 ? u"\nHotkey " : u"\nHotkeys ";
        for (std::size_t i = 0; i < notAKey.size(); ++i)
            tip += (i == 0 ? u"" : u", ") + DecimalText(notAKey[i]);
        tip += notAKey.size() == 1 ? u" is stored as no key: see Settings"
                                   : u" are stored as no key: see Settings";
    }
    return tip;
}

Text ExitQuestion(int desk) {
    if (desk == 1) return {};
    const Text n = DecimalText(desk);
    return u"The windows on desktop " + n + u" stay on desktop " + n +
           u" until Zelkova2 is started again.\n\nShow desktop 1 first?";
}

}  // namespace zk::companion
