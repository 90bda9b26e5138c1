#include "desktop/c_desktop.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_os.h"

namespace zk {
namespace {

const Text kFolder = u"C:\\Program Files\\Zelkova2";
const Text kPilot = kFolder + u"\\DeskPilot.exe";
const Text kHerald = kFolder + u"\\DeskHerald.exe";
const Text kNotFound = u"cDesktop: The system cannot find the file specified.\r\n";

struct Start {
    Text image, commandLine, desktop, title;
    bool operator==(const Start&) const = default;
};

class DesktopTest : public ::testing::Test {
  protected:
    DesktopTest() {
        os.AddFile(kPilot);
        os.AddFile(kHerald);
    }
    std::vector<Start> Starts() const {
        std::vector<Start> out;
        for (const auto& p : os.StartedProcesses()) {
            EXPECT_EQ(p.applicationName, p.image) << "started by its full path";
            EXPECT_TRUE(p.inheritHandles);
            EXPECT_EQ(p.creationFlags, 0u);
            EXPECT_EQ(p.startupInfo.dwFlags, 0u) << "no show-window request";
            out.push_back({p.image, p.commandLine, p.startupInfo.lpDesktop.value_or(u"?"),
                           p.startupInfo.lpTitle.value_or(u"?")});
        }
        return out;
    }
    sim::SimOs os;
};

TEST_F(DesktopTest, SetAsDefaultHoldsWhateverIsTheInputDesktopButStartsOnDefault) {
    os.CreateDesktopInOtherProcess(u"elsewhere");
    const Hdesk other = os.CreateDesktopW(u"elsewhere", 0, GenericAll);
    ASSERT_TRUE(os.SwitchDesktop(other));
    cDesktop desk(os);
    ASSERT_TRUE(desk.SetAsDefault());
    EXPECT_EQ(os.GetUserObjectInformationW(desk.desk()), u"elsewhere");
    EXPECT_EQ(desk.name(), u"Default");
    EXPECT_EQ(Starts(), (std::vector<Start>{{kPilot, u" 1", u"Default", u"Default"},
                                            {kHerald, u" 1", u"Default", u"Default"},
                                            {kHerald, u" 5", u"Default", u"Default"}}));
    EXPECT_EQ(os.journal().Details("OpenInputDesktop"), std::vector<std::string>{"0 0 0x100"})
        << "no more than the right to switch to it";
}

TEST_F(DesktopTest, CreateShowsTheNewDesktopAndStartsItsTwoCompanionsThere) {
    cDesktop desk(os);
    ASSERT_TRUE(desk.Create(u"desk2", 2));
    EXPECT_EQ(os.InputDesktopName(), u"desk2");
    EXPECT_EQ(Starts(), (std::vector<Start>{{kPilot, u" 2", u"desk2", u"desk2"},
                                            {kHerald, u" 2", u"desk2", u"desk2"}}));
    const auto& j = os.journal();
    const auto created = j.Find("CreateDesktopW", "desk2 0 0x10000000");
    const auto thread = j.Find("SetThreadDesktop");
    const auto shown = j.Find("SwitchDesktop");
    const auto started = j.Find("CreateProcessW");
    ASSERT_TRUE(created && thread && shown && started);
    EXPECT_LT(*created, *thread);
    EXPECT_LT(*thread, *shown);
    EXPECT_LT(*shown, *started);

    os.CreateDesktopInOtherProcess(u"desk3");
    cDesktop existing(os);
    EXPECT_TRUE(existing.Create(u"desk3", 3)) << "an existing desktop is opened";
    EXPECT_EQ(Starts().size(), 4u);
}

TEST_F(DesktopTest, AFailedStartIsRecordedButOnlyTheLastStartDecides) {
    os.faults().FailNth("CreateProcessW", 1, ErrorFileNotFound);
    cDesktop first(os);
    EXPECT_TRUE(first.Create(u"desk2", 2));
    EXPECT_EQ(first.GetLastError(), kNotFound);

    os.RemoveFile(kHerald);
    cDesktop second(os);
    EXPECT_FALSE(second.SetAsDefault()) << "the controller's herald could not start";
    EXPECT_EQ(second.GetLastError(), kNotFound);
    EXPECT_EQ(os.StartedProcesses().size(), 2u) << "every start was attempted";
}

TEST_F(DesktopTest, EachFailingSystemCallFailsItsOperationWithTheSystemText) {
    struct Case {
        const char* call;
        std::uint32_t error;
        bool createInsteadOfDefault;
        Text expected;
    };
    const Case cases[] = {
        {"GetThreadDesktop", ErrorAccessDenied, false, u"cDesktop: Access is denied.\r\n"},
        {"OpenInputDesktop", ErrorAccessDenied, false, u"cDesktop: Access is denied.\r\n"},
        {"CreateDesktopW", ErrorNotEnoughMemory, true,
         u"cDesktop: Not enough memory resources are available to process this command.\r\n"},
    };
    for (const auto& c : cases) {
        sim::SimOs fresh;
        fresh.faults().FailEvery(c.call, c.error);
        cDesktop desk(fresh);
        EXPECT_FALSE(c.createInsteadOfDefault ? desk.Create(u"desk2", 2) : desk.SetAsDefault())
            << c.call;
        EXPECT_EQ(desk.GetLastError(), c.expected) << c.call;
        EXPECT_TRUE(fresh.StartedProcesses().empty()) << c.call;
        EXPECT_EQ(desk.desk(), nullptr) << c.call;

        const auto before = fresh.journal().Entries().size();
        desk.SwitchTo();
        desk.ClearUp();
        const bool touched = fresh.journal().Entries().size() > before;
        // Desktop 1 kept the thread's desktop when only the input desktop failed.
        EXPECT_EQ(touched, std::string(c.call) == "OpenInputDesktop") << c.call;
    }
}

TEST_F(DesktopTest, SwitchToShowsTheDesktopAndMovesTheThreadBackAndClearUpClosesOnce) {
    cDesktop one(os);
    cDesktop two(os);
    ASSERT_TRUE(one.SetAsDefault());
    ASSERT_TRUE(two.Create(u"desk2", 2));
    EXPECT_EQ(os.ThreadDesktopName(), u"desk2") << "a thread without windows follows";
    const std::size_t before = os.journal().Entries().size();
    one.SwitchTo();
    EXPECT_EQ(os.InputDesktopName(), u"Default");
    EXPECT_EQ(os.ThreadDesktopName(), u"Default");
    EXPECT_LT(*os.journal().Find("SwitchDesktop", "", before),
              *os.journal().Find("SetThreadDesktop", "", before))
        << "shown first, then the thread moves";
    one.ClearUp();
    one.ClearUp();
    EXPECT_EQ(os.journal().Count("CloseDesktop"), 1);
    EXPECT_EQ(one.name(), u"Default");
}

}  // namespace
}  // namespace zk
