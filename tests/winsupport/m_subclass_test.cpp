// Subclassing: who sees a message and whose result counts, with one receiver or several, and the
// errors, in the order of the checks.

#include "winsupport/m_subclass.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"
#include "support/zk_error.h"
#include "winsupport/process_context.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

using testing::g_seen;
using testing::kOriginalResult;
using testing::MakeProbe;
using Seen = std::vector<std::string>;

std::optional<ZkError> ErrorOf(const std::function<void()>& attach) {
    try {
        attach();
    } catch (const ZkError& e) {
        return e;
    }
    return std::nullopt;
}

constexpr std::int32_t kOne = WmUser + 1;
constexpr std::int32_t kTwo = WmUser + 2;

// Message routing through a subclassed window (the system's part of it, replacing and calling
// window procedures, is compared with the real system by the contract suite).
class Subclassing : public ::testing::Test {
  protected:
    Subclassing() : context_(os_), window_(testing::MakeProbeWindow(os_)) { g_seen.clear(); }
    Lresult Send(std::int32_t message) {
        return os_.SendMessageW(window_, static_cast<std::uint32_t>(message), 0, 0);
    }
    std::intptr_t CurrentProcedure() { return os_.GetWindowLongPtrW(window_, GwlpWndProc); }
    sim::SimOs os_;
    ProcessContext context_;
    Hwnd window_;
};

// One receiver's answer decides; with two, the first decides what comes before and the last
// what comes after. A message nobody wants passes through.
TEST_F(Subclassing, TheReceiversAnswersDecideWhoSeesTheMessageAndWhoseResultCounts) {
    struct Case {
        std::vector<std::int32_t> responses;  // A's (result 5), then B's (result 6)
        Seen seen;
        Lresult result;
    };
    const Case cases[] = {
        {{CallOriginalAfter},
         {"A asked 1", "A proc 1", "A asked 1", "original 1"},
         kOriginalResult},
        {{CallOriginalBefore}, {"A asked 1", "original 1", "A proc 1", "A asked 1"}, 5},
        {{ConsumeMessage}, {"A asked 1", "A proc 1", "A asked 1"}, 5},
        {{7}, {"A asked 1", "A proc 1", "A asked 1"}, 5},
        {{CallOriginalBefore, CallOriginalAfter},
         {"A asked 1", "original 1", "A proc 1", "B proc 1", "B asked 1"},
         6},
        {{ConsumeMessage, CallOriginalAfter},
         {"A asked 1", "A proc 1", "B proc 1", "B asked 1", "original 1"},
         kOriginalResult},
        {{CallOriginalAfter, ConsumeMessage},
         {"A asked 1", "A proc 1", "B proc 1", "B asked 1"},
         6},
    };
    for (const auto& c : cases) {
        std::vector<std::shared_ptr<testing::Probe>> receivers;
        for (std::size_t i = 0; i < c.responses.size(); ++i) {
            receivers.push_back(
                MakeProbe(i == 0 ? "A" : "B", c.responses[i], 5 + static_cast<Lresult>(i)));
            MSubclass::AttachReceiver(*receivers.back(), window_, kOne);
        }
        g_seen.clear();
        EXPECT_EQ(Send(kOne), c.result) << c.seen.size();
        EXPECT_EQ(g_seen, c.seen);
        g_seen.clear();
        EXPECT_EQ(Send(kTwo), kOriginalResult);
        EXPECT_EQ(g_seen, Seen{"original 2"});
        for (auto it = receivers.rbegin(); it != receivers.rend(); ++it)
            MSubclass::DetachReceiver(**it, window_, kOne);
    }
}

// A receiver detached from between two leaves them in order; the window's own procedure comes
// back with the last detach of the last message.
TEST_F(Subclassing, DetachingKeepsTheOthersInOrderAndTheLastGivesTheProcedureBack) {
    const std::intptr_t original = CurrentProcedure();
    auto a = MakeProbe("A", ConsumeMessage, 1);
    auto b = MakeProbe("B", ConsumeMessage, 2);
    auto c = MakeProbe("C", ConsumeMessage, 3);
    for (auto* r : {a.get(), b.get(), c.get()})
        MSubclass::AttachReceiver(*r, window_, kOne);
    MSubclass::AttachReceiver(*a, window_, kTwo);
    MSubclass::DetachReceiver(*b, window_, kOne);
    g_seen.clear();
    EXPECT_EQ(Send(kOne), 3);
    EXPECT_EQ(g_seen, (Seen{"A asked 1", "A proc 1", "C proc 1", "C asked 1"}));
    MSubclass::DetachReceiver(*a, window_, kOne);
    MSubclass::DetachReceiver(*c, window_, kOne);
    EXPECT_EQ(CurrentProcedure(), reinterpret_cast<std::intptr_t>(&MSubclass::SubclassWindowProc));
    MSubclass::DetachReceiver(*a, window_, kTwo);
    EXPECT_EQ(CurrentProcedure(), original);
    g_seen.clear();
    EXPECT_EQ(Send(kOne), kOriginalResult);
    EXPECT_EQ(g_seen, Seen{"original 1"});
}

TEST_F(Subclassing, AReceiverMayDetachItselfAndDestroyTheWindowDuringItsOwnMessage) {
    auto owner = MakeProbe("A", CallOriginalAfter, 1);
    std::weak_ptr<testing::Probe> alive = owner;
    MSubclass::AttachReceiver(*owner, window_, kOne);
    MSubclass::AttachReceiver(*owner, window_, kTwo);
    Os& os = os_;
    owner->during = [&, self = owner.get()](Hwnd w, std::int32_t, Wparam, Lparam) {
        MSubclass::DetachReceiver(*self, w, kTwo);
        MSubclass::DetachReceiver(*self, w, kOne);
        (void)os.DestroyWindow(w);
        owner.reset();  // the last owner lets go while the dispatcher still uses it
    };
    g_seen.clear();
    EXPECT_EQ(Send(kOne), kOriginalResult) << "the previous procedure still answers";
    EXPECT_EQ(g_seen, (Seen{"A asked 1", "A proc 1", "A asked 1", "original 1"}));
    EXPECT_TRUE(alive.expired()) << "released once the dispatcher is done with it";
    EXPECT_FALSE(os.IsWindow(window_));
}

// The checks of an attach, in their order, each with its number, source and description.
TEST_F(Subclassing, AttachRefusesAGoneOrForeignWindowAFailedInstallAndADoubleAttach) {
    os_.SetModuleFileName(u"C:\\Apps\\Zelkova2.exe");
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    const Hwnd gone = testing::MakeProbeWindow(os_);
    ASSERT_TRUE(os_.DestroyWindow(gone));
    os_.faults().FailNth("SetWindowLongPtrW", 1, ErrorAccessDenied);
    struct Case {
        Hwnd window;
        std::uint32_t number;
        Text description;
    };
    const Case cases[] = {
        {gone, 0x8004331B, u"Invalid window"},  // 13083 | 0x80040000
        {os_.CreateWindowInOtherProcess(), 0x8004331C, u"Can't modify external window"},
        {window_, 0x80043319, u"Can't subclass window"}};
    for (const Case& c : cases) {
        const auto error = ErrorOf([&] { MSubclass::AttachReceiver(*a, c.window, kOne); });
        ASSERT_TRUE(error.has_value()) << c.number;
        EXPECT_EQ(static_cast<std::uint32_t>(error->number()), c.number);
        EXPECT_EQ(error->source(), u"Zelkova2.WindowProc");
        EXPECT_EQ(error->description(), c.description);
    }
    EXPECT_TRUE(os_.WindowProps(window_).empty()) << "a refused install changes nothing";
    MSubclass::AttachReceiver(*a, window_, kOne);
    const auto twice = ErrorOf([&] { MSubclass::AttachReceiver(*a, window_, kOne); });
    ASSERT_TRUE(twice.has_value());
    EXPECT_EQ(twice->description(), u"Message already handled by another class");
    MSubclass::DetachReceiver(*a, window_, kOne);
    MSubclass::DetachReceiver(*a, window_, kOne);
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
