// News from the desktops the user is not looking at, on the simulated session: which windows
// count, the marks the desktop shown makes of them, what clears them, and the setting.

#include <gtest/gtest.h>

#include "DeskHerald/herald.h"
#include "companions/companion_session.h"
#include "shared/news.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;

// The herald of desktop 2 watches while the user works on desktop 3, whose herald tells.
class NewsTest : public ::testing::Test {
  protected:
    NewsTest() {
        s_.os.CreateDesktopInOtherProcess(u"desk3");
        old_ = Window(u"Old mail", u"mail.exe");
        herald_ = std::make_unique<Herald>(s_.os, 2, controller_, shell_);
        herald_->Start();
        s_.os.StartOnDesktop(u"desk3");
        shown_ = std::make_unique<Herald>(s_.os, 3, controller_, shownShell_);
        s_.os.ShowDesktopInOtherProcess(u"desk3");
        state_.RecordSwitch(3);
    }
    Hwnd Window(const Text& title, const Text& program, std::uint32_t exStyle = 0) {
        return s_.os.CreateWindowInOtherProcess(title, nullptr, s_.os.AddOtherProcess(program),
                                                Text(u"desk2"), WsVisible, {}, exStyle);
    }
    // The shell saw desktop 2's windows change; the herald looks once they have settled.
    std::vector<Text> Changed(Hwnd flashed = nullptr) {
        herald_->WindowsChanged(flashed);
        (void)s_.os.RunMessageLoop([&] {
            herald_->Run();
            return 0;
        });
        return News();
    }
    std::vector<Text> News() {
        std::vector<Text> titles;
        for (const NewsWindow& news : NewsBesides(s_.os, state_.Block(), 3))
            titles.push_back(news.title);
        return titles;
    }

    CompanionSession s_{u"DeskHerald.exe", u"desk2"};
    ControllerProcess controller_{s_.os, 0};
    SharedState state_{s_.os, s_.controller};
    testing::HeraldShellRecord shell_, shownShell_;
    Hwnd old_ = nullptr;
    std::unique_ptr<Herald> herald_, shown_;
};

TEST_F(NewsTest, AUsersNewWindowOnADesktopNotShownIsNewsNotTheOnesBeforeOrZelkovasOrTools) {
    (void)Window(u"Palette", u"paint.exe", WsExToolWindow);
    (void)Window(u"Zelkova2 tray", u"DeskHerald.exe");
    (void)Window(u"", u"paint.exe");
    EXPECT_TRUE(Changed().empty()) << "what was there, a tool window, one of ours, no title";
    (void)Window(u"Inbox - Mail", u"mail.exe");
    EXPECT_EQ(Changed(), std::vector<Text>{u"Inbox - Mail"});
    EXPECT_TRUE(s_.os.WaitForEventInOtherProcess(
        Utf8Text(SharedObjectName(SharedObject::News, s_.controller, 3))))
        << "the desktop shown is told";

    // It tells in its tray, where a click goes there (the control tool and the finder tell it
    // too: the end-to-end test's).
    EXPECT_EQ(shown_->Tooltip(), u"Zelkova2 \u2014 desktop 3\nNew on Desktop 2: Inbox - Mail");
    EXPECT_TRUE(shown_->HasNews());
    const std::vector<TrayMenuItem> menu = shown_->Menu();
    ASSERT_FALSE(menu.empty());
    EXPECT_EQ(menu.front().label, u"Go to Inbox - Mail (Desktop 2)");
    shown_->Command(menu.front().command);
    EXPECT_EQ(state_.Block().bringForwardDesk, 2);
    EXPECT_TRUE(s_.Take("SwitchToDesktop2"));

    // A window shown later than it was made, without a word of it (Wine 8): the second look.
    const Hwnd late = s_.os.CreateWindowInOtherProcess(
        u"Shown late", nullptr, s_.os.AddOtherProcess(u"mail.exe"), Text(u"desk2"), 0);
    herald_->WindowsChanged();
    s_.os.AdvanceTime(NewsWatch::kSettle);
    herald_->Set().RunLater();
    EXPECT_EQ(News().size(), 1u);
    (void)s_.os.ShowWindow(late, 5);
    s_.os.AdvanceTime(NewsWatch::kLookAgain);
    herald_->Set().RunLater();
    EXPECT_EQ(News().size(), 2u);
}

TEST_F(NewsTest, AFlashIsNewsUntilTheWindowGoesOrTheDesktopIsVisitedAndTheSettingTurnsItOff) {
    EXPECT_EQ(Changed(old_), std::vector<Text>{u"Old mail"}) << "it asks for attention";
    (void)s_.os.ShowWindow(old_, 0);
    EXPECT_TRUE(Changed().empty()) << "hidden: gone";
    (void)s_.os.ShowWindow(old_, 5);
    EXPECT_TRUE(Changed().empty()) << "back, but it has not asked again";

    const Hwnd inbox = Window(u"Inbox - Mail", u"mail.exe");
    EXPECT_EQ(Changed(inbox).size(), 1u) << "new and flashing: once";
    s_.os.ShowDesktopInOtherProcess(u"desk2");
    state_.RecordSwitch(2);
    EXPECT_TRUE(Changed().empty()) << "the user is there";
    s_.os.ShowDesktopInOtherProcess(u"desk3");
    state_.RecordSwitch(3);
    EXPECT_TRUE(Changed().empty()) << "seen";

    (void)Window(u"Calendar", u"mail.exe");
    EXPECT_TRUE(shell_.watching);
    s_.os.registry().SetDword(u"Software\\Zelkova", u"ShowNews", 0);
    EXPECT_TRUE(Changed().empty());
    EXPECT_FALSE(shell_.watching) << "the system is not asked to report windows";
    s_.os.registry().SetDword(u"Software\\Zelkova", u"ShowNews", 1);
    EXPECT_EQ(Changed(), std::vector<Text>{u"Calendar"});
    EXPECT_TRUE(shell_.watching);
}

}  // namespace
}  // namespace zk::companion
