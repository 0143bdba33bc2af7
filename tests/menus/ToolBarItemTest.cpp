// Tool-bar items: constructors, the automatic identifier, the tool control, copying.
#include <gtest/gtest.h>

#include <Event.h>

#include <GwEventData.h>
#include <GwMessages.h>

#include "ToolBarTesting.h"

using namespace testing_toolbars;

namespace {

class ToolBarItemTest : public ToolBarFixture {};

} // namespace

TEST_F(ToolBarItemTest, ConstructorsSetIdentifierBitmapStyleAndState) {
    GwToolBarItem button(10, 3);
    EXPECT_EQ(button.id(), 10u);
    EXPECT_EQ(button.bitmap(), 3);
    EXPECT_EQ(button.style(), GwToolBarItem::eButton);
    EXPECT_EQ(button.state(), 4);
    EXPECT_EQ(button.toolCtrl(), nullptr);

    GwToolBarItem check(11, 4, GwToolBarItem::eCheck);
    EXPECT_EQ(check.style(), GwToolBarItem::eCheck);
    EXPECT_EQ(check.state(), 4);

    // 4 is added unless 0x80 (disabled) is given, which is then cleared.
    EXPECT_EQ(GwToolBarItem(12, 0, GwToolBarItem::eCheck, 1).state(), 5);
    EXPECT_EQ(GwToolBarItem(12, 0, GwToolBarItem::eCheck, 0x81).state(), 1);
    EXPECT_EQ(GwToolBarItem(12, 0, GwToolBarItem::eButton, 0x80).state(), 0);
    EXPECT_EQ(GwToolBarItem(12, 0, GwToolBarItem::eButton, 8).state(), 12);
}

TEST_F(ToolBarItemTest, TheDefaultItemIsASeparatorWithTheNextAutomaticIdentifier) {
    unsigned int const next = GwItem::gItemId;
    GwToolBarItem first;
    GwToolBarItem second;
    EXPECT_EQ(first.id(), next);
    EXPECT_EQ(second.id(), next + 1);
    EXPECT_EQ(first.style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(first.bitmap(), 0);
    EXPECT_EQ(first.state(), 4);
}

TEST_F(ToolBarItemTest, TheCounterAtAllOnesGivesZeroAndStartsAgain) {
    unsigned int const saved = GwItem::gItemId;
    GwItem::gItemId = 0xFFFFFFFFu;
    GwToolBarItem item;
    EXPECT_EQ(item.id(), 0u);
    EXPECT_EQ(GwItem::gItemId, 1u);
    GwItem::gItemId = saved;
}

TEST_F(ToolBarItemTest, AControlMakesASeparatorAsWideAsTheControlAndTakesTheIdentifier) {
    auto* combo = new CountedCombo(*frame, 99);
    combo->setDimension(70, 120);
    GwToolBarItem item(40, *combo);
    EXPECT_EQ(item.toolCtrl(), combo);
    EXPECT_EQ(item.style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(item.state(), 4);
    EXPECT_EQ(item.bitmap(), 70);
    EXPECT_EQ(GetDlgCtrlID(combo->hwnd()), 40);
    EXPECT_TRUE(combo->hasListener(&item));

    // A new identifier reaches the control.
    item.setId(41);
    EXPECT_EQ(GetDlgCtrlID(combo->hwnd()), 41);

    // A style lets go of the control.
    item.setStyle(GwToolBarItem::eCheck);
    EXPECT_EQ(item.toolCtrl(), nullptr);
    EXPECT_EQ(item.style(), GwToolBarItem::eCheck);
    EXPECT_FALSE(combo->hasListener(&item));
}

TEST_F(ToolBarItemTest, SetStateHasNoEffectWithoutAToolControl) {
    GwToolBarItem item(10, 0);
    item.setState(1);
    EXPECT_EQ(item.state(), 4);

    auto* combo = new CountedCombo(*frame, 99);
    GwToolBarItem hosting(11, *combo);
    hosting.setState(0x80);
    EXPECT_EQ(hosting.state(), 0x80);
}

TEST_F(ToolBarItemTest, ACopyHasNoToolControlAndAssignmentAdoptsIt) {
    auto* combo = new CountedCombo(*frame, 99);
    combo->setDimension(50, 100);
    GwToolBarItem hosting(20, *combo);
    GwToolBarItem copy(hosting);
    EXPECT_EQ(copy.id(), 20u);
    EXPECT_EQ(copy.bitmap(), 50);
    EXPECT_EQ(copy.style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(copy.toolCtrl(), nullptr);

    GwToolBarItem assigned(7, 1, GwToolBarItem::eCheck);
    assigned = hosting;
    EXPECT_EQ(assigned.id(), 20u);
    EXPECT_EQ(assigned.toolCtrl(), combo);
    EXPECT_TRUE(combo->hasListener(&assigned));

    // From an item without control: bitmap, state and style, and the control is let go.
    assigned = GwToolBarItem(8, 2, GwToolBarItem::eCheckGroup, 1);
    EXPECT_EQ(assigned.id(), 8u);
    EXPECT_EQ(assigned.bitmap(), 2);
    EXPECT_EQ(assigned.style(), GwToolBarItem::eCheckGroup);
    EXPECT_EQ(assigned.state(), 5);
    EXPECT_EQ(assigned.toolCtrl(), nullptr);
    EXPECT_FALSE(combo->hasListener(&assigned));
}

TEST_F(ToolBarItemTest, TheControlsEndEventMakesTheItemForgetIt) {
    auto* combo = new CountedCombo(*frame, 99);
    GwToolBarItem item(20, *combo);
    combo->sendEvent(Event(GwEventHandlerGone), nullptr, true);
    EXPECT_EQ(item.toolCtrl(), nullptr);
}

TEST_F(ToolBarItemTest, TheDestructorStopsListening) {
    auto* combo = new CountedCombo(*frame, 99);
    {
        GwToolBarItem item(20, *combo);
        EXPECT_EQ(combo->listenerCount(), 1);
    }
    EXPECT_EQ(combo->listenerCount(), 0);
}

TEST_F(ToolBarItemTest, TheFactoryCopiesTheCarriedItemOrMakesADefaultOne) {
    GwToolBarItem carried(33, 5, GwToolBarItem::eCheck);
    GwEventData data(carried);
    Object* made = Class::createInstance(Class::lookup("GwToolBarItem"), &data);
    auto* item = dynamic_cast<GwToolBarItem*>(made);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->id(), 33u);
    EXPECT_EQ(item->bitmap(), 5);
    EXPECT_EQ(item->style(), GwToolBarItem::eCheck);
    delete made;

    GwToolBarItem* plain = GwToolBarItem::newInstance(nullptr);
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->style(), GwToolBarItem::eSeparator);
    delete plain;
}

TEST_F(ToolBarItemTest, AssignmentFromAnotherClassThrows) {
    GwToolBarItem item(1, 0);
    GwTextItem text(2);
    EXPECT_THROW(item = static_cast<Object const&>(text), std::bad_cast);
    GwToolBarItem other(3, 4);
    item = static_cast<Object const&>(other);
    EXPECT_EQ(item.id(), 3u);
    EXPECT_EQ(item.bitmap(), 4);
}
