// The room a tool bar needs in a row, a column and floating, against sizes worked out by hand
// for buttons of 23 x 22 pixels; bars docked at each edge of a frame, a floating bar, and a
// bar dragged to another edge.
#include <gtest/gtest.h>

#include "ToolBarTesting.h"

using namespace testing_toolbars;
using namespace testing_windows;
using testing_frames::clientRect;
using testing_frames::rectInParent;

namespace {

constexpr int kWidth = 23;
constexpr int kHeight = 22;

class ToolBarLayoutTest : public ToolBarFixture {
protected:
    // Buttons 1 and 2, a separator of width 8, button 3, docked at the top.
    TestToolBar* rowBar() { return docked(buttonsAndSeparators(makeBar(), false)); }

    // Groups [1 2] [3] [4 5] between separators of width 8: 46, 23 and 46 wide.
    TestToolBar* groupBar() { return docked(buttonsAndSeparators(makeBar(), true)); }

    static TestToolBar* buttonsAndSeparators(TestToolBar* bar, bool thirdGroup) {
        bar->add(GwToolBarItem(1, 0)).add(GwToolBarItem(2, 1));
        bar->add(GwToolBarItem(100, 8, GwToolBarItem::eSeparator));
        bar->add(GwToolBarItem(3, 2));
        if (thirdGroup) {
            bar->add(GwToolBarItem(101, 8, GwToolBarItem::eSeparator));
            bar->add(GwToolBarItem(4, 3)).add(GwToolBarItem(5, 4));
        }
        return bar;
    }

    TestToolBar* docked(TestToolBar* bar) {
        frame->add(bar, GwWindow::eTop);
        checkButtonSize(bar, 0);
        return bar;
    }

    static void checkButtonSize(TestToolBar* bar, int index) {
        RECT const rect = itemRect(bar->hwnd(), index);
        ASSERT_EQ(rect.right - rect.left, kWidth);
        ASSERT_EQ(rect.bottom - rect.top, kHeight);
    }
};

} // namespace

TEST_F(ToolBarLayoutTest, AnEmptyBarInARowNeedsZeroByFive) {
    TestToolBar* bar = makeBar();
    EXPECT_EQ(bar->calculate(GwControlBar::eHorizontal, 400, nullptr), GwDimension(0, 5));
}

TEST_F(ToolBarLayoutTest, InARowTheWidthsAddUpAndTheHeightGetsFiveMore) {
    TestToolBar* bar = rowBar();
    // 23 + 23 + 8 + 23, 22 + 5
    EXPECT_EQ(bar->calculate(GwControlBar::eHorizontal, 400, nullptr), GwDimension(77, 27));
    // A hidden button takes no room.
    bar->setVisible(2, true);
    EXPECT_EQ(bar->calculate(GwControlBar::eHorizontal, 400, nullptr), GwDimension(54, 27));
}

TEST_F(ToolBarLayoutTest, InAColumnTheHeightsAddUpAndASeparatorOfEightAddsFive) {
    TestToolBar* bar = rowBar();
    // 22 + 22 + 5 + 22; the width of the first button
    EXPECT_EQ(bar->calculate(GwControlBar::eVertical, 300, nullptr), GwDimension(23, 71));
    bar->setVisible(1, true);
    EXPECT_EQ(bar->calculate(GwControlBar::eVertical, 300, nullptr), GwDimension(23, 49));
}

TEST_F(ToolBarLayoutTest, FloatingWideEnoughPutsAllGroupsOnOneRow) {
    TestToolBar* bar = groupBar();
    // 46 + 8 + 23 + 8 + 46; (22 + 5) x 1
    EXPECT_EQ(bar->calculate(GwControlBar::eFloating, 200, nullptr), GwDimension(131, 27));
}

TEST_F(ToolBarLayoutTest, FloatingWithALimitOfEightyMakesTwoRows) {
    TestToolBar* bar = groupBar();
    // Row 0: 46 + 8 + 23 = 77 <= 80; the third group would need 77 + 46 + 16 = 139.
    EXPECT_EQ(bar->calculate(GwControlBar::eFloating, 80, nullptr), GwDimension(77, 54));
}

TEST_F(ToolBarLayoutTest, FloatingWithALimitOfSixtyMakesThreeRowsAndReportsTheGroups) {
    TestToolBar* bar = groupBar();
    GwObjectTable<GwRectangle> groups(20);
    // 46 + 23 + 8 = 77 > 60 and 23 + 46 + 8 = 77 > 60: one group a row.
    EXPECT_EQ(bar->calculate(GwControlBar::eFloating, 60, &groups), GwDimension(46, 81));
    ASSERT_EQ(groups.count(), 3);
    EXPECT_EQ(*groups.at(0), GwRectangle(0, 0, 46, 22));
    EXPECT_EQ(*groups.at(1), GwRectangle(0, 27, 23, 22));
    EXPECT_EQ(*groups.at(2), GwRectangle(0, 54, 46, 22));

    // A table with records is laid out again, not rebuilt.
    GwRectangle* const first = groups.at(0);
    bar->add(GwToolBarItem(6, 5));
    EXPECT_EQ(bar->calculate(GwControlBar::eFloating, 200, &groups), GwDimension(131, 27));
    ASSERT_EQ(groups.count(), 3);
    EXPECT_EQ(groups.at(0), first);
    EXPECT_EQ(*groups.at(1), GwRectangle(54, 0, 23, 22));
    EXPECT_EQ(*groups.at(2), GwRectangle(85, 0, 46, 22));

    // Mode 4 frees the records and empties the table.
    bar->calculate(GwControlBar::eRelease, 0, &groups);
    EXPECT_EQ(groups.count(), 0);
}

TEST_F(ToolBarLayoutTest, BarsDockAtEachEdgeWithTheRoomTheyAskFor) {
    TestToolBar* top = rowBar(); // added at the top
    TestToolBar* left = makeBar(0x71);
    left->add(GwToolBarItem(1, 0)).add(GwToolBarItem(2, 1));
    TestToolBar* right = makeBar(0x72);
    right->add(GwToolBarItem(1, 0));
    TestToolBar* bottom = makeBar(0x73);
    bottom->add(GwToolBarItem(1, 0));
    // In table order: the status bar, the top bar, then these.
    frame->add(bottom, GwWindow::eBottom);
    frame->add(left, GwWindow::eLeft);
    frame->add(right, GwWindow::eRight);
    RECT const client = clientRect(frame->hwnd());
    RECT const status = rectInParent(statusWindow());

    RECT const topRect = rectInParent(top->hwnd());
    EXPECT_EQ(topRect.left, 0);
    EXPECT_EQ(topRect.top, 0);
    EXPECT_EQ(topRect.right, client.right);
    EXPECT_EQ(topRect.bottom, 27);

    // The status bar was added first: it is nearest the bottom edge.
    RECT const bottomRect = rectInParent(bottom->hwnd());
    EXPECT_EQ(bottomRect.bottom, status.top);
    EXPECT_EQ(bottomRect.bottom - bottomRect.top, 27);
    EXPECT_EQ(bottomRect.right, client.right);

    RECT const leftRect = rectInParent(left->hwnd());
    EXPECT_EQ(leftRect.left, 0);
    EXPECT_EQ(leftRect.top, 27);
    EXPECT_EQ(leftRect.right, kWidth);
    EXPECT_EQ(leftRect.bottom, bottomRect.top);

    RECT const rightRect = rectInParent(right->hwnd());
    EXPECT_EQ(rightRect.right, client.right);
    EXPECT_EQ(rightRect.left, client.right - kWidth);
    EXPECT_EQ(rightRect.top, 27);
    EXPECT_EQ(rightRect.bottom, bottomRect.top);
}

TEST_F(ToolBarLayoutTest, AFloatingBarFillsAToolFrameSizedByTheFloatingLayout) {
    auto* floating = new TestFrame(*frame, 2, 0, false);
    auto* bar = new TestToolBar(*floating, 0x74);
    SendMessageA(bar->hwnd(), TB_SETBITMAPSIZE, 0, MAKELONG(16, 15));
    SendMessageA(bar->hwnd(), TB_SETBUTTONSIZE, 0, MAKELONG(kWidth, kHeight));
    buttonsAndSeparators(bar, false);
    GwDimension const size = bar->calculate(GwControlBar::eFloating, 60, nullptr);
    EXPECT_EQ(size, GwDimension(46, 54));
    RECT outer{0, 0, static_cast<LONG>(size.width()), static_cast<LONG>(size.height())};
    AdjustWindowRectEx(&outer, static_cast<DWORD>(styleOf(floating->hwnd())), FALSE,
                       static_cast<DWORD>(extendedStyleOf(floating->hwnd())));
    SetWindowPos(floating->hwnd(), nullptr, 0, 0, outer.right - outer.left,
                 outer.bottom - outer.top, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    floating->setClient(bar);
    RECT const placed = rectInParent(bar->hwnd());
    RECT const client = clientRect(floating->hwnd());
    EXPECT_EQ(placed.right - placed.left, client.right);
    EXPECT_EQ(placed.bottom - placed.top, client.bottom);
    EXPECT_EQ(GetAncestor(bar->hwnd(), GA_ROOT), floating->hwnd());
    delete floating;
}

TEST_F(ToolBarLayoutTest, DraggingABarBesideItsButtonsDocksItAtTheNearestEdge) {
    TestToolBar* bar = rowBar();
    RECT const client = clientRect(frame->hwnd());
    // The pointer is let go near the frame's left edge, half-way down.
    POINT drop{5, client.bottom / 2};
    ClientToScreen(frame->hwnd(), &drop);
    ASSERT_TRUE(SetCursorPos(drop.x, drop.y));
    POINT now{};
    GetCursorPos(&now);
    if (now.x != drop.x || now.y != drop.y)
        GTEST_SKIP() << "the display driver does not move the pointer";
    RECT const last = itemRect(bar->hwnd(), 3);
    LPARAM const beside = MAKELPARAM(last.right + 30, (last.top + last.bottom) / 2);
    PostMessageA(bar->hwnd(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(10, 10));
    PostMessageA(bar->hwnd(), WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
    {
        testing_frames::StdoutCapture trace;
        SendMessageA(bar->hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, beside);
        std::string const text = trace.text();
        EXPECT_NE(text.find("-->dragEnd"), std::string::npos);
    }
    RECT const docked = rectInParent(bar->hwnd());
    EXPECT_EQ(docked.left, 0);
    EXPECT_EQ(docked.top, 0);
    EXPECT_EQ(docked.right, kWidth);
    EXPECT_EQ(docked.bottom, rectInParent(statusWindow()).top);

    // Let go outside the frame: the bar stays.
    ASSERT_TRUE(SetCursorPos(drop.x + 2000, drop.y));
    PostMessageA(bar->hwnd(), WM_LBUTTONUP, 0, 0);
    {
        testing_frames::StdoutCapture trace;
        RECT const lastNow = itemRect(bar->hwnd(), 3);
        SendMessageA(bar->hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, lastNow.bottom + 30));
        trace.text();
    }
    EXPECT_EQ(rectInParent(bar->hwnd()).right, kWidth);
}

TEST_F(ToolBarLayoutTest, PressingAButtonDoesNotDrag) {
    TestToolBar* bar = rowBar();
    RECT const first = itemRect(bar->hwnd(), 0);
    LPARAM const at = MAKELPARAM(first.left + 3, first.top + 3);
    testing_frames::StdoutCapture trace;
    SendMessageA(bar->hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageA(bar->hwnd(), WM_LBUTTONUP, 0, at);
    EXPECT_EQ(trace.text().find("dragBegin"), std::string::npos);
    EXPECT_EQ(rectInParent(bar->hwnd()).top, 0);
    pumpMessages();
}
