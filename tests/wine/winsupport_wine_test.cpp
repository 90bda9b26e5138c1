// Window icons and the executable's icon resources, against the real system.

#include <windows.h>

#include <gtest/gtest.h>

#include "platform/win32/win32_os.h"
#include "support/recorder_file.h"
#include "winsupport/app_icon.h"
#include "winsupport/subclass_probe.h"

namespace zk {
namespace {

Lresult IconOf(Os& os, Hwnd w, Wparam which) {
    return os.SendMessageW(w, WM_GETICON, which, 0);
}

TEST(AppIconUnderWine, TheWindowAndItsTopOwnerGetBothIconsAndAnUnknownNameClearsThem) {
    Win32Os os;
    const Hwnd owner = testing::MakeProbeWindow(os);
    const Hwnd owned = testing::MakeProbeWindow(os, owner);
    AppIcon::SetWindowIcons(os, owned, u"AAA", true);
    for (const Hwnd w : {owner, owned}) {
        EXPECT_NE(IconOf(os, w, ICON_BIG), 0);
        EXPECT_NE(IconOf(os, w, ICON_SMALL), 0);
    }
    EXPECT_EQ(IconOf(os, owner, ICON_BIG), IconOf(os, owned, ICON_BIG));
    EXPECT_NE(IconOf(os, owned, ICON_BIG), IconOf(os, owned, ICON_SMALL));
    AppIcon::SetWindowIcons(os, owned, u"NOPE", true);
    for (const Hwnd w : {owner, owned}) {
        EXPECT_EQ(IconOf(os, w, ICON_BIG), 0);
        EXPECT_EQ(IconOf(os, w, ICON_SMALL), 0);
    }
    (void)os.DestroyWindow(owned);
    (void)os.DestroyWindow(owner);
}

// The icon groups in the order of the built executable's resource directory.
BOOL CALLBACK CollectGroup(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR groups) {
    auto* list = reinterpret_cast<std::vector<std::wstring>*>(groups);
    list->push_back(IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<UINT_PTR>(name))
                                         : std::wstring(name));
    return TRUE;
}

// Width and bits per pixel of each image of an icon group.
std::vector<std::pair<int, int>> GroupImages(HMODULE module, LPCWSTR group) {
#pragma pack(push, 2)
    struct Entry {
        BYTE width, height, colours, reserved;
        WORD planes, bitCount;
        DWORD bytes;
        WORD id;
    };
#pragma pack(pop)
    const HRSRC found = ::FindResourceW(module, group, MAKEINTRESOURCEW(14));
    const auto* data = static_cast<const BYTE*>(::LockResource(::LoadResource(module, found)));
    std::vector<std::pair<int, int>> images;
    for (WORD i = 0; data != nullptr && i < *reinterpret_cast<const WORD*>(data + 4); ++i) {
        const auto* e = reinterpret_cast<const Entry*>(data + 6 + i * sizeof(Entry));
        images.emplace_back(e->width, e->bitCount);
    }
    return images;
}

TEST(ResourcesUnderWine, TheNamedGroupComesFirstWithItsFourTrueColourImages) {
    const Text tests = support::TestFolder();
    const std::wstring exe =
        std::wstring(tests.begin(), tests.end()) + L"\\..\\..\\bin\\Zelkova2.exe";
    const HMODULE module = ::LoadLibraryExW(exe.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    std::vector<std::wstring> groups;
    ::EnumResourceNamesW(module, MAKEINTRESOURCEW(14), &CollectGroup,
                         reinterpret_cast<LONG_PTR>(&groups));
    EXPECT_EQ(groups, (std::vector<std::wstring>{L"AAA", L"#1"}));
    EXPECT_EQ(GroupImages(module, L"AAA"),
              (std::vector<std::pair<int, int>>{{16, 32}, {24, 32}, {32, 32}, {48, 32}}));
    EXPECT_EQ(GroupImages(module, MAKEINTRESOURCEW(1)),
              (std::vector<std::pair<int, int>>{{32, 1}, {32, 4}, {16, 4}}));
    ::FreeLibrary(module);
}

}  // namespace
}  // namespace zk
