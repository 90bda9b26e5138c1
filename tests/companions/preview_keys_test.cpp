#include "DeskPilot/preview_keys.h"

#include <gtest/gtest.h>

namespace zk::companion {
namespace {

TEST(PreviewKeys, NumbersChooseArrowsMoveAroundEnterChoosesEscCancels) {
    struct Case {
        std::uint32_t key;
        int selected;
        PreviewAction::Kind kind;
        int desktop;
    };
    const Case cases[] = {
        {'1', 3, PreviewAction::Choose, 1},  {'4', 1, PreviewAction::Choose, 4},
        {0x62, 1, PreviewAction::Choose, 2}, {0x64, 1, PreviewAction::Choose, 4},
        {0x65, 1, PreviewAction::None, 0},   {'5', 1, PreviewAction::None, 0},
        {0x25, 1, PreviewAction::Select, 4}, {0x25, 3, PreviewAction::Select, 2},
        {0x27, 4, PreviewAction::Select, 1}, {0x28, 2, PreviewAction::Select, 3},
        {0x09, 4, PreviewAction::Select, 1}, {0x24, 3, PreviewAction::Select, 1},
        {0x23, 2, PreviewAction::Select, 4}, {0x0D, 2, PreviewAction::Choose, 2},
        {0x20, 3, PreviewAction::Choose, 3}, {0x1B, 2, PreviewAction::Cancel, 0},
        {'A', 2, PreviewAction::None, 0},
    };
    for (const Case& c : cases) {
        const PreviewAction action = PreviewKey(c.key, c.selected);
        EXPECT_EQ(action.kind, c.kind) << c.key << " from " << c.selected;
        EXPECT_EQ(action.desktop, c.desktop) << c.key << " from " << c.selected;
    }
}

}  // namespace
}  // namespace zk::companion
