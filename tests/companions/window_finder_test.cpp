// The window finder's list on the simulated session, with windows on the four desktops: what is
// listed, what a query keeps and in which order, and how the choice moves.

#include "shared/window_finder.h"

#include <gtest/gtest.h>

#include "companions/companion_session.h"

namespace zk::companion {
namespace {

std::vector<Text> Titles(const WindowFinder& finder) {
    std::vector<Text> titles;
    for (const FoundWindow* w : finder.Matches())
        titles.push_back(w->title);
    return titles;
}

class WindowFinderTest : public ::testing::Test {
  protected:
    WindowFinderTest() {
        for (const char16_t* desk : {u"desk2", u"desk3", u"desk4"})
            s_.os.CreateDesktopInOtherProcess(desk);
        const std::uint32_t mail = s_.os.AddOtherProcess(u"mail.exe");
        const std::uint32_t notepad = s_.os.AddOtherProcess(u"notepad.exe");
        const std::uint32_t excel = s_.os.AddOtherProcess(u"EXCEL.EXE");
        const std::uint32_t herald = s_.os.AddOtherProcess(u"DeskHerald.exe");
        struct Window {
            const char16_t* title;
            std::uint32_t process;
            const char16_t* desk;
            std::uint32_t style;
        };
        for (const Window& w : {Window{u"Inbox - Mail", mail, u"Default", WsVisible},
                                {u"Untitled - Notepad", notepad, u"desk3", WsVisible},
                                {u"Budget 2027.xlsx - Excel", excel, u"desk3", WsVisible},
                                {u"notes.txt - Notepad", notepad, u"desk4", WsVisible},
                                {u"Zelkova2 banner", herald, u"desk2", WsVisible},
                                {u"hidden notes", notepad, u"desk2", 0u}}) {
            (void)s_.os.CreateWindowInOtherProcess(w.title, nullptr, w.process, Text(w.desk),
                                                   w.style);
        }
    }
    testing::CompanionSession s_{u"DeskPilot.exe", u"Default"};
};

// Every word must be found in the title or the program, in any case; titles that begin with the
// query come first, then titles with a word that does, each group in desktop order.
TEST_F(WindowFinderTest, AQueryKeepsWhatHoldsEveryWordBestMatchesFirst) {
    WindowFinder finder(AllUserWindows(s_.os));
    struct Case {
        const char16_t* query;
        std::vector<Text> titles;
    };
    const Case cases[] = {
        {u"",  // in desktop order, neither Zelkova2's own nor a hidden one
         {u"Inbox - Mail", u"Untitled - Notepad", u"Budget 2027.xlsx - Excel",
          u"notes.txt - Notepad"}},
        {u"NOTE", {u"notes.txt - Notepad", u"Untitled - Notepad"}},
        {u"notepad  untitled", {u"Untitled - Notepad"}},
        {u"excel.exe", {u"Budget 2027.xlsx - Excel"}},
        {u"2027 budget", {u"Budget 2027.xlsx - Excel"}},
        {u"calendar", {}},
    };
    for (const Case& c : cases) {
        finder.SetQuery(c.query);
        EXPECT_EQ(Titles(finder), c.titles) << std::string(c.query, c.query + 3);
    }
    EXPECT_EQ(finder.ChosenWindow(), nullptr) << "nothing to choose";
}

TEST_F(WindowFinderTest, TheChoiceFollowsItsWindowAndStaysWithinTheList) {
    WindowFinder finder(AllUserWindows(s_.os));
    EXPECT_EQ(finder.Chosen(), 0u);
    finder.Move(2);
    EXPECT_EQ(finder.ChosenWindow()->title, u"Budget 2027.xlsx - Excel");
    finder.Move(10);
    EXPECT_EQ(finder.Chosen(), 3u) << "a page down stops at the last";
    finder.Move(-10);
    EXPECT_EQ(finder.Chosen(), 0u);
    finder.ChooseAt(3);
    finder.SetQuery(u"notepad");
    EXPECT_EQ(finder.ChosenWindow()->title, u"notes.txt - Notepad") << "still listed: still chosen";
    EXPECT_EQ(finder.Chosen(), 1u) << "not moved back to the top as the user types";
    finder.SetQuery(u"mail");
    EXPECT_EQ(finder.ChosenWindow()->title, u"Inbox - Mail");
    finder.ChooseAt(7);
    EXPECT_EQ(finder.Chosen(), 0u) << "a row past the list chooses nothing new";
}

}  // namespace
}  // namespace zk::companion
