// Resources whose attribute values are not numbers: the loaders read them as atol does, a
// value without leading digits as 0, and report nothing.
#include <gtest/gtest.h>

#include <windows.h>

#include <VmGui.h>

#include "BreakpointCounter.h"
#include "TestWindows.h"

TEST(ResourceFailure, ADialogsNonNumericHelpIdentifiersReadAsAtolDoes) {
    testing_windows::ScopedApplication application;
    BreakpointCounter breaks;
    GwResource const executable;
    GwWindow* const dialog = executable.loadDialog(100, nullptr);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = static_cast<HWND>(dialog->window());
    testing_windows::WindowCloser closer{hwnd};
    EXPECT_EQ(GetWindowContextHelpId(hwnd), 0u) << "\"keine Zahl\"";
    EXPECT_EQ(GetWindowContextHelpId(GetDlgItem(hwnd, IDOK)), 12u) << "\"12 Stueck\"";
    EXPECT_EQ(breaks.count(), 0);
}

TEST(ResourceFailure, AMenusNonNumericIdentifiersReadAsZero) {
    testing_windows::ScopedApplication application;
    BreakpointCounter breaks;
    GwResource const executable;
    GwMenu* const menu = executable.loadMenu(200);
    ASSERT_NE(menu, nullptr);
    HMENU const bar = static_cast<HMENU>(menu->window());
    EXPECT_EQ(GetMenuContextHelpId(bar), 0u) << "\"x\"";
    HMENU const file = GetSubMenu(bar, 0);
    ASSERT_NE(file, nullptr);
    GwMenu const* const sub = GwMenu::lookup(file);
    ASSERT_NE(sub, nullptr);
    EXPECT_EQ(sub->id(), 0u) << "\"Datei\"";
    EXPECT_EQ(GetMenuContextHelpId(file), 0u) << "\"nein\"";
    EXPECT_EQ(sub->item(201).text(), String("&Neu"));
    delete menu;
    EXPECT_EQ(breaks.count(), 0);
}
