// Two copies of Zelkova2, each with its controller and companions: whatever their programs name
// to share (events, the state, the pictures), the copies share only the 54 signals, whose names
// are fixed.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "system/whole_system.h"
#include "vocabulary/hotkey_table.h"

namespace zk::testing {
namespace {

std::set<std::string> NamesOfACopy(std::uint32_t controllerId) {
    WholeSystem copy(sim::HotKeyScope::Desktop, controllerId);
    (void)copy.Press(HotKeyIdOf(HotKeyAction::ShowDesktop, 2));
    (void)copy.Press(HotKeyIdOf(HotKeyAction::ShowPreview));
    copy.ChooseInPreview(3);
    (void)copy.Press(HotKeyIdOf(HotKeyAction::FindWindow));
    copy.FindInFinder(4);
    (void)copy.Ctl({"reload"});
    copy.EndPilot(4);
    copy.Settle();
    return copy.NamedObjects();
}

TEST(TwoCopies, ShareNoNamedObjectButTheFixedSignals) {
    const std::set<std::string> first = NamesOfACopy(0x1A4), second = NamesOfACopy(0x2B8);
    ASSERT_GT(first.size(), 54u);
    std::vector<std::string> shared;
    std::set_intersection(first.begin(), first.end(), second.begin(), second.end(),
                          std::back_inserter(shared));
    std::erase_if(shared,
                  [](const std::string& name) { return name.starts_with("Local\\larchmont_"); });
    EXPECT_TRUE(shared.empty()) << shared.front();
}

}  // namespace
}  // namespace zk::testing
