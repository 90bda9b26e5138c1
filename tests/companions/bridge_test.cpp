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

// The desktop's herald and switcher are told a moment after the controller took the command, and
// a desktop shown only in passing is not told.
TEST_F(BridgeTest, ForwardsEachCommandToItsOwnControllerAndTellsTheDesktopsWhatChanged) {
    const std::vector<std::string> told = {
        "Switcher2Update2", "Switcher3Update3", "Switcher4Update4", "Switcher1Update1",
        "ReadRegSwitcher1", "ReadRegSwitcher2", "ReadRegSwitcher3", "ReadRegSwitcher4"};
    struct Step {
        std::vector<std::int16_t> indexes;
        std::vector<std::string> raised;
        bool goesOn;
    };
    const Step steps[] = {
        {{51}, {"Switcher3Update3"}, true},
        {{51}, {}, true},  // shown already: the controller changes nothing either
        {{50, 52, 49}, {"Switcher1Update1"}, true},
        {{53},
         {"ReadRegSwitcher1", "ReadRegSwitcher2", "ReadRegSwitcher3", "ReadRegSwitcher4"},
         true},
        {{54}, {}, false},
    };
    for (const Step& step : steps) {
        for (const std::int16_t index : step.indexes)
            EXPECT_EQ(bridge_.Command(index), step.goesOn) << index;
        if (step.indexes[0] != 53) {  // a reload's word goes at once
            EXPECT_TRUE(s_.Taken(told).empty()) << "not yet";
        }
        bridge_.Set().RunLater();
        EXPECT_TRUE(step.indexes[0] == 53 || s_.Taken(told).empty()) << "still not yet";
        s_.os.AdvanceTime(kTellShownAfter);
        bridge_.Set().RunLater();
        EXPECT_EQ(s_.Taken(told), step.raised) << step.indexes[0];
    }
    EXPECT_EQ(CompanionSession::Commands(),
              (std::vector<std::string>{
                  kSignalPrefix + "SwitchToDesktop3", kSignalPrefix + "SwitchToDesktop3",
                  kSignalPrefix + "SwitchToDesktop2", kSignalPrefix + "SwitchToDesktop4",
                  kSignalPrefix + "SwitchToDesktop1", kSignalPrefix + "ReadReg",
                  kSignalPrefix + "Shutdown"}));
    EXPECT_TRUE(s_.os.WaitForEventInOtherProcess(s_.Name(SharedObject::Shown, 3)));
    EXPECT_FALSE(s_.os.WaitForEventInOtherProcess(s_.Name(SharedObject::Shown, 4))) << "in passing";
    EXPECT_TRUE(s_.os.WaitForEventInOtherProcess(s_.Name(SharedObject::Reloaded)));
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
