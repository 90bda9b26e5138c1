#include "diagnostics/win_api_error.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"

namespace zk {
namespace {

TEST(ApiErrorText, GivesTheSystemTextUntrimmedOrNothingForAnUnknownOrOverlongText) {
    sim::SimOs os;
    EXPECT_EQ(ApiErrorText(os, 5), u"Access is denied.\r\n");
    EXPECT_EQ(ApiErrorText(os, 1409), u"Hot key is already registered.\r\n");
    os.SetSystemText(4242, u"Insert %1 stays as it is.\r\n");
    EXPECT_EQ(ApiErrorText(os, 4242), u"Insert %1 stays as it is.\r\n");
    EXPECT_EQ(os.journal().Details("FormatMessageW").back(), "4242 flags 0x1200 lang 0 size 256");
    EXPECT_EQ(ApiErrorText(os, 0x20001234), u"");
    os.SetSystemText(4243, Text(255, u'x'));
    EXPECT_EQ(ApiErrorText(os, 4243).size(), 255u) << "255 characters and the NUL fit";
    os.SetSystemText(4244, Text(256, u'x'));
    EXPECT_EQ(ApiErrorText(os, 4244), u"");
}

}  // namespace
}  // namespace zk
