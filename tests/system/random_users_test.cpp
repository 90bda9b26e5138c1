// Random users against the whole system on the simulated session: seeded sequences of what a
// user mixes (hotkeys on every desktop, the preview and the finder, the tray, the control tool, a
// command sent straight to the controller, the system switching behind Zelkova2's back, programs
// that end and start again), each step checked against what the user expects. A failure prints
// its seed and the shortest sequence found that still fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>
#include <utility>

#include "system/user_model.h"
#include "system/whole_system.h"

namespace zk::testing {
namespace {

enum class Act {
    Key,        // value: hotkey id 1 to 5, 8, 9
    Preview,    // the preview's hotkey, then a digit: value
    Finder,     // the finder's hotkey, then the title of the window on desktop `value`
    CtlSwitch,  // zelkovactl switch value
    CtlFind,    // zelkovactl find (the title of the window on desktop value)
    Command,    // a switch command straight to the controller's window
    TrayMenu,   // the shown desktop's tray menu: desktop value
    TrayWheel,  // the wheel over the shown desktop's tray icon: value 1 next, 0 the one before
    BehindOurBack,
    RestartPilot,
    RestartHerald,
};

struct Step {
    Act act;
    int value;
};

std::string Describe(const Step& step) {
    const int v = step.value;
    switch (step.act) {
        case Act::Key:
            return v <= 4   ? "key desktop " + std::to_string(v)
                   : v == 5 ? "key previous"
                   : v == 8 ? "key next"
                            : "key before";
        case Act::Preview:
            return "preview, " + std::to_string(v);
        case Act::Finder:
            return "finder, " + WholeSystem::TitleOn(v);
        case Act::CtlSwitch:
            return "zelkovactl switch " + std::to_string(v);
        case Act::CtlFind:
            return "zelkovactl find " + WholeSystem::TitleOn(v);
        case Act::Command:
            return "command SwitchToDesktop" + std::to_string(v);
        case Act::TrayMenu:
            return "tray menu, desktop " + std::to_string(v);
        case Act::TrayWheel:
            return v != 0 ? "tray wheel, next" : "tray wheel, before";
        case Act::BehindOurBack:
            return "the system shows desktop " + std::to_string(v);
        case Act::RestartPilot:
            return "switcher " + std::to_string(v) + " starts again";
        case Act::RestartHerald:
            return "herald " + std::to_string(v) + " starts again";
    }
    return {};
}

// Where the session holds the hotkeys, the controller's signal for its PreviousDesk may come from
// the key of that desktop or from "previous", and a switcher whose desktop is not shown cannot ask
// the keyboard which (GetAsyncKeyState, Remarks): once the system has moved the user behind
// Zelkova2's back, it is taken for "previous". The system moving the user is tried where hotkeys
// belong to a desktop, as under Wine 10.
Step RandomStep(std::mt19937& random, sim::HotKeyScope scope) {
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    auto act = static_cast<Act>(pick(0, static_cast<int>(Act::RestartHerald)));
    if (scope == sim::HotKeyScope::Session && act == Act::BehindOurBack) act = Act::Command;
    if (act == Act::Key) {
        constexpr int kIds[] = {1, 2, 3, 4, 5, 5, 8, 9};
        return {act, kIds[pick(0, 7)]};
    }
    if (act == Act::TrayWheel) return {act, pick(0, 1)};
    return {act, pick(1, 4)};
}

// The system moving the user is seen by no one, the controller included: the companions learn
// it when one of them next acts. Such a move next to a command sent straight to the controller or
// another such move, before any companion acts, cannot be told apart from one move (nor, before
// the system has been seen to switch, from a system that never does): "previous" then leads to the
// desktop shown before both, which the user cannot expect; sequences leave them out.
bool PastTheCompanions(const Step& step) {
    return step.act == Act::BehindOurBack || step.act == Act::Command;
}
bool UnseenThenPast(const Step& first, const Step& then) {
    return PastTheCompanions(first) && PastTheCompanions(then) &&
           (first.act == Act::BehindOurBack || then.act == Act::BehindOurBack);
}
bool UnseenTwiceInARow(const std::vector<Step>& steps) {
    const Step* last = nullptr;
    for (const Step& step : steps) {
        if (step.act == Act::RestartPilot || step.act == Act::RestartHerald) continue;
        if (last != nullptr && UnseenThenPast(*last, step)) return true;
        last = &step;
    }
    return false;
}

// Plays the steps; the failure of the first step that goes wrong, or nothing.
std::optional<std::string> Play(sim::HotKeyScope scope, const std::vector<Step>& steps) {
    WholeSystem system(scope);
    // The user's first keys: desktop 2 and back. Until the system has been seen to switch, a move
    // behind Zelkova2's back cannot be told from a system that never switches (Wine 8).
    UserModel user;
    for (const int desk : {2, 1}) {
        if (!system.Press(desk)) return "the first keys were not taken";
        system.Settle();
        user.Show(desk);
    }
    // The system moved the user and no companion has acted since: the controller learns it from
    // the next companion that acts.
    bool unseen = false;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Step& step = steps[i];
        const bool wasUnseen = std::exchange(unseen, false);
        std::string seen;
        switch (step.act) {
            case Act::Key:
                if (!system.Press(step.value)) seen = "no program took the key";
                if (step.value <= 4) user.Show(step.value);
                if (step.value == 5) user.Previous();
                if (step.value == 8) user.Next();
                if (step.value == 9) user.Before();
                break;
            case Act::Preview:
                (void)system.Press(6);
                if (system.PreviewOpenOn() != user.shown) {
                    seen =
                        "the preview opened on desktop " + std::to_string(system.PreviewOpenOn());
                    break;
                }
                system.ChooseInPreview(step.value);
                user.Show(step.value);
                break;
            case Act::Finder:
                (void)system.Press(7);
                if (system.FinderOpenOn() != user.shown) {
                    seen = "the finder opened on desktop " + std::to_string(system.FinderOpenOn());
                    break;
                }
                system.FindInFinder(step.value);
                user.Show(step.value);
                break;
            case Act::CtlSwitch:
                (void)system.Ctl({"switch", std::to_string(step.value)});
                user.Show(step.value);
                break;
            case Act::CtlFind:
                (void)system.Ctl({"find", WholeSystem::TitleOn(step.value)});
                user.Show(step.value);
                break;
            case Act::Command:
                system.CommandToController(step.value);
                user.Show(step.value);
                break;
            case Act::TrayMenu:
                system.TrayMenu(step.value);
                user.Show(step.value);
                break;
            case Act::TrayWheel:
                system.TrayWheel(step.value != 0);
                if (step.value != 0) {
                    user.Next();
                } else {
                    user.Before();
                }
                break;
            case Act::BehindOurBack:
                system.BehindOurBack(step.value);
                user.Show(step.value);
                unseen = wasUnseen || system.Controller().CurrentDesk != user.shown;
                break;
            case Act::RestartPilot:
                system.RestartPilot(step.value);
                unseen = wasUnseen;
                break;
            case Act::RestartHerald:
                system.RestartHerald(step.value);
                unseen = wasUnseen;
                break;
        }
        system.Settle();
        const frmZKRecord& controller = system.Controller();
        std::ostringstream failure;
        if (!seen.empty()) failure << seen << "; ";
        if (system.InputDesk() != user.shown)
            failure << "the system shows desktop " << system.InputDesk() << "; ";
        if (!unseen && (controller.CurrentDesk != user.shown ||
                        (user.previous != 0 && controller.PreviousDesk != user.previous))) {
            failure << "the controller has " << controller.CurrentDesk << " shown, "
                    << controller.PreviousDesk << " before; ";
        }
        if (!failure.str().empty()) {
            return "step " + std::to_string(i + 1) + " (" + Describe(step) + "): " + failure.str() +
                   "the user expects " + std::to_string(user.shown) + " shown, " +
                   std::to_string(user.previous) + " before";
        }
    }
    return std::nullopt;
}

// The shortest sequence found that still fails: the steps up to the first failure, then each step
// left out in turn while the rest still fails.
std::vector<Step> Shrink(sim::HotKeyScope scope, std::vector<Step> steps) {
    for (std::size_t i = 0; i < steps.size();) {
        std::vector<Step> shorter = steps;
        shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(i));
        if (!UnseenTwiceInARow(shorter) && Play(scope, shorter)) {
            steps = std::move(shorter);
        } else {
            ++i;
        }
    }
    return steps;
}

class RandomUsers : public ::testing::TestWithParam<sim::HotKeyScope> {};

TEST_P(RandomUsers, EveryStepLandsWhereTheUserExpects) {
    // ZK_RANDOM_USERS asks for more (make soak).
    const char* more = std::getenv("ZK_RANDOM_USERS");
    const int sequences = more != nullptr ? std::max(1, std::atoi(more)) : 500;
    constexpr std::size_t kSteps = 24;
    for (std::uint32_t seed = 1; seed <= static_cast<std::uint32_t>(sequences); ++seed) {
        std::mt19937 random(seed);
        std::vector<Step> steps;
        while (steps.size() < kSteps) {
            steps.push_back(RandomStep(random, GetParam()));
            if (UnseenTwiceInARow(steps)) steps.pop_back();
        }
        const auto failure = Play(GetParam(), steps);
        if (!failure) continue;
        const std::vector<Step> shortest = Shrink(GetParam(), steps);
        std::string trace;
        for (const Step& step : shortest)
            trace += "\n  " + Describe(step);
        FAIL() << "seed " << seed << ": " << *failure << "\nshortest failing sequence:" << trace
               << "\n"
               << Play(GetParam(), shortest).value_or("");
    }
}

INSTANTIATE_TEST_SUITE_P(BothScopes, RandomUsers,
                         ::testing::Values(sim::HotKeyScope::Desktop, sim::HotKeyScope::Session),
                         [](const auto& info) {
                             return info.param == sim::HotKeyScope::Session ? "SessionWide"
                                                                            : "PerDesktop";
                         });

}  // namespace
}  // namespace zk::testing
