#include "signals/event_names.h"

#include <gtest/gtest.h>

#include <set>

#include "support/zk_error.h"

namespace zk {
namespace {

const Text kPrefix = u"Local\\larchmont_";

TEST(EventNames, TableHoldsTheFiftyFourFullNamesInBlockOrder) {
    EventNames names;
    names.InitEventNames();
    EXPECT_EQ(names.EventName(1), kPrefix + u"Switcher1SwitchTo1");
    EXPECT_EQ(names.EventName(5), kPrefix + u"Switcher1Update1");
    EXPECT_EQ(names.EventName(21), kPrefix + u"ReadRegSwitcher2");
    EXPECT_EQ(names.EventName(34), kPrefix + u"ShutdownSwitcher3");
    EXPECT_EQ(names.EventName(47), kPrefix + u"ShowPreviewSwitcher4");
    EXPECT_EQ(names.EventName(48), kPrefix + u"ShowPopupSwitcher4");
    EXPECT_EQ(names.EventName(49), kPrefix + u"SwitchToDesktop1");
    EXPECT_EQ(names.EventName(53), kPrefix + u"ReadReg");
    EXPECT_EQ(names.EventName(54), kPrefix + u"Shutdown");
    std::set<Text> distinct;
    for (std::int16_t i = 1; i <= 54; ++i)
        distinct.insert(names.EventName(i));
    EXPECT_EQ(distinct.size(), 54u);
    for (std::int16_t i = 1; i <= 48; ++i) {
        const char16_t digit = static_cast<char16_t>(u'1' + (i - 1) / 12);
        EXPECT_NE(names.EventName(i).find(Text(u"Switcher") + digit), Text::npos) << i;
    }
}

TEST(EventNames, NameOutsideOneToFiftyFourOrBeforeTheTableIsFilledIsEmpty) {
    EventNames names;
    for (const std::int16_t i : {1, 54, 0})
        EXPECT_EQ(names.EventName(i), u"") << i;
    names.InitEventNames();
    for (const std::int16_t i : {0, 55, -1, INT16_MIN, INT16_MAX}) {
        EXPECT_EQ(names.EventName(i), u"") << i;
    }
    names.InitEventNames();
    EXPECT_EQ(names.EventName(54), kPrefix + u"Shutdown") << "filling again changes nothing";
}

TEST(EventNames, IndexOfEveryKindAddressedToADesktopOrTheControllerBlock) {
    struct Case {
        std::int32_t kind;
        std::int16_t desk, target, index;
    };
    const Case cases[] = {
        {KindSwitchTo, 1, 1, 1},
        {KindSwitchTo, 3, 2, 26},
        {KindSwitchTo, 4, 4, 40},
        {KindUpdate, 2, 4, 20},
        {KindUpdate, 1, 1, 5},
        {KindShowPreview, 4, 9, 47},
        {KindShowPreview, 1, 0, 11},
        {KindShowPopup, 1, 3, 12},
        {KindShutdown, 1, 7, 10},
        {KindReadReg, 2, 7, 21},
        {KindSwitchTo, 5, 4, 52},
        {KindSwitchTo, 5, 1, 49},
        {KindReadReg, 5, 0, 53},
        {KindShutdown, 5, 0, 54},
        {KindUpdate, 5, 1, 53},
        {KindShowPreview, 5, 0, 59},
        {KindShowPopup, 5, 0, 60},
        {0, 3, 1, 24},
        {7, 3, 1, 24},
        {-1, 1, 1, 0},
        {KindSwitchTo, 0, 0, -12},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EventNames::EventIndex(c.kind, c.desk, c.target), c.index)
            << "kind " << c.kind << " desk " << c.desk << " target " << c.target;
    }
}

TEST(EventNames, IndexRaisesOverflowWhereA16BitStepOverflows) {
    auto overflows = [](std::int32_t kind, std::int16_t desk, std::int16_t target) {
        try {
            (void)EventNames::EventIndex(kind, desk, target);
        } catch (const ZkError& e) {
            return e.number() == kErrOverflow;
        }
        return false;
    };
    EXPECT_TRUE(overflows(KindSwitchTo, INT16_MIN, 1)) << "desk - 1";
    EXPECT_TRUE(overflows(KindSwitchTo, 2732, 0)) << "(desk - 1) * 12";
    EXPECT_FALSE(overflows(KindSwitchTo, 2731, 7));
    EXPECT_TRUE(overflows(KindSwitchTo, 2731, 8)) << "+ target";
    EXPECT_FALSE(overflows(KindUpdate, 2731, 3));
    EXPECT_TRUE(overflows(KindUpdate, 2731, 4)) << "+ 4 + target";
    EXPECT_TRUE(overflows(KindSwitchTo, -2730, -9));
    EXPECT_TRUE(overflows(KindShowPopup, 2731, 0));
    EXPECT_FALSE(overflows(0, 2731, 0));
}

}  // namespace
}  // namespace zk
