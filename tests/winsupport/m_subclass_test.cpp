// Subclassing cases that need the simulated session: exact handle values, a window of another
// process, an installation the system refuses, and a receiver that throws.

#include "winsupport/m_subclass.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"
#include "support/zk_error.h"
#include "winsupport/process_context.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

using testing::MakeProbe;

std::vector<Text> PropNames(sim::SimOs& os, Hwnd w) {
    std::vector<Text> names;
    for (const auto& [name, value] : os.WindowProps(w))
        names.push_back(name);
    return names;
}

std::int32_t ErrorNumberOf(const std::function<void()>& attach) {
    try {
        attach();
    } catch (const ZkError& e) {
        return e.number();
    }
    return 0;
}

TEST(MSubclassNames, PropertiesAreNamedAfterTheHandlesLow32BitsAsSignedDecimal) {
    sim::SimOs os;
    ProcessContext context(os);
    os.SetNextWindowHandle(920);
    const Hwnd w = testing::MakeProbeWindow(os);
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    MSubclass::AttachReceiver(*a, w, 786);
    MSubclass::AttachReceiver(*a, w, 74);
    EXPECT_EQ(PropNames(os, w), (std::vector<Text>{u"920", u"C920", u"920#786C", u"920#786#1",
                                                   u"920#74C", u"920#74#1"}));
    MSubclass::DetachReceiver(*a, w, 74);
    MSubclass::DetachReceiver(*a, w, 786);
    EXPECT_EQ(PropNames(os, w), (std::vector<Text>{u"920#786C", u"920#74C"}));

    os.SetNextWindowHandle(static_cast<std::intptr_t>(0xFFFFFFFF80001234ull));
    const Hwnd high = testing::MakeProbeWindow(os);
    EXPECT_EQ(MSubclass::ReceiverName(high, 786, 2), u"-2147478988#786#2");
}

TEST(MSubclassErrors, ComeInTheOrderOfTheChecksWithNumberSourceAndDescription) {
    sim::SimOs os;
    os.SetModuleFileName(u"C:\\Apps\\Zelkova2.exe");
    ProcessContext context(os);
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    const Hwnd external = os.CreateWindowInOtherProcess();
    EXPECT_EQ(ErrorNumberOf([&] { MSubclass::AttachReceiver(*a, external, 786); }),
              static_cast<std::int32_t>(0x8004331C));

    const Hwnd w = testing::MakeProbeWindow(os);
    os.faults().FailNth("SetWindowLongPtrW", 1, ErrorAccessDenied);
    try {
        MSubclass::AttachReceiver(*a, w, 786);
        ADD_FAILURE();
    } catch (const ZkError& e) {
        EXPECT_EQ(e.number(), static_cast<std::int32_t>(0x80043319));
        EXPECT_EQ(e.source(), u"Zelkova2.WindowProc");
        EXPECT_EQ(e.description(), u"Can't subclass window");
    }
    EXPECT_TRUE(PropNames(os, w).empty()) << "nothing changed";
}

TEST(MSubclassGuard, AReceiversErrorIsReportedAndTheSystemGetsZero) {
    sim::SimOs os;
    Text reported;
    ProcessContext context(os, [&](const Text& what) { reported = what; });
    const Hwnd w = testing::MakeProbeWindow(os);
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    a->during = [](Hwnd, std::int32_t, Wparam, Lparam) { RaiseSubscriptOutOfRange(); };
    MSubclass::AttachReceiver(*a, w, 786);
    EXPECT_THROW(MSubclass::Dispatch(w, 786, 0, 0), ZkError) << "the dispatcher lets it pass";
    EXPECT_EQ(os.SendMessageW(w, 786, 0, 0), 0);
    EXPECT_NE(reported.find(u"Subscript out of range"), Text::npos);
}

}  // namespace
}  // namespace zk
