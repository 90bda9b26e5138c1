// The bridge on the simulated session: what it forwards to whom and what it tells the desktops.
// (How it keeps the herald of desktop 1 running is the herald's watchdog, checked end to end.)

#include "DeskHerald/bridge.h"

#include <gtest/gtest.h>

#include "companions/companion_session.h"

namespace zk::companion {
namespace {

using testing::CompanionSession;
using testing::kSignalPrefix;

class BridgeTest : public ::testing::Test {
  protected:
    // Runs the bridge until it ends (true) or waits for more.
    bool RunsToItsEnd() {
        return s_.os.RunMessageLoop([&] {
            bridge_.Run();
            return 0;
        }) == 0;
    }

    CompanionSession s_{u"DeskHerald.exe", u"Default"};
    ControllerProcess controller_{s_.os, 0};
    Bridge bridge_{s_.os, controller_};
};

TEST_F(BridgeTest, ForwardsEachCommandToItsOwnControllerAndTellsTheDesktopsWhatChanged) {
    const std::vector<std::string> told = {
        "Switcher2Update2", "Switcher3Update3", "Switcher1Update1", "ReadRegSwitcher1",
        "ReadRegSwitcher2", "ReadRegSwitcher3", "ReadRegSwitcher4"};
    struct Step {
        std::int16_t index;
        std::vector<std::string> raised;
        int current, previous;
        bool goesOn;
    };
    const Step steps[] = {
        {51, {"Switcher3Update3"}, 3, 1, true},
        {51, {}, 3, 1, true},  // shown already: the controller changes nothing either
        {49, {"Switcher1Update1"}, 1, 3, true},
        {53,
         {"ReadRegSwitcher1", "ReadRegSwitcher2", "ReadRegSwitcher3", "ReadRegSwitcher4"},
         1,
         3,
         true},
        {54, {}, 1, 3, false},
    };
    std::vector<std::string> commands;
    for (const Step& step : steps) {
        EXPECT_EQ(bridge_.Command(step.index), step.goesOn) << step.index;
        EXPECT_EQ(s_.Taken(told), step.raised) << step.index;
        EXPECT_EQ(bridge_.State().Current(), step.current) << step.index;
        EXPECT_EQ(bridge_.State().Previous(), step.previous) << step.index;
    }
    EXPECT_EQ(CompanionSession::Commands(),
              (std::vector<std::string>{kSignalPrefix + "SwitchToDesktop3",
                                        kSignalPrefix + "SwitchToDesktop3",
                                        kSignalPrefix + "SwitchToDesktop1",
                                        kSignalPrefix + "ReadReg", kSignalPrefix + "Shutdown"}));
    EXPECT_TRUE(s_.os.WaitForEventInOtherProcess("Local\\Zelkova2.Shown3"));
    EXPECT_TRUE(s_.os.WaitForEventInOtherProcess("Local\\Zelkova2.Reloaded"));
}

TEST_F(BridgeTest, WaitsForCommandsInTheirOrderAndEndsWithShutdownOrWithTheController) {
    s_.Raise("Shutdown");
    s_.Raise("SwitchToDesktop2");
    EXPECT_TRUE(RunsToItsEnd());
    EXPECT_EQ(
        CompanionSession::Commands(),
        (std::vector<std::string>{kSignalPrefix + "SwitchToDesktop2", kSignalPrefix + "Shutdown"}))
        << "the lower signal first: a switch sent with a shutdown comes before it";

    Bridge again(s_.os, controller_);
    EXPECT_FALSE(s_.os.RunMessageLoop([&] {
        again.Run();
        return 0;
    })) << "it waits while nothing is signalled";
    s_.os.EndProcess(s_.controller);
    EXPECT_TRUE(s_.os.RunMessageLoop([&] {
        again.Run();
        return 0;
    }));
}

}  // namespace
}  // namespace zk::companion
