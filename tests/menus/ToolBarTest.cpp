// Tool bars: the control they create, buttons by item, identifier and index, button state.
#include <gtest/gtest.h>

#include <string>

#include <GwEventData.h>

#include "BreakpointCounter.h"
#include "ToolBarTesting.h"

using namespace testing_toolbars;
using namespace testing_windows;

namespace {

class ToolBarTest : public ToolBarFixture {};

// A bar with buttons 1, 2, 3 (images 0, 1, 2).
TestToolBar* threeButtons(TestToolBar* bar) {
    bar->add(GwToolBarItem(1, 0)).add(GwToolBarItem(2, 1)).add(GwToolBarItem(3, 2));
    return bar;
}

} // namespace

TEST_F(ToolBarTest, CreatesAFlatWrappingToolBarWithTooltips) {
    TestToolBar* bar = makeBar(0x71);
    HWND hwnd = bar->hwnd();
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "ToolbarWindow32");
    EXPECT_EQ(GetParent(hwnd), frame->hwnd());
    EXPECT_EQ(GetDlgCtrlID(hwnd), 0x71);
    // The control adds bits of its own (CCS_TOP, TBSTYLE_TRANSPARENT).
    EXPECT_EQ(static_cast<DWORD>(styleOf(hwnd)) & 0x50000B0Cu, 0x50000B0Cu);
    EXPECT_EQ(GwWindow::window(hwnd, false), bar);
    EXPECT_NE(SendMessageA(hwnd, TB_GETTOOLTIPS, 0, 0), 0);
    EXPECT_EQ(bar->isA(), GwToolBar::isa());
    EXPECT_TRUE(GwToolBar::isa()->isSubclassOf(GwControlBar::isa()));
    EXPECT_EQ(bar->sizeOf(), 0);
    EXPECT_EQ(bar->selected(), 0u);
}

TEST_F(ToolBarTest, ANullParentMakesNoWindowAndBreaks) {
    BreakpointCounter breaks;
    auto* bar = new GwToolBar(static_cast<GwWindow*>(nullptr), 1);
    EXPECT_EQ(bar->window(), nullptr);
    EXPECT_EQ(breaks.count(), 1);
    EXPECT_EQ(bar->sizeOf(), 0);
    delete bar;
}

TEST_F(ToolBarTest, TheFactoryWrapsAnExistingToolBarWindow) {
    HWND hwnd = CreateWindowExA(0, "ToolbarWindow32", "", WS_CHILD, 0, 0, 0, 0, frame->hwnd(),
                                nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(hwnd, nullptr);
    GwEventData data(hwnd);
    auto* bar = dynamic_cast<GwToolBar*>(Class::createInstance(Class::lookup("GwToolBar"), &data));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(GwWindow::window(hwnd, false), bar);
    bar->add(GwToolBarItem(5, 0));
    EXPECT_EQ(buttonCount(hwnd), 1);
    GwEventData empty;
    EXPECT_EQ(GwToolBar::newInstance(&empty), nullptr);
    // A copy is a window object without window.
    GwToolBar copy(*bar);
    EXPECT_EQ(copy.window(), nullptr);
    EXPECT_EQ(copy.sizeOf(), 0);
}

TEST_F(ToolBarTest, ButtonsAreMadeFromItems) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(7, 3, GwToolBarItem::eButton, 0x80));
    bar->add(GwToolBarItem(8, 12, GwToolBarItem::eSeparator));
    ASSERT_EQ(bar->sizeOf(), 2);
    TBBUTTON const button = buttonAt(bar->hwnd(), 0);
    EXPECT_EQ(button.idCommand, 7);
    EXPECT_EQ(button.iBitmap, 3);
    EXPECT_EQ(button.fsStyle, 0);
    EXPECT_EQ(button.fsState & ~TBSTATE_WRAP, 0); // disabled
    EXPECT_EQ(button.dwData, 0u);
    EXPECT_EQ(button.iString, 0);
    TBBUTTON const separator = buttonAt(bar->hwnd(), 1);
    EXPECT_EQ(separator.fsStyle, BTNS_SEP);
    EXPECT_EQ(separator.iBitmap, 12);
}

TEST_F(ToolBarTest, AddingAnIdentifierAlreadyOnTheBarReplacesThatButtonInPlace) {
    TestToolBar* bar = threeButtons(makeBar());
    bar->add(GwToolBarItem(2, 9, GwToolBarItem::eCheck));
    ASSERT_EQ(bar->sizeOf(), 3);
    EXPECT_EQ(buttonAt(bar->hwnd(), 0).idCommand, 1);
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).idCommand, 2);
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).iBitmap, 9);
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).fsStyle, BTNS_CHECK);
    EXPECT_EQ(buttonAt(bar->hwnd(), 2).idCommand, 3);
}

TEST_F(ToolBarTest, AddingAnItemOfAnotherClassThrows) {
    TestToolBar* bar = makeBar();
    EXPECT_THROW(bar->add(GwTextItem(1)), std::bad_cast);
    EXPECT_EQ(bar->sizeOf(), 0);
}

TEST_F(ToolBarTest, AddAtInsertsAndMovesAButtonOfTheSameIdentifier) {
    TestToolBar* bar = threeButtons(makeBar());
    bar->addAt(0, GwToolBarItem(4, 3));
    EXPECT_EQ(buttonAt(bar->hwnd(), 0).idCommand, 4);
    // The same identifier moves: removed at index 3, inserted at 1.
    bar->addAt(1, GwToolBarItem(3, 7));
    ASSERT_EQ(bar->sizeOf(), 4);
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).idCommand, 3);
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).iBitmap, 7);
    EXPECT_EQ(buttonAt(bar->hwnd(), 2).idCommand, 1);
    EXPECT_EQ(buttonAt(bar->hwnd(), 3).idCommand, 2);
    // A negative index keeps the old place, or appends a new identifier.
    bar->addAt(-1, GwToolBarItem(1, 8));
    EXPECT_EQ(buttonAt(bar->hwnd(), 2).idCommand, 1);
    EXPECT_EQ(buttonAt(bar->hwnd(), 2).iBitmap, 8);
    bar->addAt(-1, GwToolBarItem(5, 0));
    EXPECT_EQ(buttonAt(bar->hwnd(), 4).idCommand, 5);
    // An index past the end appends.
    bar->addAt(40, GwToolBarItem(6, 0));
    EXPECT_EQ(buttonAt(bar->hwnd(), 5).idCommand, 6);
}

TEST_F(ToolBarTest, RemovesByItemIdentifierAndIndexAndAll) {
    TestToolBar* bar = threeButtons(makeBar());
    bar->add(GwToolBarItem(4, 3)).add(GwToolBarItem(5, 4));
    bar->remove(GwToolBarItem(2, 0));
    EXPECT_EQ(bar->sizeOf(), 4);
    EXPECT_LT(SendMessageA(bar->hwnd(), TB_COMMANDTOINDEX, 2, 0), 0);
    bar->remove(4ull);
    EXPECT_EQ(bar->sizeOf(), 3);
    bar->removeAt(0);
    ASSERT_EQ(bar->sizeOf(), 2);
    EXPECT_EQ(buttonAt(bar->hwnd(), 0).idCommand, 3);
    // Unknown identifiers and indices: nothing.
    bar->remove(77ull).removeAt(9).removeAt(-1);
    EXPECT_EQ(bar->sizeOf(), 2);
    bar->remove();
    EXPECT_EQ(bar->sizeOf(), 0);
}

TEST_F(ToolBarTest, ItemsAreReadBackFromTheControl) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(1, 5)).add(GwToolBarItem(2, 6, GwToolBarItem::eCheck, 1));
    bar->add(GwToolBarItem(3, 7, GwToolBarItem::eButton, 0x80));
    GwToolBarItem const& first = bar->item(1);
    EXPECT_EQ(first.id(), 1u);
    EXPECT_EQ(first.bitmap(), 5);
    EXPECT_EQ(first.style(), GwToolBarItem::eButton);
    EXPECT_EQ(first.state(), 4);
    GwToolBarItem const& check = bar->itemAt(1);
    EXPECT_EQ(check.id(), 2u);
    EXPECT_EQ(check.style(), GwToolBarItem::eCheck);
    EXPECT_EQ(check.state(), 5);
    EXPECT_EQ(bar->item(3).state(), 0x80);
    // The same shared item each time for one operation.
    EXPECT_EQ(&bar->item(1), &bar->item(3));
    EXPECT_NE(static_cast<void const*>(&bar->item(1)), static_cast<void const*>(&bar->itemAt(0)));
}

TEST_F(ToolBarTest, AnUnknownIdentifierYieldsADefaultItemWithAFreshIdentifier) {
    TestToolBar* bar = threeButtons(makeBar());
    unsigned int const next = GwItem::gItemId;
    GwToolBarItem const& none = bar->item(99);
    EXPECT_EQ(none.id(), next);
    EXPECT_EQ(none.style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(bar->itemAt(17).style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(bar->itemAt(-1).toolCtrl(), nullptr);
}

TEST_F(ToolBarTest, RectanglesCountUpwardFromTheParentsBottom) {
    TestToolBar* bar = threeButtons(makeBar());
    frame->add(bar, GwWindow::eTop);
    RECT const rect = itemRect(bar->hwnd(), 1);
    GwRectangle const got = bar->rectangle(2);
    EXPECT_EQ(got.x(), rect.left);
    EXPECT_EQ(got.y(), clientHeight(frame->hwnd()) - rect.bottom);
    EXPECT_EQ(got.width(), rect.right - rect.left);
    EXPECT_EQ(got.height(), rect.bottom - rect.top);
    EXPECT_EQ(bar->rectangleAt(1), got);
    EXPECT_EQ(bar->rectangle(99), GwRectangle(0, 0, 0, 0));
    EXPECT_EQ(bar->rectangleAt(5), GwRectangle(0, 0, 0, 0));
    frame->remove(bar);
}

TEST_F(ToolBarTest, EnablingByIdentifierAndIndex) {
    TestToolBar* bar = threeButtons(makeBar());
    bar->setEnabled(2, false);
    EXPECT_FALSE(bar->enabled(2));
    EXPECT_FALSE(bar->enabledAt(1));
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).fsState & TBSTATE_ENABLED, 0);
    bar->setEnabledAt(1, true);
    EXPECT_TRUE(bar->enabled(2));
    bar->setEnabledAt(0, false);
    EXPECT_FALSE(bar->enabled(1));
    EXPECT_FALSE(bar->enabled(99));
    EXPECT_FALSE(bar->enabledAt(9));
}

TEST_F(ToolBarTest, AButtonWithIdentifierZeroIsLeftAloneByIndex) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(0, 0)).add(GwToolBarItem(1, 1));
    bar->setEnabledAt(0, false).setValueAt(0, true).setVisibleAt(0, true);
    EXPECT_TRUE(bar->enabledAt(0));
    EXPECT_FALSE(bar->valueAt(0));
    EXPECT_TRUE(bar->visibleAt(0));
}

TEST_F(ToolBarTest, CheckingByIdentifierAndIndex) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(1, 0, GwToolBarItem::eCheck)).add(GwToolBarItem(2, 1));
    bar->setValue(1, true);
    EXPECT_TRUE(bar->value(1));
    EXPECT_TRUE(bar->valueAt(0));
    bar->setValueAt(0, false);
    EXPECT_FALSE(bar->value(1));
    EXPECT_FALSE(bar->value(99));
}

TEST_F(ToolBarTest, ACheckedItemAddsACheckedButton) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(1, 0, GwToolBarItem::eCheck, 1));
    bar->add(GwToolBarItem(2, 0, GwToolBarItem::eButton, 1));
    EXPECT_TRUE(bar->value(1));
    // fsState never carries the checked bit of a plain button's item.
    EXPECT_FALSE(bar->value(2));
}

TEST_F(ToolBarTest, SetVisibleTrueHidesTheButtonAndVisibleReportsTheCheckedState) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(1, 0, GwToolBarItem::eCheck)).add(GwToolBarItem(2, 1));
    // An unchecked visible button is not "visible".
    EXPECT_FALSE(bar->visible(1));
    EXPECT_TRUE(bar->visibleAt(0));
    bar->setVisible(1, true);
    EXPECT_NE(buttonAt(bar->hwnd(), 0).fsState & TBSTATE_HIDDEN, 0);
    EXPECT_FALSE(bar->visibleAt(0));
    bar->setVisible(1, false);
    EXPECT_TRUE(bar->visibleAt(0));
    bar->setValue(1, true);
    EXPECT_TRUE(bar->visible(1));
    bar->setVisibleAt(1, true);
    EXPECT_FALSE(bar->visibleAt(1));
    EXPECT_FALSE(bar->visibleAt(7));
}

TEST_F(ToolBarTest, SelectedIsTheStoredIdentifier) {
    TestToolBar* bar = makeBar();
    bar->setSelected(42);
    EXPECT_EQ(bar->selected(), 42u);
}

TEST_F(ToolBarTest, HandlersAreNotAttachedToTheBar) {
    TestToolBar* bar = makeBar();
    Recorder recorder;
    bar->add(&recorder);
    EXPECT_EQ(bar->handlers(), nullptr);
    bar->remove(&recorder);
}

TEST_F(ToolBarTest, DebugLayoutWritesEveryButtonAndItsRectangle) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 50);
    combo->setDimension(60, 100);
    bar->add(GwToolBarItem(1, 2)).add(GwToolBarItem(9, *combo));
    frame->add(bar, GwWindow::eTop); // one row: no button wraps
    testing_frames::StdoutCapture capture;
    bar->debugLayout();
    std::vector<std::string> const lines = capture.lines();
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[0], "GwToolBar::debugLayout [Start]");
    EXPECT_EQ(lines[1], "[00] Id[1] fsStyle[00] fsState[04] iBitmap[2] dwData[0000000000000000][]");
    RECT const first = itemRect(bar->hwnd(), 0);
    char expected[128];
    std::snprintf(expected, sizeof expected, "[00] Rect [%d,%d] [%d,%d]",
                  static_cast<int>(first.left), static_cast<int>(first.top),
                  static_cast<int>(first.right), static_cast<int>(first.bottom));
    EXPECT_EQ(lines[2], expected);
    std::snprintf(expected, sizeof expected,
                  "[01] Id[9] fsStyle[01] fsState[04] iBitmap[60] dwData[%p][GwComboBox]",
                  static_cast<void*>(static_cast<GwControl*>(combo)));
    EXPECT_EQ(lines[3], expected);
    EXPECT_EQ(lines[5], "GwToolBar::debugLayout [End]");
}

TEST_F(ToolBarTest, HitTestAnswersTheButtonOrTheControlsIdentifier) {
    TestToolBar* bar = makeBar();
    frame->add(bar, GwWindow::eTop);
    auto* combo = new CountedCombo(*frame, 50);
    combo->setDimension(60, 100);
    bar->add(GwToolBarItem(1, 0)).add(GwToolBarItem(9, *combo));
    RECT const button = itemRect(bar->hwnd(), 0);
    RECT const place = itemRect(bar->hwnd(), 1);
    int const height = clientHeight(bar->hwnd());
    GwPosition onButton(button.left + 2, height - (button.top + 2));
    EXPECT_EQ(bar->toolHitTest(onButton), 1);
    GwPosition onControl(place.left + 2, height - (place.top + 2));
    EXPECT_EQ(bar->toolHitTest(onControl), 9);
    GwPosition outside(place.right + 40, height - (place.top + 2));
    EXPECT_EQ(bar->toolHitTest(outside), -1);
    frame->remove(bar);
}
