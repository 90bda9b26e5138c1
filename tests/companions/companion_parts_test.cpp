// The companions' smaller parts: their command line, the log's entries as the reporter shows
// them, where things go on the screen and what the tray icon looks like, and the start.

#include <gtest/gtest.h>

#include "DeskPilot/thumbnail_store.h"
#include "ZelkovaError/reporter_view.h"
#include "companions/companion_session.h"
#include "diagnostics/log_reader.h"
#include "resident/companion_args.h"
#include "shared/controller_link.h"
#include "shared/signals.h"
#include "signals/shared_state.h"
#include "tool_support/launcher.h"
#include "vocabulary/protocol.h"
#include "window/appearance.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;

TEST(CompanionArgs, TakeTheDesktopAndTheControllerFromTheEndOfTheLine) {
    struct Case {
        std::u16string_view line;
        int desk;
        std::uint32_t controller;
    };
    const Case cases[] = {{u" 2", 2, 0},
                          {u" 5", 5, 0},
                          {u" 3 4711", 3, 4711},
                          {u"\"C:\\Zelkova 2\\DeskPilot.exe\" 4", 4, 0},
                          {u"C:\\Zelkova 2\\DeskPilot.exe 1 88", 1, 88},
                          {u" 6", 0, 0},
                          {u" 0", 0, 0},
                          {u" 2 0", 0, 0},
                          {u" x", 0, 0},
                          {u"", 0, 0},
                          {u" 12345678901", 0, 0}};
    for (const Case& c : cases) {
        const CompanionArgs args = ParseCompanionArgs(c.line);
        EXPECT_EQ(args.desk, c.desk) << std::string(c.line.begin(), c.line.end());
        EXPECT_EQ(args.controllerId, c.controller);
    }
    EXPECT_EQ(ParseCompanionArgs(CompanionCommandLine(3, 77)).controllerId, 77u);
}

TEST(ReporterView, ShowsTheNewestEntryFirstAndSaysWhenTheLogCannotBeWritten) {
    CompanionSession s(u"ZelkovaError.exe", u"Default");
    EXPECT_EQ(MakeReporterView(s.os).text, kNothingLogged);
    s.os.AddFile(testing::kLog,
                 "1/1/2026 1:00:00 PM Zelkova: first (Access is denied.\r\n)\r\n"
                 "1/1/2026 1:00:01 PM Zelkova: second\r\n");
    const ReporterView view = MakeReporterView(s.os);
    const Text lines = view.text.substr(view.text.find(u"\r\n\r\n") + 4);
    EXPECT_EQ(view.text.find(u"What Zelkova2 could not do, newest first."), 0u);
    EXPECT_EQ(lines,
              u"1/1/2026 1:00:01 PM Zelkova: second\r\n"
              u"1/1/2026 1:00:00 PM Zelkova: first (Access is denied.)\r\n");
    EXPECT_EQ(view.logPath, testing::kLog);
    s.os.MakeUnwritable(testing::kLog);
    const Text text = MakeReporterView(s.os).text;
    EXPECT_EQ(text.find(u"Zelkova2 cannot write its error log " + testing::kLog +
                        u": Access is denied.\r\n"),
              0u);
    EXPECT_NE(text.find(u"Zelkova: second"), Text::npos) << "what was logged before still shows";
}

// On the monitor where the user works, which need not be the primary one: a monitor left of it
// starts at negative coordinates.
TEST(Appearance, ThePreviewFitsItsMonitorAtEveryDpiAndEachTileAnswersForItsDesktop) {
    for (const auto& [dpi, monitor] :
         {std::pair{96, Rect{0, 0, 1280, 800}}, std::pair{192, Rect{0, 0, 3840, 2160}},
          std::pair{144, Rect{-1024, 0, 0, 768}}, std::pair{96, Rect{1920, 200, 2560, 680}}}) {
        const PreviewLayout layout = LayOutPreview(dpi, monitor);
        EXPECT_GE(layout.window.left, monitor.left) << dpi << " " << monitor.left;
        EXPECT_LE(layout.window.right, monitor.right);
        EXPECT_GE(layout.window.top, monitor.top);
        EXPECT_LE(layout.window.bottom, monitor.bottom);
        const Rect banner = BannerRect(dpi, monitor);
        EXPECT_TRUE(monitor.Contains(banner.left, banner.top) &&
                    monitor.Contains(banner.right - 1, banner.bottom - 1));
        EXPECT_NEAR(layout.tiles[0].Width() * 10, layout.tiles[0].Height() * 16, 16) << "16:10";
        for (int desk = 1; desk <= 4; ++desk) {
            const Rect& t = layout.tiles[desk - 1];
            EXPECT_EQ(TileAt(layout, t.left, t.top), desk);
            EXPECT_EQ(TileAt(layout, t.right - 1, layout.labels[desk - 1].bottom - 1), desk);
            EXPECT_EQ(TileAt(layout, t.left - 1, t.top), 0) << "the margin between tiles";
            const Rect& last = layout.titles[desk - 1][kPreviewTitleRows - 1];
            EXPECT_EQ(TitleRowAt(layout, last.left, last.bottom - 1), std::pair(desk, 3));
            EXPECT_EQ(TitleRowAt(layout, t.left, t.top), std::nullopt) << "the tile";
            EXPECT_LE(last.bottom, layout.window.Height());
        }
    }
    // No empty band: the window ends under the title rows in use and the hint; the tiles stay.
    const PreviewLayout none = LayOutPreview(96, Rect{0, 0, 1280, 800}, 0);
    const PreviewLayout full = LayOutPreview(96, Rect{0, 0, 1280, 800});
    EXPECT_EQ(none.window.top, full.window.top);
    EXPECT_EQ(none.window.bottom - none.window.top, full.window.Height() - 4 * 18);
    EXPECT_EQ(none.hint.bottom, none.window.Height() - 16);
    EXPECT_EQ(TitleRowAt(none, none.hint.left, none.hint.top), std::nullopt);
    EXPECT_EQ(LayOutPreview(96, Rect{0, 0, 1280, 800}).tiles[0].Width(), 192);
    EXPECT_EQ(LayOutPreview(144, Rect{0, 0, 1920, 1080}).tiles[0].Width(), 288)
        << "scaled, not stretched";
    EXPECT_EQ(PreviewLabel(2, u"Mail", true), u"\u25CF 2  Mail") << "the hint says what the dot is";
    const std::vector<Text> four = {u"a", u"b", u"c", u"d"},
                            six = {u"a", u"b", u"c", u"d", u"e", u"f"};
    EXPECT_EQ(PreviewTitleRows(four), four) << "all fit";
    EXPECT_EQ(PreviewTitleRows(six), (std::vector<Text>{u"a", u"b", u"c", u"and 3 more"}));
    EXPECT_EQ(PreviewWindowRows(6), 3u);
    EXPECT_EQ(BannerRect(192, Rect{0, 0, 3840, 2160}).Width(), 560);
}

TEST(Appearance, TheTrayIconIsARoundedTileInTheDesktopsColourWithItsNumberInWhite) {
    for (const int size : {16, 20, 24, 32}) {
        const int big = size * kSupersample;
        std::vector<std::uint8_t> glyph(static_cast<std::size_t>(big) * big, 0);
        for (int y = big / 4; y < big * 3 / 4; ++y)  // a bar where the number would be
            for (int x = big / 2 - kSupersample; x < big / 2 + kSupersample; ++x)
                glyph[y * big + x] = 255;
        const auto pixels = TrayIconPixels(size, 3, glyph);
        ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size * size));
        EXPECT_EQ(pixels[0] >> 24, 0u) << "the corner is round";
        const std::uint32_t inside = pixels[size / 4 * size + size / 4];
        EXPECT_EQ(inside >> 24, 255u);
        const Rgb fill = DesktopColour(3);
        EXPECT_EQ((inside >> 16) & 0xFF, fill.r);
        EXPECT_EQ(inside & 0xFF, fill.b);
        EXPECT_EQ(pixels[size / 2 * size + size / 2] & 0xFFFFFF, 0xFFFFFFu) << "the number";
        const auto marked = TrayIconPixels(size, 3, glyph, true);
        const std::uint32_t dot = marked[size / 5 * size + size * 4 / 5];
        EXPECT_EQ(dot & 0xFFFFFF, 0xF59E0Bu) << "news: the dot";
    }
}

// The chosen row or tile stands out from the rest (3:1) and every text from what is behind it
// (4.5:1); in high contrast the views take the user's colours.
TEST(Appearance, TheViewsChosenItemAndTextsAreClearAndHighContrastIsTheUsers) {
    const ViewColours own = ViewColoursFor(nullptr);
    EXPECT_GE(ContrastRatio(own.chosen, own.background), 3.0);
    EXPECT_GE(ContrastRatio(own.chosenText, own.chosen), 4.5);
    for (const Rgb behind : {own.background, own.field}) {
        EXPECT_GE(ContrastRatio(own.text, behind), 4.5);
        EXPECT_GE(ContrastRatio(own.dim, behind), 4.5);
    }
    EXPECT_NEAR(ContrastRatio({0, 0, 0}, {255, 255, 255}), 21.0, 1e-9);
    const SystemColours system{{0, 0, 0}, {255, 255, 0}, {0, 255, 0}, {0, 255, 255}, {0, 0, 0}};
    const ViewColours high = ViewColoursFor(&system);
    EXPECT_EQ(high.background.r + high.background.g + high.background.b, 0);
    EXPECT_EQ(high.chosen.b, 255);
    EXPECT_EQ(high.text.g, 255);
}

TEST(Launcher, ShowsDefaultFirstStartsTheControllerThereAndWaitsForItsCompanions) {
    CompanionSession s(u"zelkovactl.exe", u"desk3");
    s.os.EndProcess(s.controller);  // no Zelkova2 runs
    s.os.ShowDesktopInOtherProcess(u"desk3");
    EXPECT_EQ(StartZelkova(s.os, 2000).result, LaunchResult::NoAnswer) << "nothing came up";
    EXPECT_EQ(s.os.InputDesktopName(), u"Default");
    ASSERT_EQ(s.os.StartedProcesses().size(), 1u);
    const auto& started = s.os.StartedProcesses()[0];
    EXPECT_EQ(started.image, testing::kFolder + u"\\Zelkova2.exe");
    EXPECT_EQ(started.startupInfo.lpDesktop, u"Default");
    EXPECT_LT(*s.os.journal().Find("SwitchDesktop"), *s.os.journal().Find("CreateProcessW"));
    EXPECT_EQ(StartZelkova(s.os, 2000).result, LaunchResult::AlreadyRunning);
}

// A second start, by any way the user has, finds the running Zelkova2 and opens the preview on
// the desktop shown, whose switcher takes the keyboard.
// The launcher, which the user started from the shell, may pass on its right to come to the front
// (SetForegroundWindow, Remarks: "started by the foreground process").
TEST(Launcher, ASecondStartOpensThePreviewOnTheDesktopShown) {
    CompanionSession s(u"StartZelkova2.exe", u"desk3");
    s.os.StartFromTheShell();
    SharedState state(s.os, s.controller);
    Signals switcher(s.os, s.os);  // its events, open as the switcher keeps them
    (void)switcher.Event(SwitcherSignal(KindShowPreview, 3));
    state.RecordSwitch(3);
    EXPECT_FALSE(ShowRunningZelkova(s.os)) << "no switcher there to show it";
    state.Block().companions[PilotSlot(3)] = 0x777;
    EXPECT_TRUE(ShowRunningZelkova(s.os));
    EXPECT_EQ(s.Taken({"ShowPreviewSwitcher1", "ShowPreviewSwitcher3"}),
              std::vector<std::string>{"ShowPreviewSwitcher3"});
    EXPECT_EQ(s.os.ForegroundGrants(), std::vector<std::uint32_t>{0x777});
    EXPECT_EQ(StartZelkova(s.os, 2000).result, LaunchResult::AlreadyRunning);
    EXPECT_TRUE(s.os.StartedProcesses().empty());
}

// The pictures of the desktops and the companions' state are the user's alone: their named
// memory lets only the user and the system open it.
TEST(SharedMemory, OnlyTheUserAndTheSystemMayOpenThePicturesAndTheState) {
    sim::SimOs os;
    const ThumbnailStore pictures(os, 0x99);
    const SharedState state(os, 0x99);
    const auto made = os.journal().Details("CreateFileMappingW");
    ASSERT_EQ(made.size(), kDesktopCount + 1u);
    for (const std::string& detail : made) {
        EXPECT_TRUE(detail.ends_with(
            " D:P(A;;GA;;;SY)(A;;GA;;;S-1-5-21-1004336348-1177238915-682003330-1001)"))
            << detail;
    }
}

}  // namespace
}  // namespace zk::companion
