// The public classes under hostile arguments: null pointers where a window or data is
// optional, negative and huge indices, identifiers with all bits set, empty and
// 100,000-character strings, handlers removed and windows destroyed inside their own
// callbacks, and objects used after their window was destroyed from outside. Each call ends
// with its documented result or a quiet one; a debugger break that a programming error must
// raise is counted, not fatal.
#include <gtest/gtest.h>

#include <windows.h>

#include <climits>
#include <string>

#include <String.h>

#include <GwApplication.h>
#include <GwBitmap.h>
#include <GwButton.h>
#include <GwColorSelect.h>
#include <GwComboBox.h>
#include <GwEditField.h>
#include <GwEventHandler.h>
#include <GwFileSelect.h>
#include <GwFrame.h>
#include <GwGC.h>
#include <GwGCWMF.h>
#include <GwGeometry.h>
#include <GwItem.h>
#include <GwListBox.h>
#include <GwMenu.h>
#include <GwMessageBox.h>
#include <GwObjectTable.h>
#include <GwResource.h>
#include <GwStatusBar.h>
#include <GwTab.h>
#include <GwToolBar.h>
#include <GwViewport.h>

#include <VmGuiTesting/Dialogs.h>
#include <VmGuiTesting/Loop.h>

#include "BreakpointCounter.h"

namespace {

unsigned long long const kAllBits = ~0ULL;
int const kPositions[] = {-1, -100000, INT_MIN, INT_MAX, 100000};

String longText() {
    static std::string const text(100000, 'x');
    return String(text.c_str());
}

HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

class RobustApplication : public GwApplication {
public:
    RobustApplication() = default;
};

// A frame for the controls under test; destroyed (and so deleted) after each test.
class HostileTest : public ::testing::Test {
protected:
    void SetUp() override { mFrame = new GwFrame(1, 0, false); }
    void TearDown() override {
        if (mFrame != nullptr && IsWindow(hwndOf(*mFrame)))
            DestroyWindow(hwndOf(*mFrame));
        vmgui_testing::pumpMessages();
    }
    GwFrame& frame() { return *mFrame; }

    RobustApplication mApplication;
    GwFrame* mFrame = nullptr;
};

// What a click on the button makes its parent hear.
void click(GwWindow& button) {
    HWND const hwnd = hwndOf(button);
    SendMessageA(GetParent(hwnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hwnd), BN_CLICKED),
                 reinterpret_cast<LPARAM>(hwnd));
}

// Counts its calls, and on the first one does what the test asks.
class OneShot : public GwEventHandler {
public:
    enum eAction { eNothing, eRemoveItself, eDestroyWindow };
    explicit OneShot(eAction action, bool counted = true)
        : GwEventHandler(counted), mAction(action) {}
    int cbActivate(GwWindow& window) override { return act(window); }
    int cbClose(GwWindow& window) override { return act(window); }
    int cbValue(GwWindow& window, unsigned int) override { return act(window); }
    static inline int sCalls = 0;

private:
    int act(GwWindow& window) {
        ++sCalls;
        if (mAction == eRemoveItself)
            window.remove(this); // a counted handler may be deleted here
        else if (mAction == eDestroyWindow)
            DestroyWindow(hwndOf(window));
        return GwResultHandled;
    }
    eAction mAction;
};

} // namespace

// ---- Indices, identifiers and strings

TEST_F(HostileTest, AListBoxAnswersPositionsOutOfRangeWithTheSharedEmptyItem) {
    auto* list = new GwListBox(frame(), 10, false, GwWindow::eUnsorted);
    list->add(GwTextItem(1, "eins")).add(GwTextItem(2, "zwei")).add(GwTextItem(3, "drei"));
    for (int position : kPositions) {
        EXPECT_EQ(list->itemAt(position).text(), String("")) << position;
        EXPECT_FALSE(list->selectedAt(position)) << position;
        list->removeAt(position);
        list->setSelectedAt(position, true);
        list->setTopIndex(position);
        EXPECT_EQ(list->size(), 3) << position;
    }
    EXPECT_EQ(list->item(kAllBits).text(), String(""));
    EXPECT_FALSE(list->selected(kAllBits));
    list->remove(kAllBits).setSelected(kAllBits, true);
    EXPECT_EQ(list->size(), 3);
    list->addAt(INT_MIN, GwTextItem(4, "vier")).addAt(INT_MAX, GwTextItem(5, "fünf"));
    EXPECT_EQ(list->size(), 5) << "both added somewhere";
    list->add(GwTextItem(6, longText())).add(GwTextItem(7, ""));
    EXPECT_EQ(list->item(6).text().size(), 100000u);
    EXPECT_EQ(list->item(7).text(), String(""));
    EXPECT_EQ(list->size(), 7);
}

TEST_F(HostileTest, AComboBoxAnswersPositionsOutOfRangeWithTheSharedEmptyItem) {
    auto* combo = new GwComboBox(frame(), 11);
    combo->add(GwTextItem(1, "eins")).add(GwTextItem(2, "zwei"));
    for (int position : kPositions) {
        EXPECT_EQ(combo->itemAt(position).text(), String("")) << position;
        combo->removeAt(position);
        combo->selectAt(position, true);
        EXPECT_EQ(combo->size(), 2) << position;
    }
    EXPECT_EQ(combo->item(kAllBits).text(), String(""));
    combo->remove(kAllBits);
    EXPECT_EQ(combo->size(), 2);
    combo->add(GwTextItem(3, longText())).add(GwTextItem(4, ""));
    EXPECT_EQ(combo->item(3).text().size(), 100000u);
    EXPECT_EQ(combo->size(), 4);
    combo->setText(longText());
    combo->setText("");
}

TEST_F(HostileTest, ATabControlAddsNoTabWithoutAPageAndIgnoresPositionsOutOfRange) {
    auto* tab = new GwTab(frame(), 12);
    auto* page = new GwViewport(frame(), 13);
    tab->add(GwTabItem(13, 0ULL));
    ASSERT_EQ(tab->size(), 1);
    tab->add(GwTabItem(kAllBits)).add(GwTabItem(14, kAllBits, kAllBits));
    EXPECT_EQ(tab->size(), 1) << "a tab whose page neither exists nor loads is not added";
    for (int position : kPositions) {
        EXPECT_EQ(tab->itemAt(position).text(), String("")) << position;
        EXPECT_FALSE(tab->selectedAt(position)) << position;
        tab->removeAt(position);
        tab->setSelectedAt(position);
        EXPECT_EQ(tab->size(), 1) << position;
    }
    tab->remove(kAllBits).setSelected(kAllBits);
    EXPECT_EQ(tab->size(), 1);
    EXPECT_EQ(tab->item(kAllBits).text(), String(""));
    GwTabItem named(13, 0ULL);
    named.setText(longText());
    tab->add(named);
    EXPECT_EQ(tab->size(), 1) << "replaced";
    DestroyWindow(hwndOf(*page)); // the page goes from outside
    tab->setSelectedAt(0);
    EXPECT_EQ(tab->selectedAt(), 0);
    tab->add(GwTabItem(13, 0ULL));
    EXPECT_EQ(tab->size(), 0) << "replacing removes the tab; without its page none is added";
    EXPECT_EQ(tab->selectedAt(), -1);
}

TEST_F(HostileTest, AMenuAnswersPositionsOutOfRangeQuietly) {
    GwMenu menu(77, true);
    menu.add(GwMenuItem(1, "Eins")).add(GwMenuItem(2, "Zwei"));
    for (int position : kPositions) {
        EXPECT_EQ(menu.itemAt(position).text(), String("")) << position;
        // GetMenuState gives all ones for a missing entry: not enabled, but checked.
        EXPECT_TRUE(menu.checkedAt(position)) << position;
        EXPECT_FALSE(menu.enabledAt(position)) << position;
        menu.setEnabledAt(position, false).setCheckedAt(position, true);
        menu.setDefaultItemAt(position).removeAt(position);
        menu.addAt(position, GwMenuItem(100, "Neu"));
        menu.remove(100ULL);
        EXPECT_EQ(menu.size(), 2) << position;
    }
    EXPECT_EQ(menu.item(kAllBits).text(), String(""));
    EXPECT_TRUE(menu.checked(kAllBits));
    EXPECT_FALSE(menu.enabled(kAllBits));
    menu.setEnabled(kAllBits, false).setChecked(kAllBits, true).setDefaultItem(kAllBits);
    menu.remove(kAllBits);
    menu.add(GwMenuItem(3, longText())).add(GwMenuItem(4, ""));
    EXPECT_EQ(menu.size(), 4);
    menu.setText(longText()).setText("");
}

TEST_F(HostileTest, WindowTextsOfAnyLengthAndMissingChildren) {
    frame().setText(longText());
    EXPECT_EQ(frame().text().size(), 260u) << "text() reads at most 260 characters";
    frame().setText("");
    EXPECT_EQ(frame().text(), String(""));
    auto* edit = new GwEditField(frame(), 20);
    edit->setText(longText());
    edit->setText("");
    EXPECT_EQ(edit->text(), String(""));
    EXPECT_EQ(frame().child(kAllBits), nullptr);
    EXPECT_EQ(frame().child(0), nullptr);
    EXPECT_EQ(frame().menu(kAllBits), nullptr);
    frame().setMenuBar(kAllBits).setMenuStyle(-1);
    EXPECT_EQ(frame().menuBar(), nullptr);
    frame().setClient(nullptr).setHelpFunctor(nullptr).setHelpFile(longText());
    frame().setId(kAllBits).setHelpId(kAllBits);
    EXPECT_EQ(frame().id(), kAllBits);
    frame()
        .add(static_cast<GwEventHandler*>(nullptr))
        .remove(static_cast<GwEventHandler*>(nullptr));
    frame().add(static_cast<GwControlBar*>(nullptr), GwWindow::eTop);
    frame().remove(static_cast<GwControlBar*>(nullptr));
    EXPECT_EQ(GwWindow::window(nullptr, true), nullptr);
    BreakpointCounter breaks;
    GwWindow& none = GwWindow::window(nullptr);
    EXPECT_EQ(breaks.count(), 1) << "window(NULL) is a programming error";
    EXPECT_EQ(none.window(), nullptr);
}

TEST_F(HostileTest, ResourceLoadersAnswerNullForMissingIdentifiersAndModules) {
    GwResource const executable;
    for (unsigned long long id : {0ULL, kAllBits, 0xFFFFULL}) {
        EXPECT_EQ(executable.loadString(id), String("")) << id;
        EXPECT_EQ(executable.loadDialog(id, nullptr), nullptr) << id;
        EXPECT_EQ(executable.loadDialog(id, &frame()), nullptr) << id;
        EXPECT_EQ(executable.loadMenu(id), nullptr) << id;
        EXPECT_EQ(executable.loadBitmap(id), nullptr) << id;
        EXPECT_EQ(executable.loadBitmapTransparent(id), nullptr) << id;
        EXPECT_EQ(executable.loadAttribute(id), nullptr) << id;
        EXPECT_EQ(executable.loadBinary(id), nullptr) << id;
    }
    GwResource const missing(longText());
    EXPECT_TRUE(missing.empty()) << "a module that cannot be loaded stands for the executable";
    EXPECT_EQ(missing.module(), static_cast<void*>(GetModuleHandleA(nullptr)));
    GwResource const unnamed(String(""));
    EXPECT_TRUE(unnamed.empty());
    EXPECT_EQ(GwResource::createChild(nullptr), nullptr);
}

// ---- Null parents

TEST_F(HostileTest, BarsAndViewportsWithoutParentBreakAndMakeNoWindow) {
    BreakpointCounter breaks;
    GwStatusBar bar(static_cast<GwWindow*>(nullptr), 5, true);
    EXPECT_EQ(bar.window(), nullptr);
    GwViewport viewport(static_cast<GwWindow*>(nullptr), 6);
    EXPECT_EQ(viewport.window(), nullptr);
    EXPECT_EQ(breaks.count(), 2) << "a null parent is a programming error";
    bar.setText("nichts");
    viewport.setColor(0xFFFFFFFF).invalidate().update();
    EXPECT_EQ(viewport.child(1), nullptr);
}

// ---- Drawing

TEST_F(HostileTest, DrawingCopesWithEmptyAndHugeInput) {
    GwGC gc(&frame(), nullptr);
    gc.drawText(longText(), GwPosition(0, 0)).drawText("", GwPosition(0, 0));
    gc.drawText(longText(), GwRectangle(0, 0, 100, 20)).drawText("", GwRectangle(0, 0, 0, 0));
    EXPECT_EQ(gc.calcText("").width(), 0);
    GwPosition const points[] = {GwPosition(0, 0), GwPosition(10, 10)};
    gc.drawPolyline(points, 0).drawPolyline(points, -1).drawPolyline(nullptr, 0);
    gc.drawPolygon(points, 0).drawPolygon(points, -5, true).drawPolygon(nullptr, 0, true);
    gc.drawCircle(GwPosition(INT_MAX, INT_MIN), -1).drawCircle(GwPosition(0, 0), INT_MAX, true);
    gc.drawRectangle(GwRectangle(INT_MIN, INT_MIN, INT_MAX, INT_MAX), true);
    gc.setFont("", -1).setFont(longText(), INT_MAX, 1e300);
    gc.setLineStyle(static_cast<GwGC::eLineStyle>(-1), UINT_MAX);
    gc.setPatternStyle(static_cast<GwGC::ePatternStyle>(99));
    gc.setColor(0xFFFFFFFF, -1).setColor(0, INT_MAX);
}

TEST_F(HostileTest, AMetafileContextWithoutRecordingOrFilePlaysNothing) {
    GwGC target(&frame(), nullptr);
    GwGCWMF empty;
    empty.play(target).convertWmfToEmf();
    EXPECT_EQ(empty.metafile(), nullptr);
    GwGCWMF missing(longText().c_str());
    missing.play(target);
    EXPECT_EQ(missing.metafile(), nullptr);
    GwGCWMF odd;
    odd.setDimension(-5, INT_MIN).setPosition(LONG_MIN, LONG_MAX).record();
    odd.drawLine(GwPosition(0, 0), GwPosition(5, 5)).drawText(longText(), GwPosition(0, 0));
    odd.play(target).play(target);
    EXPECT_NE(odd.metafile(), nullptr);
    GwGCWMF zero;
    zero.setDimension(0, 0).record();
    zero.play(target);
}

// ---- Callbacks that remove their handler or destroy their window

TEST_F(HostileTest, AHandlerRemovedInsideItsOwnCallbackIsCalledOnce) {
    for (bool counted : {true, false}) {
        auto* button = new GwPushButton(frame(), 30, "Los");
        auto* handler = new OneShot(OneShot::eRemoveItself, counted);
        button->add(handler);
        OneShot::sCalls = 0;
        click(*button);
        click(*button);
        EXPECT_EQ(OneShot::sCalls, 1) << (counted ? "counted" : "uncounted");
        EXPECT_EQ(button->handlers() == nullptr ? 0 : button->handlers()->count(), 0);
        if (!counted)
            delete handler; // an uncounted handler belongs to the application
        DestroyWindow(hwndOf(*button));
    }
}

TEST_F(HostileTest, AWindowDestroyedInsideItsOwnCallbackGoesQuietly) {
    auto* button = new GwPushButton(frame(), 31, "Weg");
    button->add(new OneShot(OneShot::eDestroyWindow));
    HWND const buttonWindow = hwndOf(*button);
    OneShot::sCalls = 0;
    click(*button);
    EXPECT_EQ(OneShot::sCalls, 1);
    EXPECT_FALSE(IsWindow(buttonWindow));

    auto* toggle = new GwToggleButton(frame(), 32, "Weg");
    toggle->add(new OneShot(OneShot::eDestroyWindow));
    HWND const toggleWindow = hwndOf(*toggle);
    toggle->setValue(GwWindow::eChecked); // the value event destroys the box
    EXPECT_FALSE(IsWindow(toggleWindow));

    auto* closing = new GwFrame(2, 0, false);
    closing->add(new OneShot(OneShot::eDestroyWindow));
    HWND const closingWindow = hwndOf(*closing);
    SendMessageA(closingWindow, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(closingWindow));
    vmgui_testing::pumpMessages();
}

// ---- Objects that outlive their window

TEST_F(HostileTest, AContextOutlivesItsWindowQuietly) {
    auto* other = new GwFrame(3, 0, false);
    auto* gc = new GwGC(other, nullptr);
    DestroyWindow(hwndOf(*other));
    gc->drawLine(GwPosition(0, 0), GwPosition(10, 10)).drawText("danach", GwPosition(1, 1));
    gc->calcText("danach");
    delete gc;
}

TEST_F(HostileTest, AFrameForgetsAClientDestroyedFromOutside) {
    auto* viewport = new GwViewport(frame(), 40);
    frame().setClient(viewport);
    DestroyWindow(hwndOf(*viewport));
    EXPECT_EQ(frame().client(), nullptr);
    frame().setVisible(true);
    SetWindowPos(hwndOf(frame()), nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    vmgui_testing::pumpMessages();
}

TEST_F(HostileTest, AFrameKeepsWorkingWhenItsStatusBarIsDestroyedFromOutside) {
    auto* other = new GwFrame(4, 0, true);
    ASSERT_NE(other->statusWindow(), nullptr);
    DestroyWindow(static_cast<HWND>(other->statusWindow()));
    other->setVisible(true);
    SetWindowPos(hwndOf(*other), nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    SendMessageA(hwndOf(*other), WM_MENUSELECT, MAKEWPARAM(0xF820, MF_STRING), 0);
    vmgui_testing::pumpMessages();
    DestroyWindow(hwndOf(*other));
}

namespace {

// A push button object without a window of its own, to be assigned another's window.
class LooseButton : public GwPushButton {
public:
    LooseButton() : GwPushButton(static_cast<void*>(nullptr)) {}
    using GwPushButton::operator=;
};

} // namespace

TEST_F(HostileTest, AnObjectNamingAWindowDestroyedFromOutsideAnswersQuietly) {
    auto* button = new GwPushButton(frame(), 50, "Weg");
    LooseButton loose;
    loose = *button; // both objects name the button's window now
    HWND const hwnd = hwndOf(*button);
    DestroyWindow(hwnd); // the bound object goes with it; the loose one stays
    ASSERT_FALSE(IsWindow(hwnd));
    loose.setText("danach").setEnabled(false).setVisible(true);
    EXPECT_FALSE(loose.visible());
    EXPECT_FALSE(loose.enabled());
    loose.setValue(GwWindow::eChecked);
    EXPECT_EQ(loose.value(), GwWindow::eUnchecked);
    loose.setPosition(GwPosition(5, 5)).setDimension(GwDimension(10, 10));
    loose.invalidate().update();
    EXPECT_EQ(loose.child(1), nullptr);
    EXPECT_EQ(loose.parent(), nullptr);
}

TEST_F(HostileTest, ButtonsIgnoreCheckStatesOutOfRange) {
    auto* toggle = new GwToggleButton(frame(), 51, "Fett");
    auto* radio = new GwRadioButton(frame(), 52, "Links");
    for (int state : {-1, 3, 99, INT_MIN}) {
        toggle->setValue(static_cast<GwWindow::eCheckState>(state));
        radio->setValue(static_cast<GwWindow::eCheckState>(state));
        EXPECT_EQ(toggle->value(), GwWindow::eUnchecked) << state;
        EXPECT_EQ(radio->value(), GwWindow::eUnchecked) << state;
    }
}

TEST_F(HostileTest, TablesRefuseNullAndAnswerNullOutOfRange) {
    GwObjectTable<GwItem> table;
    EXPECT_EQ(table.add(nullptr), -1);
    EXPECT_EQ(table.remove(nullptr), -1);
    EXPECT_EQ(table.indexOf(nullptr), -1);
    GwItem item(1);
    table.add(&item);
    for (int position : kPositions)
        EXPECT_EQ(table.at(position), nullptr) << position;
    EXPECT_EQ(table.count(), 1);
}

TEST_F(HostileTest, BitmapsWithoutHandleDrawNothing) {
    GwBitmap none;
    none.draw(frame(), SHRT_MIN, SHRT_MAX, true);
    none.draw(nullptr, 0, 0, false);
    GwBitmap missing(kAllBits);
    EXPECT_EQ(missing.handle(), nullptr);
    EXPECT_EQ(missing.id(), kAllBits);
    GwBitmap taken(1, nullptr);
    GwBitmap copy(taken);
    copy = none;
    EXPECT_EQ(copy.handle(), nullptr);
}

TEST_F(HostileTest, AStatusBarTakesTextsOfAnyLength) {
    auto* bar = new GwStatusBar(frame(), 60, false);
    bar->setText(longText()).setText("");
    EXPECT_EQ(bar->resource().loadString(kAllBits), String(""));
    frame().add(bar, static_cast<GwWindow::eAlignment>(0));
    frame().add(bar, static_cast<GwWindow::eAlignment>(-1));
    frame().setVisible(true);
    vmgui_testing::pumpMessages();
    frame().remove(bar).remove(bar).remove(bar);
}

TEST_F(HostileTest, AToolBarAnswersUnknownButtonsQuietly) {
    auto* bar = new GwToolBar(frame(), 70);
    bar->add(GwToolBarItem(1, 0)).add(GwToolBarItem(2, 1));
    for (int index : kPositions) {
        GwRectangle const none = bar->rectangleAt(index);
        EXPECT_EQ(none.width(), 0) << index;
        EXPECT_EQ(none.height(), 0) << index;
        EXPECT_FALSE(bar->enabledAt(index)) << index;
        bar->setEnabledAt(index, false).setValueAt(index, true).setVisibleAt(index, true);
        bar->removeAt(index);
        EXPECT_EQ(bar->sizeOf(), 2) << index;
    }
    EXPECT_EQ(bar->rectangle(kAllBits).width(), 0);
    bar->remove(kAllBits).setEnabled(kAllBits, false).setValue(kAllBits, true);
    EXPECT_EQ(bar->sizeOf(), 2);
    int index = 0;
    bar->load(kAllBits, GwResource(), 0, index);
    EXPECT_EQ(index, -1) << "no such tool-bar resource";
    bar->setResource(GwResource(longText()));
    frame().add(bar, GwWindow::eTop);
    frame().setVisible(true);
    vmgui_testing::pumpMessages();
}

TEST_F(HostileTest, AToolBarForgetsAnEmbeddedControlDestroyedFromOutside) {
    auto* bar = new GwToolBar(frame(), 71);
    auto* combo = new GwComboBox(frame(), 72);
    combo->setDimension(60, 100);
    bar->add(GwToolBarItem(72, *combo)).add(GwToolBarItem(3, 0));
    frame().add(bar, GwWindow::eTop);
    DestroyWindow(static_cast<HWND>(combo->window()));
    SetWindowPos(hwndOf(frame()), nullptr, 0, 0, 320, 200, SWP_NOMOVE | SWP_NOZORDER);
    vmgui_testing::pumpMessages();
    EXPECT_EQ(bar->itemAt(0).toolCtrl(), nullptr);
    bar->remove(72ULL);
    EXPECT_EQ(bar->sizeOf(), 1);
    DestroyWindow(static_cast<HWND>(bar->window())); // the frame loses the bar's record
    EXPECT_EQ(frame().bars()->count(), 0);
    SetWindowPos(hwndOf(frame()), nullptr, 0, 0, 300, 180, SWP_NOMOVE | SWP_NOZORDER);
}

TEST_F(HostileTest, AMessageBoxShowsAHundredThousandCharacterMessageAndAnEmptyTitle) {
    BreakpointCounter breaks;
    GwMessageBox box(nullptr);
    box.setMessage(longText()).setText(String(""));
    box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(~0u));
    vmgui_testing::DialogAnswerer answerer(IDOK, {}, nullptr,
                                           vmgui_testing::DialogAnswerer::Answer::Every, 8000);
    box.setVisible(true);
    EXPECT_FALSE(answerer.timedOut());
    EXPECT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.owner, nullptr);
    EXPECT_EQ(box.message().size(), 100000u);
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(HostileTest, AColourSelectionIgnoresNullCustomColoursAndKeepsItsOwn) {
    GwColorSelect select(frame(), 0xFFFFFFFFul);
    unsigned long colours[16];
    for (unsigned long& colour : colours)
        colour = 0x123456;
    select.setCustomColors(colours);
    select.setCustomColors(nullptr);
    select.customColors(nullptr);
    unsigned long back[16] = {};
    select.customColors(back);
    for (unsigned long colour : back)
        EXPECT_EQ(colour, 0x123456ul);
    // The top byte of a colour is not part of it.
    EXPECT_EQ(select.color(), 0xFFFFFFul);
}

TEST_F(HostileTest, AFileSelectionTakesHugeFiltersAndPathsAndIsCancelled) {
    BreakpointCounter breaks;
    GwFileSelect select(static_cast<GwWindow const*>(nullptr));
    select.setFilter(longText()).setFile(longText());
    // The path is cut to the buffer, which always stays terminated.
    std::string const kept = select.fileBuffer();
    EXPECT_LT(kept.size(), 100000u);
    EXPECT_FALSE(kept.empty());
    select.setParent(nullptr);
    vmgui_testing::DialogAnswerer answerer(IDCANCEL, {}, nullptr,
                                           vmgui_testing::DialogAnswerer::Answer::Every, 8000);
    select.setVisible(true);
    EXPECT_FALSE(answerer.timedOut());
    EXPECT_EQ(select.result(), 0);
    GwFileSelect::Iterator paths(select);
    EXPECT_EQ(paths.count(), 0) << "a cancelled dialog gives no paths";
    EXPECT_EQ(breaks.count(), 0);
}
