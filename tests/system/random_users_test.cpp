// Random users against the whole system on the simulated session: seeded sequences of what a
// user mixes (hotkeys on every desktop, the preview and the finder, the tray, the control tool, a
// command sent straight to the controller, the system switching behind Zelkova2's back, programs
// that end and start again), each step checked against what the user expects. A failure prints
// its seed and the shortest sequence found that still fails.

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <utility>

#include "system/user_model.h"
#include "system/whole_system.h"

namespace zk::testing {
namespace {

using StepPlay = std::string (*)(WholeSystem&, UserModel&, int);

std::string Key(WholeSystem& s, int id) {
    return s.Press(id) ? std::string() : "no program took the key; ";
}
std::string Opened(const char* what, int on, const UserModel& user) {
    return on == user.shown
               ? std::string()
               : std::string("the ") + what + " opened on desktop " + std::to_string(on) + "; ";
}

// The view opened where the user is, and then its choice of desktop `v` is made.
std::string OpenedThen(const char* what, int on, UserModel& user, int v,
                       const std::function<void()>& choose) {
    std::string wrong = Opened(what, on, user);
    if (wrong.empty()) choose(), user.Show(v);
    return wrong;
}

// Who sees a step: a companion, none of them (the controller alone, or no one: the companions learn
// it when one of them next acts), or it changes nothing shown.
enum class Seen { ByCompanion, PastTheCompanions, Nothing };

// A kind of step: its words (the value follows), the values drawn, and what it does to the
// system and what the user then expects; it returns what went wrong that the desktops cannot show.
struct Act {
    const char* words;
    int low, high;
    Seen seen;
    StepPlay play;
};

const Act kActs[] = {
    {"key desktop", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) { return u.Show(v), Key(s, v); }},
    {"key previous", 0, 0, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int) { return u.Previous(), Key(s, 5); }},
    {"key next", 0, 0, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int) { return u.Next(), Key(s, 8); }},
    {"key before", 0, 0, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int) { return u.Before(), Key(s, 9); }},
    {"preview, then", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         (void)s.Press(6);
         return OpenedThen("preview", s.PreviewOpenOn(), u, v, [&] { s.ChooseInPreview(v); });
     }},
    {"finder, then the window on", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         (void)s.Press(7);
         return OpenedThen("finder", s.FinderOpenOn(), u, v, [&] { s.FindInFinder(v); });
     }},
    {"zelkovactl switch", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         (void)s.Ctl({"switch", std::to_string(v)});
         return u.Show(v), std::string();
     }},
    {"zelkovactl find the window on", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         (void)s.Ctl({"find", WholeSystem::TitleOn(v)});
         return u.Show(v), std::string();
     }},
    {"command straight to the controller", 1, 4, Seen::PastTheCompanions,
     [](WholeSystem& s, UserModel& u, int v) {
         s.CommandToController(v);
         return u.Show(v), std::string();
     }},
    {"tray menu, desktop", 1, 4, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) { return s.TrayMenu(v), u.Show(v), std::string(); }},
    {"tray wheel, next", 0, 0, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int) { return s.TrayWheel(true), u.Next(), std::string(); }},
    {"tray wheel, before", 0, 0, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int) {
         return s.TrayWheel(false), u.Before(), std::string();
     }},
    {"the system shows desktop", 1, 4, Seen::PastTheCompanions,
     [](WholeSystem& s, UserModel& u, int v) {
         return s.BehindOurBack(v), u.Show(v), std::string();
     }},
    {"this switcher ends (its herald starts it again):", 1, 4, Seen::Nothing,
     [](WholeSystem& s, UserModel&, int v) { return s.EndPilot(v), std::string(); }},
    {"this herald ends (its switcher starts it again):", 1, 4, Seen::Nothing,
     [](WholeSystem& s, UserModel&, int v) { return s.EndHerald(v), std::string(); }},
    // Its herald holds the hotkeys in the gap, where they belong to a desktop; hotkey 1 to 4,
    // "previous" (5) or the preview (6), which opens once the switcher is back.
    {"the switcher of the desktop shown ends, and meanwhile hotkey", 1, 6, Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         s.EndPilot(u.shown);
         if (v <= 4) u.Show(v);
         if (v == 5) u.Previous();
         std::string wrong = Key(s, v);
         if (v == 6) s.Settle(), wrong += Opened("preview", s.PreviewOpenOn(), u);
         return wrong;
     }},
    {"the switcher of the desktop shown ends between showing and asking: desktop", 1, 4,
     Seen::ByCompanion,
     [](WholeSystem& s, UserModel& u, int v) {
         const int shown = u.shown;
         if (!s.PilotMayEnd(shown)) return std::string();
         s.BehindOurBack(v);
         s.EndPilot(shown);
         return u.Show(v), std::string();
     }},
};
constexpr int kCommand = 8;
constexpr int kBehindOurBack = 12;
constexpr int kEndsBetween = 16;  // the system moves first, then a herald tells the controller

struct Step {
    int act;
    int value;
};

std::string Describe(const Step& step) {
    const Act& act = kActs[step.act];
    return act.low == 0 ? act.words : act.words + (" " + std::to_string(step.value));
}

// The system moving the user is seen by no one, the controller included. Such a move next to a
// command sent straight to the controller or another such move, before any companion acts, cannot
// be told apart from one move: "previous" then leads to the desktop shown before both, which the
// user cannot expect; sequences leave them out.
bool UnseenTwiceInARow(const std::vector<Step>& steps) {
    const auto moves = [](const Step& step) {
        return step.act == kBehindOurBack || step.act == kEndsBetween;
    };
    const auto past = [&](const Step& step) { return moves(step) || step.act == kCommand; };
    const Step* last = nullptr;
    for (const Step& step : steps) {
        if (kActs[step.act].seen == Seen::Nothing) continue;
        if (last != nullptr && past(*last) && past(step) && (moves(*last) || moves(step)))
            return true;
        last = &step;
    }
    return false;
}

// Plays the steps; the failure of the first step that goes wrong, or nothing.
std::optional<std::string> Play(sim::HotKeyScope scope, const std::vector<Step>& steps) {
    WholeSystem system(scope);
    UserModel user;
    // The user's first keys: desktop 2 and back. Until the system has been seen to switch, a move
    // behind Zelkova2's back cannot be told from a system that never switches (Wine 8).
    for (const int desk : {2, 1}) {
        if (!system.Press(desk)) return "the first keys were not taken";
        system.Settle();
        user.Show(desk);
    }
    bool unseen = false;  // the controller learns it from the next companion that acts
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Act& act = kActs[steps[i].act];
        std::string wrong = act.play(system, user, steps[i].value);
        if (act.seen != Seen::Nothing)
            unseen =
                steps[i].act == kBehindOurBack && system.Controller().CurrentDesk != user.shown;
        system.Settle();
        const frmZKRecord& controller = system.Controller();
        if (system.InputDesk() != user.shown)
            wrong += "the system shows desktop " + std::to_string(system.InputDesk()) + "; ";
        if (!unseen && (controller.CurrentDesk != user.shown ||
                        (user.previous != 0 && controller.PreviousDesk != user.previous))) {
            wrong += "the controller has " + std::to_string(controller.CurrentDesk) + " shown, " +
                     std::to_string(controller.PreviousDesk) + " before; ";
        }
        if (!wrong.empty()) {
            return "step " + std::to_string(i + 1) + " (" + Describe(steps[i]) + "): " + wrong +
                   "the user expects " + std::to_string(user.shown) + " shown, " +
                   std::to_string(user.previous) + " before";
        }
    }
    return std::nullopt;
}

// The shortest sequence found that still fails: each step left out in turn while the rest fails.
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

// Where the session holds the hotkeys, the system moving the user is not tried: the controller's
// signal for its PreviousDesk may come from that desktop's key or from "previous", and only a
// shown desktop sees the keyboard (GetAsyncKeyState, Remarks); Wine 8 never moves the user.
// ZK_RANDOM_USERS=N plays N sequences (1000), ZK_RANDOM_USERS_SEED=S from seed S (1).
TEST_P(RandomUsers, EveryStepLandsWhereTheUserExpects) {
    const auto env = [](const char* name, int otherwise) {
        const char* value = std::getenv(name);
        return value != nullptr ? std::atoi(value) : otherwise;
    };
    const auto first = static_cast<std::uint32_t>(env("ZK_RANDOM_USERS_SEED", 1));
    const auto count = static_cast<std::uint32_t>(env("ZK_RANDOM_USERS", 1000));
    for (std::uint32_t seed = first; seed < first + count; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        std::vector<Step> steps;
        while (steps.size() < 24) {
            Step step{pick(0, static_cast<int>(std::size(kActs)) - 1), 0};
            if (GetParam() == sim::HotKeyScope::Session && step.act == kBehindOurBack)
                step.act = kCommand;
            step.value = pick(kActs[step.act].low, kActs[step.act].high);
            steps.push_back(step);
            if (UnseenTwiceInARow(steps)) steps.pop_back();
        }
        if (const auto failure = Play(GetParam(), steps)) {
            std::string trace;
            const std::vector<Step> shortest = Shrink(GetParam(), steps);
            for (const Step& step : shortest)
                trace += "\n  " + Describe(step);
            FAIL() << "seed " << seed << ": " << *failure << "\nshortest failing sequence:" << trace
                   << "\n"
                   << Play(GetParam(), shortest).value_or("");
        }
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
