#include "vocabulary/event_names.h"

#include <gtest/gtest.h>

#include "support/zk_error.h"

namespace zk {
namespace {

const Text kPrefix = u"Local\\larchmont_";

// (That the written-out table follows the index rule is checked where it is written.)
TEST(EventNames, AreEmptyUntilFilledThenEachLocalAndOutsideTheRangeEmpty) {
    EventNames names;
    EXPECT_EQ(names.EventName(1), u"") << "empty until filled";
    names.InitEventNames();
    EXPECT_EQ(names.EventName(1), kPrefix + u"Switcher1SwitchTo1");
    EXPECT_EQ(names.EventName(kSignalCount), kPrefix + u"Shutdown");
    for (const std::int16_t i : {0, 55, -1, INT16_MIN, INT16_MAX})
        EXPECT_EQ(names.EventName(i), u"") << i;
}

TEST(EventNames, IndexOfTheCallsThatNameNoSignalAndWhereA16BitStepOverflows) {
    struct Case {
        std::int32_t kind;
        std::int16_t desk, target, index;
    };
    const Case cases[] = {{KindUpdate, 5, 1, 53},
                          {KindShowPreview, 5, 0, 59},
                          {KindShowPopup, 5, 0, 60},
                          {0, 3, 1, 24},
                          {7, 3, 1, 24},
                          {KindSwitchTo, 0, 0, -12},
                          {KindShowPreview, 1, 0, 11}};  // the target is not read
    for (const auto& c : cases)
        EXPECT_EQ(EventNames::EventIndex(c.kind, c.desk, c.target), c.index) << c.kind;
    auto overflows = [](std::int32_t kind, std::int16_t desk, std::int16_t target) {
        try {
            (void)EventNames::EventIndex(kind, desk, target);
        } catch (const ZkError& e) {
            return e.number() == kErrOverflow;
        }
        return false;
    };
    EXPECT_TRUE(overflows(KindSwitchTo, 2731, 8));
    EXPECT_FALSE(overflows(KindSwitchTo, 2731, 7));
}

}  // namespace
}  // namespace zk
