#include "vocabulary/event_names.h"

#include <gtest/gtest.h>

#include "support/zk_error.h"

namespace zk {
namespace {

const Text kPrefix = u"Local\\larchmont_";

// The rule the written-out table follows: each name of block N carries the desktop's digit
// after "Switcher", and the index of each kind comes from EventIndex.
TEST(EventNames, TheWrittenOutTableFollowsTheIndexRuleForEverySignal) {
    EventNames names;
    EXPECT_EQ(names.EventName(1), u"") << "empty until filled";
    names.InitEventNames();
    int checked = 0;
    auto expect = [&](std::int32_t kind, std::int16_t desk, std::int16_t target, const Text& name) {
        EXPECT_EQ(names.EventName(EventNames::EventIndex(kind, desk, target)), kPrefix + name);
        ++checked;
    };
    for (std::int16_t d = 1; d <= 4; ++d) {
        const Text n = DecimalText(d);
        for (std::int16_t t = 1; t <= 4; ++t) {
            expect(KindSwitchTo, d, t, u"Switcher" + n + u"SwitchTo" + DecimalText(t));
            expect(KindUpdate, d, t, u"Switcher" + n + u"Update" + DecimalText(t));
        }
        expect(KindReadReg, d, 9, u"ReadRegSwitcher" + n);
        expect(KindShutdown, d, 9, u"ShutdownSwitcher" + n);
        expect(KindShowPreview, d, 9, u"ShowPreviewSwitcher" + n);
        expect(KindShowPopup, d, 9, u"ShowPopupSwitcher" + n);
    }
    for (std::int16_t t = 1; t <= 4; ++t)
        expect(KindSwitchTo, 5, t, u"SwitchToDesktop" + DecimalText(t));
    expect(KindReadReg, 5, 0, u"ReadReg");
    expect(KindShutdown, 5, 0, u"Shutdown");
    EXPECT_EQ(checked, 54);
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
