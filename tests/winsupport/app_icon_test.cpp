#include "winsupport/app_icon.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

TEST(AppIcon, BigThenSmallEachToTheTopOwnerBeforeTheWindow) {
    sim::SimOs os;
    const Hwnd top = testing::MakeProbeWindow(os);
    const Hwnd middle = testing::MakeProbeWindow(os, top);
    const Hwnd window = testing::MakeProbeWindow(os, middle);
    AppIcon::SetWindowIcons(os, window, u"AAA", true);
    const Handle big = os.WindowIcon(window, true);
    const Handle small = os.WindowIcon(window, false);
    ASSERT_NE(big, nullptr);
    ASSERT_NE(small, nullptr);
    EXPECT_NE(big, small);
    EXPECT_EQ(os.WindowIcon(top, true), big);
    EXPECT_EQ(os.WindowIcon(top, false), small);
    EXPECT_EQ(os.WindowIcon(middle, true), nullptr) << "only the top of the chain";
    EXPECT_EQ(os.journal().Details("LoadImageA"),
              (std::vector<std::string>{"AAA 32x32 flags 0x8000", "AAA 16x16 flags 0x8000"}));
    const auto sends = os.journal().Details("SendMessageA");
    ASSERT_EQ(sends.size(), 4u);
    auto to = [](Hwnd w, int which) {
        char prefix[64];
        std::snprintf(prefix, sizeof prefix, "%#llx 128 %d ",
                      static_cast<unsigned long long>(HandleValue(w)), which);
        return std::string(prefix);
    };
    EXPECT_TRUE(sends[0].starts_with(to(top, 1))) << sends[0];
    EXPECT_TRUE(sends[1].starts_with(to(window, 1))) << sends[1];
    EXPECT_TRUE(sends[2].starts_with(to(top, 0))) << sends[2];
    EXPECT_TRUE(sends[3].starts_with(to(window, 0))) << sends[3];
}

TEST(AppIcon, WithoutOwnerEachIconGoesTwiceNoOwnerIsAskedWhenNotWantedAndUnknownClears) {
    sim::SimOs os;
    const Hwnd window = testing::MakeProbeWindow(os);
    AppIcon::SetWindowIcons(os, window, u"AAA", true);
    EXPECT_EQ(os.journal().Count("SendMessageA"), 4);
    AppIcon::SetWindowIcons(os, window, u"NOPE", true);
    EXPECT_EQ(os.WindowIcon(window, true), nullptr) << "an unknown group clears the icons";
    EXPECT_EQ(os.WindowIcon(window, false), nullptr);

    sim::SimOs other;
    const Hwnd owner = testing::MakeProbeWindow(other);
    const Hwnd owned = testing::MakeProbeWindow(other, owner);
    AppIcon::SetWindowIcons(other, owned, u"AAA", false);
    EXPECT_EQ(other.journal().Count("SendMessageA"), 2);
    EXPECT_EQ(other.journal().Count("GetWindow"), 0);
    EXPECT_EQ(other.WindowIcon(owner, true), nullptr);
}

}  // namespace
}  // namespace zk
