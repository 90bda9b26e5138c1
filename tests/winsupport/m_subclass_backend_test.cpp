// Message routing through a subclassed window, against every backend: the sim and, under Wine,
// a real window.

#include <gtest/gtest.h>

#include "contract/backends.h"
#include "support/zk_error.h"
#include "winsupport/m_subclass.h"
#include "winsupport/process_context.h"
#include "winsupport/subclass_probe.h"

namespace zk::contract {
namespace {

using testing::g_seen;
using testing::kOriginalResult;
using testing::MakeProbe;
using Seen = std::vector<std::string>;

constexpr std::int32_t kOne = WmUser + 1;
constexpr std::int32_t kTwo = WmUser + 2;

class Subclassing : public ::testing::TestWithParam<Backend> {
  protected:
    Subclassing() : os_(GetParam().make()), context_(*os_) {
        window_ = testing::MakeProbeWindow(*os_);
        g_seen.clear();
    }
    ~Subclassing() override {
        if (os_->IsWindow(window_)) (void)os_->DestroyWindow(window_);
    }
    Lresult Send(std::int32_t message) {
        return os_->SendMessageW(window_, static_cast<std::uint32_t>(message), 0, 0);
    }
    std::intptr_t CurrentProcedure() { return os_->GetWindowLongPtrW(window_, GwlpWndProc); }
    std::unique_ptr<Os> os_;
    ProcessContext context_;
    Hwnd window_ = nullptr;
};

TEST_P(Subclassing, OneReceiverAndItsAnswerDecideWhoSeesTheMessageAndWhoseResultCounts) {
    struct Case {
        std::int32_t response;
        Seen seen;
        Lresult result;
    };
    const Case cases[] = {
        {CallOriginalAfter, {"A asked 1", "A proc 1", "A asked 1", "original 1"}, kOriginalResult},
        {CallOriginalBefore, {"A asked 1", "original 1", "A proc 1", "A asked 1"}, 5},
        {ConsumeMessage, {"A asked 1", "A proc 1", "A asked 1"}, 5},
        {7, {"A asked 1", "A proc 1", "A asked 1"}, 5},
    };
    for (const auto& c : cases) {
        auto a = MakeProbe("A", c.response, 5);
        MSubclass::AttachReceiver(*a, window_, kOne);
        g_seen.clear();
        EXPECT_EQ(Send(kOne), c.result) << "response " << c.response;
        EXPECT_EQ(g_seen, c.seen) << "response " << c.response;
        g_seen.clear();
        EXPECT_EQ(Send(kTwo), kOriginalResult) << "a message nobody wants passes through";
        EXPECT_EQ(g_seen, Seen{"original 2"});
        MSubclass::DetachReceiver(*a, window_, kOne);
    }
}

TEST_P(Subclassing, WithTwoReceiversTheFirstDecidesBeforeAndTheLastAfter) {
    struct Case {
        std::int32_t first, last;
        Seen seen;
        Lresult result;
    };
    const Case cases[] = {
        {CallOriginalBefore,
         CallOriginalAfter,
         {"A asked 1", "original 1", "A proc 1", "B proc 1", "B asked 1"},
         6},
        {ConsumeMessage,
         CallOriginalAfter,
         {"A asked 1", "A proc 1", "B proc 1", "B asked 1", "original 1"},
         kOriginalResult},
        {CallOriginalAfter, ConsumeMessage, {"A asked 1", "A proc 1", "B proc 1", "B asked 1"}, 6},
    };
    for (const auto& c : cases) {
        auto a = MakeProbe("A", c.first, 5);
        auto b = MakeProbe("B", c.last, 6);
        MSubclass::AttachReceiver(*a, window_, kOne);
        MSubclass::AttachReceiver(*b, window_, kOne);
        g_seen.clear();
        EXPECT_EQ(Send(kOne), c.result);
        EXPECT_EQ(g_seen, c.seen);
        MSubclass::DetachReceiver(*b, window_, kOne);
        MSubclass::DetachReceiver(*a, window_, kOne);
    }
}

TEST_P(Subclassing, DetachingTheMiddleReceiverKeepsTheOthersInOrder) {
    auto a = MakeProbe("A", ConsumeMessage, 1);
    auto b = MakeProbe("B", ConsumeMessage, 2);
    auto c = MakeProbe("C", ConsumeMessage, 3);
    for (auto* r : {a.get(), b.get(), c.get()})
        MSubclass::AttachReceiver(*r, window_, kOne);
    MSubclass::DetachReceiver(*b, window_, kOne);
    using MSubclass::GetProp;
    using MSubclass::ReceiverName;
    EXPECT_EQ(GetProp(window_, MSubclass::ReceiverCountName(window_, kOne)), 2);
    EXPECT_EQ(GetProp(window_, ReceiverName(window_, kOne, 2)),
              reinterpret_cast<std::intptr_t>(static_cast<ISubclass*>(c.get())));
    EXPECT_EQ(GetProp(window_, ReceiverName(window_, kOne, 3)), 0);
    g_seen.clear();
    EXPECT_EQ(Send(kOne), 3);
    EXPECT_EQ(g_seen, (Seen{"A asked 1", "A proc 1", "C proc 1", "C asked 1"}));
    MSubclass::DetachReceiver(*a, window_, kOne);
    MSubclass::DetachReceiver(*c, window_, kOne);
}

TEST_P(Subclassing, TheProcedureComesBackWithTheLastDetachAndOnlyCountsAreLeft) {
    const std::intptr_t original = CurrentProcedure();
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    MSubclass::AttachReceiver(*a, window_, kOne);
    MSubclass::AttachReceiver(*a, window_, kTwo);
    EXPECT_EQ(MSubclass::GetProp(window_, MSubclass::AttachCountName(window_)), 2);
    EXPECT_EQ(MSubclass::GetProp(window_, MSubclass::HandleText(window_)), original);
    g_seen.clear();
    EXPECT_EQ(Send(kTwo), kOriginalResult);
    EXPECT_EQ(g_seen, (Seen{"A asked 2", "A proc 2", "A asked 2", "original 2"}));

    MSubclass::DetachReceiver(*a, window_, kOne);
    EXPECT_EQ(CurrentProcedure(), reinterpret_cast<std::intptr_t>(&MSubclass::SubclassWindowProc));
    MSubclass::DetachReceiver(*a, window_, kTwo);
    EXPECT_EQ(CurrentProcedure(), original);
    for (const Text& gone : {MSubclass::AttachCountName(window_), MSubclass::HandleText(window_),
                             MSubclass::ReceiverName(window_, kOne, 1)}) {
        EXPECT_EQ(os_->GetPropW(window_, gone), nullptr);
    }
    EXPECT_EQ(os_->GetPropW(window_, MSubclass::ReceiverCountName(window_, kOne)), nullptr)
        << "a count of 0 reads as no property";
    g_seen.clear();
    EXPECT_EQ(Send(kOne), kOriginalResult);
    EXPECT_EQ(g_seen, Seen{"original 1"});
}

TEST_P(Subclassing, AReceiverMayDetachItselfAndDestroyTheWindowDuringItsOwnMessage) {
    auto owner = MakeProbe("A", CallOriginalAfter, 1);
    std::weak_ptr<testing::Probe> alive = owner;
    MSubclass::AttachReceiver(*owner, window_, kOne);
    MSubclass::AttachReceiver(*owner, window_, kTwo);
    Os& os = *os_;
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

TEST_P(Subclassing, AttachChecksTheWindowFirstAndRefusesADoubleAttach) {
    auto a = MakeProbe("A", CallOriginalAfter, 1);
    const Hwnd gone = testing::MakeProbeWindow(*os_);
    ASSERT_TRUE(os_->DestroyWindow(gone));
    try {
        MSubclass::AttachReceiver(*a, gone, kOne);
        ADD_FAILURE() << "attached to a destroyed window";
    } catch (const ZkError& e) {
        EXPECT_EQ(static_cast<std::uint32_t>(e.number()), 0x8004331Bu);  // 13083 | 0x80040000
        EXPECT_EQ(e.description(), u"Invalid window");
        EXPECT_TRUE(e.source().ends_with(u".WindowProc"));
    }
    MSubclass::AttachReceiver(*a, window_, kOne);
    try {
        MSubclass::AttachReceiver(*a, window_, kOne);
        ADD_FAILURE() << "attached twice";
    } catch (const ZkError& e) {
        EXPECT_EQ(e.description(), u"Message already handled by another class");
    }
    EXPECT_EQ(MSubclass::GetProp(window_, MSubclass::AttachCountName(window_)), 2)
        << "the attach count is raised before the check";
    EXPECT_EQ(MSubclass::GetProp(window_, MSubclass::ReceiverCountName(window_, kOne)), 1);
    MSubclass::DetachReceiver(*a, window_, kOne);
    MSubclass::DetachReceiver(*a, window_, kOne);
}

INSTANTIATE_TEST_SUITE_P(Backends, Subclassing, ::testing::ValuesIn(Backends()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace zk::contract
