// Buttons: their windows, the check-state rule, radio groups, which clicks activate, the
// reflected drawing, copies and the class chosen for a dialog's buttons.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include <GwButton.h>
#include <GwEventData.h>
#include <GwMessages.h>
#include <GwStatic.h>
#include <GwWindowClass.h>

#include "BreakpointCounter.h"
#include "ControlsTesting.h"

using namespace testing_controls;

namespace {

template <class T> T* wrap(HWND hwnd) {
    GwEventData const data(hwnd);
    return T::newInstance(&data);
}

long count(Recorder const& recorder, std::string const& callback) {
    long n = 0;
    for (Call const& call : recorder.calls)
        n += call.callback == callback ? 1 : 0;
    return n;
}

// A user button that notes the library messages reaching its handler.
class WatchedUserButton : public GwUserButton {
public:
    using GwUserButton::GwUserButton;
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == GwMsgDrawItem) {
            ++drawItems;
            lastDrawItem = lParam;
        }
        return GwUserButton::msgHandler(msg, wParam, lParam);
    }
    int drawItems = 0;
    long long lastDrawItem = 0;
};

} // namespace

// ---- Creating

TEST_F(ControlTest, EachButtonKindCreatesItsWindowWithItsStyle) {
    GwPushButton push(parent(), 11, "Drücken");
    GwToggleButton toggle(parent(), 12, "Fett");
    Gw3StateButton three(parent(), 13, "Drei");
    GwRadioButton radio(parent(), 14, "Links");
    GwUserButton user(parent(), 15, "Eigen");
    struct Expected {
        GwButton const* button;
        LONG style;
        int id;
    } const rows[] = {{&push, 0x50030000, 11},
                      {&toggle, 0x50030003, 12},
                      {&three, 0x50030006, 13},
                      {&radio, 0x50030009, 14},
                      {&user, 0x5003000B, 15}};
    for (Expected const& row : rows) {
        HWND const hwnd = hwndOf(*row.button);
        ASSERT_NE(hwnd, nullptr);
        EXPECT_EQ(classNameOf(hwnd), "Button");
        EXPECT_EQ(styleOf(hwnd) & 0xFFFF00FF, row.style) << row.id;
        EXPECT_EQ(GetDlgCtrlID(hwnd), row.id);
        EXPECT_EQ(GetParent(hwnd), parentHwnd());
        EXPECT_EQ(GwWindow::window(hwnd, false), row.button);
        RECT rect{};
        GetWindowRect(hwnd, &rect);
        EXPECT_EQ(rect.right - rect.left, 0);
    }
    EXPECT_EQ(textOf(hwndOf(push)), "Drücken");
}

TEST_F(ControlTest, AButtonWhoseParentHasNoWindowHasNoWindowEither) {
    GwWindow const noWindow(parent()); // a copied window object has no window
    ASSERT_EQ(noWindow.window(), nullptr);
    // The platform refuses a child window without a parent window.
    GwToggleButton orphan(noWindow, 2, "Waise");
    EXPECT_EQ(orphan.window(), nullptr);
    orphan.setValue(GwWindow::eChecked).setTabstop(true);
    {
        // Asking the platform procedure of a window that was never made is a programming
        // error: it is reported with DebugBreak, and the answer is 0.
        BreakpointCounter breaks;
        EXPECT_EQ(orphan.value(), GwWindow::eUnchecked);
        EXPECT_EQ(breaks.count(), 1);
    }
    EXPECT_FALSE(orphan.tabstop());
    GwToggleButton copy(orphan);
    EXPECT_EQ(copy.window(), nullptr);
}

TEST_F(ControlTest, FactoriesBindOnlyToAWindowHandle) {
    EXPECT_EQ(GwPushButton::newInstance(nullptr), nullptr);
    GwEventData const empty;
    EXPECT_EQ(GwPushButton::newInstance(&empty), nullptr);
    EventData const plain;
    EXPECT_EQ(GwToggleButton::newInstance(&plain), nullptr);

    HWND const hwnd = rawChild("Button", BS_PUSHBUTTON, 5);
    GwEventData const data(hwnd);
    Object* const made = Class::createInstance(Class::lookup("GwPushButton"), &data);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), GwPushButton::isa());
    EXPECT_EQ(GwWindow::window(hwnd, false), made);
    DestroyWindow(hwnd); // deletes the object
    EXPECT_EQ(Class::createInstance(Class::lookup("GwPushButton"), &empty), nullptr);
}

// ---- The check state

TEST_F(ControlTest, SettingTheStateItHasGivesNoEventAndNeverReachesThePlatform) {
    HWND const hwnd = rawChild("Button", BS_AUTOCHECKBOX, 7);
    ProcedureCount::install(hwnd, BM_SETCHECK);
    GwToggleButton* const box = wrap<GwToggleButton>(hwnd);
    ASSERT_NE(box, nullptr);
    Recorder recorder;
    box->add(&recorder);

    box->setValue(GwWindow::eUnchecked);
    EXPECT_EQ(ProcedureCount::seen, 0);
    EXPECT_EQ(count(recorder, "value"), 0);

    box->setValue(GwWindow::eChecked);
    EXPECT_EQ(ProcedureCount::seen, 1);
    ASSERT_EQ(count(recorder, "value"), 1);
    EXPECT_EQ(recorder.calls.back().a, 1u);
    EXPECT_EQ(recorder.calls.back().window, box);
    EXPECT_EQ(box->value(), GwWindow::eChecked);

    box->setValue(GwWindow::eChecked);
    EXPECT_EQ(ProcedureCount::seen, 1);
    EXPECT_EQ(count(recorder, "value"), 1);
    // The handler answers the previous state.
    EXPECT_EQ(SendMessageA(hwnd, BM_SETCHECK, BST_UNCHECKED, 0), BST_CHECKED);
    DestroyWindow(hwnd);
}

TEST_F(ControlTest, TheValueEventBubblesToTheTopLevelWindowsHandlers) {
    GwToggleButton box(parent(), 3, "Fett");
    Recorder own;
    Recorder top;
    box.add(&own);
    parent().add(&top);
    box.setValue(GwWindow::eChecked);
    ASSERT_EQ(count(own, "value"), 1);
    ASSERT_EQ(count(top, "value"), 1);
    EXPECT_EQ(top.calls.back().window, &box);
    EXPECT_EQ(top.calls.back().a, 1u);
    parent().remove(&top);
}

TEST_F(ControlTest, ToggleAndRadioIgnoreIndeterminateWhileThreeStateTakesIt) {
    GwToggleButton toggle(parent(), 1, "a");
    GwRadioButton radio(parent(), 2, "b");
    Gw3StateButton three(parent(), 3, "c");
    Recorder recorder;
    toggle.add(&recorder);
    radio.add(&recorder);
    three.add(&recorder);

    toggle.setValue(GwWindow::eIndeterminate);
    radio.setValue(GwWindow::eIndeterminate);
    toggle.setValue(static_cast<GwWindow::eCheckState>(7));
    EXPECT_EQ(toggle.value(), GwWindow::eUnchecked);
    EXPECT_EQ(radio.value(), GwWindow::eUnchecked);
    EXPECT_EQ(count(recorder, "value"), 0);

    three.setValue(GwWindow::eIndeterminate);
    EXPECT_EQ(three.value(), GwWindow::eIndeterminate);
    ASSERT_EQ(count(recorder, "value"), 1);
    EXPECT_EQ(recorder.calls.back().a, 2u);
    EXPECT_EQ(recorder.calls.back().window, &three);
}

TEST_F(ControlTest, ValueIsAskedOfThePlatformProcedure) {
    HWND const hwnd = rawChild("Button", BS_AUTO3STATE, 9);
    GwButton* const button = wrap<Gw3StateButton>(hwnd);
    ASSERT_NE(button, nullptr);
    // Changed behind the library's back, through the platform procedure directly.
    CallWindowProcA(reinterpret_cast<WNDPROC>(GetClassLongPtrA(hwnd, GCLP_WNDPROC)), hwnd,
                    BM_SETCHECK, BST_INDETERMINATE, 0);
    EXPECT_EQ(button->value(), GwWindow::eIndeterminate);
    DestroyWindow(hwnd);
}

// ---- Radio groups

TEST_F(ControlTest, RadioButtonClearsItsGroupIncludingForeignRadioButtons) {
    HWND const before = rawChild("Button", BS_AUTORADIOBUTTON | WS_GROUP, 1);
    HWND const first = rawChild("Button", BS_AUTORADIOBUTTON | WS_GROUP, 2);
    HWND const foreign = rawChild("Button", BS_AUTORADIOBUTTON, 3);
    HWND const box = rawChild("Button", BS_AUTOCHECKBOX, 4);
    HWND const mine = rawChild("Button", BS_AUTORADIOBUTTON, 5);
    HWND const next = rawChild("Button", BS_AUTORADIOBUTTON | WS_GROUP, 6);
    for (HWND hwnd : {before, first, foreign, box, next})
        SendMessageA(hwnd, BM_SETCHECK, BST_CHECKED, 0);
    GwRadioButton* const firstObject = wrap<GwRadioButton>(first);
    GwRadioButton* const radio = wrap<GwRadioButton>(mine);
    Recorder recorder;
    firstObject->add(&recorder);

    radio->setValue(GwWindow::eChecked);
    EXPECT_EQ(SendMessageA(mine, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageA(first, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(SendMessageA(foreign, BM_GETCHECK, 0, 0), BST_UNCHECKED) << "no library object";
    EXPECT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0), BST_CHECKED) << "not a radio button";
    EXPECT_EQ(SendMessageA(before, BM_GETCHECK, 0, 0), BST_CHECKED) << "the group before";
    EXPECT_EQ(SendMessageA(next, BM_GETCHECK, 0, 0), BST_CHECKED) << "the next group";
    // The library button of the group reported its own change.
    ASSERT_EQ(count(recorder, "value"), 1);
    EXPECT_EQ(recorder.calls.back().a, 0u);
    EXPECT_EQ(recorder.calls.back().window, firstObject);
    for (HWND hwnd : {before, first, foreign, box, mine, next})
        DestroyWindow(hwnd);
}

TEST_F(ControlTest, WithoutAGroupStartTheRadioGroupBeginsAtTheFirstSibling) {
    HWND const a = rawChild("Button", BS_AUTORADIOBUTTON, 1);
    HWND const b = rawChild("Button", BS_AUTORADIOBUTTON, 2);
    HWND const c = rawChild("Button", BS_AUTORADIOBUTTON, 3);
    SendMessageA(a, BM_SETCHECK, BST_CHECKED, 0);
    GwRadioButton* const radio = wrap<GwRadioButton>(c);
    radio->setValue(GwWindow::eChecked);
    EXPECT_EQ(SendMessageA(a, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(SendMessageA(b, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(SendMessageA(c, BM_GETCHECK, 0, 0), BST_CHECKED);
    for (HWND hwnd : {a, b, c})
        DestroyWindow(hwnd);
}

TEST_F(ControlTest, RadioButtonsMadeInCodeStartGroupsOfTheirOwnUntilSetGroupFalse) {
    GwRadioButton left(parent(), 1, "Links");
    GwRadioButton right(parent(), 2, "Rechts");
    left.setValue(GwWindow::eChecked);
    right.setValue(GwWindow::eChecked);
    EXPECT_EQ(left.value(), GwWindow::eChecked) << "each starts a group";
    right.setGroup(false);
    left.setValue(GwWindow::eUnchecked);
    left.setValue(GwWindow::eChecked);
    EXPECT_EQ(right.value(), GwWindow::eUnchecked);
}

// ---- Clicks

TEST_F(ControlTest, AClickOnACheckBoxGivesOnlyTheValueEvent) {
    GwToggleButton box(parent(), 21, "Fett");
    SetWindowPos(hwndOf(box), nullptr, 10, 10, 100, 20, SWP_NOZORDER);
    Recorder recorder;
    box.add(&recorder);
    click(hwndOf(box));
    EXPECT_EQ(count(recorder, "value"), 1);
    EXPECT_EQ(count(recorder, "activate"), 0);
    EXPECT_EQ(box.value(), GwWindow::eChecked);
}

TEST_F(ControlTest, AClickOnARadioButtonGivesOnlyTheValueEvent) {
    GwRadioButton radio(parent(), 22, "Links");
    SetWindowPos(hwndOf(radio), nullptr, 10, 10, 100, 20, SWP_NOZORDER);
    Recorder recorder;
    radio.add(&recorder);
    click(hwndOf(radio));
    EXPECT_EQ(count(recorder, "value"), 1);
    EXPECT_EQ(count(recorder, "activate"), 0);
}

TEST_F(ControlTest, AClickOnPushUserAndOwnerDrawnButtonsActivates) {
    GwPushButton push(parent(), 31, "OK");
    GwUserButton ownerDrawn(parent(), 32, "Eigen");
    HWND const user = rawChild("Button", BS_PUSHBUTTON, 33);
    // The style is set after creation: a button created as BS_USERBUTTON comes out as a
    // push button under Wine.
    SetWindowLongA(user, GWL_STYLE, (styleOf(user) & ~0xF) | BS_USERBUTTON);
    GwButton* const userObject = wrap<GwUserButton>(user);
    HWND const defaultPush = rawChild("Button", BS_DEFPUSHBUTTON, 34);
    GwButton* const defaultObject = wrap<GwPushButton>(defaultPush);
    int y = 10;
    for (HWND hwnd : {hwndOf(push), hwndOf(ownerDrawn), user, defaultPush}) {
        SetWindowPos(hwnd, nullptr, 10, y, 80, 20, SWP_NOZORDER);
        y += 30;
    }
    Recorder recorder;
    for (GwWindow* w : {static_cast<GwWindow*>(&push), static_cast<GwWindow*>(&ownerDrawn),
                        static_cast<GwWindow*>(userObject), static_cast<GwWindow*>(defaultObject)})
        w->add(&recorder);
    for (HWND hwnd : {hwndOf(push), hwndOf(ownerDrawn), user, defaultPush})
        click(hwnd);
    ASSERT_EQ(count(recorder, "activate"), 4);
    EXPECT_EQ(count(recorder, "value"), 0);
    std::vector<GwWindow*> order;
    for (Call const& call : recorder.calls) {
        if (call.callback == "activate")
            order.push_back(call.window);
    }
    EXPECT_EQ(order, (std::vector<GwWindow*>{&push, &ownerDrawn, userObject, defaultObject}));
    DestroyWindow(user);
    DestroyWindow(defaultPush);
}

TEST_F(ControlTest, AReflectedCommandWithAnotherCodeGivesNoEvent) {
    GwPushButton push(parent(), 41, "OK");
    Recorder recorder;
    push.add(&recorder);
    HWND const hwnd = hwndOf(push);
    EXPECT_EQ(SendMessageA(hwnd, GwMsgCommand, MAKEWPARAM(41, BN_SETFOCUS),
                           reinterpret_cast<LPARAM>(hwnd)),
              0);
    // BN_PAINT asks for the expose callbacks, which only run with a graphics context.
    EXPECT_EQ(
        SendMessageA(hwnd, GwMsgCommand, MAKEWPARAM(41, BN_PAINT), reinterpret_cast<LPARAM>(hwnd)),
        0);
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(ControlTest, OwnerDrawingReachesTheUserButtonAsTheReflectedDrawItem) {
    WatchedUserButton button(parent(), 51, "Eigen");
    SetWindowPos(hwndOf(button), nullptr, 10, 10, 80, 24, SWP_NOZORDER);
    InvalidateRect(hwndOf(button), nullptr, TRUE);
    UpdateWindow(hwndOf(button)); // the platform asks its parent to draw the button
    EXPECT_GE(button.drawItems, 1);
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = 51;
    item.hwndItem = hwndOf(button);
    item.hDC = GetDC(hwndOf(button));
    int const before = button.drawItems;
    SendMessageA(parentHwnd(), WM_DRAWITEM, 51, reinterpret_cast<LPARAM>(&item));
    ReleaseDC(hwndOf(button), item.hDC);
    EXPECT_EQ(button.drawItems, before + 1);
    EXPECT_EQ(button.lastDrawItem, reinterpret_cast<long long>(&item));
}

// ---- Copies, assignment, navigation bits

TEST_F(ControlTest, CopyingAControlClonesItsWindowWithAtMost255Characters) {
    std::string const longText(300, 'x');
    GwToggleButton source(parent(), 61, longText.c_str());
    SetWindowPos(hwndOf(source), nullptr, 20, 30, 90, 25, SWP_NOZORDER);
    EXPECT_EQ(textOf(hwndOf(source)).size(), 300u);
    GwToggleButton copy(source);
    HWND const clone = hwndOf(copy);
    ASSERT_NE(clone, nullptr);
    EXPECT_NE(clone, hwndOf(source));
    EXPECT_EQ(textOf(clone), std::string(255, 'x'));
    EXPECT_EQ(GetDlgCtrlID(clone), 61);
    EXPECT_EQ(styleOf(clone), styleOf(hwndOf(source)));
    EXPECT_EQ(GetWindow(hwndOf(source), GW_HWNDNEXT), clone) << "right after the source";
    RECT rect{};
    GetWindowRect(clone, &rect);
    MapWindowPoints(nullptr, parentHwnd(), reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.left, 20);
    EXPECT_EQ(rect.top, 30);
    EXPECT_EQ(rect.right - rect.left, 90);
    EXPECT_EQ(rect.bottom - rect.top, 25);
    EXPECT_EQ(GwWindow::window(clone, false), &copy);
    EXPECT_EQ(copy.isA(), GwToggleButton::isa());
}

TEST_F(ControlTest, AssignmentMakesBothObjectsNameTheSameWindow) {
    GwPushButton b(parent(), 72, "B");
    GwWindow const noWindow(parent());
    GwPushButton target(noWindow, 71, "A"); // no window of its own
    ASSERT_EQ(target.window(), nullptr);
    target = b;
    EXPECT_EQ(target.window(), b.window());
    EXPECT_EQ(target.text(), String("B"));
    Object& asObject = target;
    GwToggleButton other(parent(), 73, "C");
    EXPECT_THROW(asObject = other, std::bad_cast);
    asObject = static_cast<Object const&>(b);
    EXPECT_EQ(target.window(), b.window());
}

TEST_F(ControlTest, TabstopAndGroupReadTheLiveStyle) {
    GwPushButton push(parent(), 81, "A");
    HWND const hwnd = hwndOf(push);
    EXPECT_TRUE(push.tabstop());
    EXPECT_TRUE(push.group());
    SetWindowLongA(hwnd, GWL_STYLE, styleOf(hwnd) & ~(WS_TABSTOP | WS_GROUP));
    EXPECT_FALSE(push.tabstop());
    EXPECT_FALSE(push.group());
    push.setTabstop(true).setGroup(true);
    EXPECT_EQ(styleOf(hwnd) & (WS_TABSTOP | WS_GROUP), WS_TABSTOP | WS_GROUP);
}

// ---- The classes of a dialog's buttons and statics

TEST_F(ControlTest, EveryButtonTypeAndStaticStyleGetsAnObjectOfItsMappedClass) {
    // Which class each style maps to is the window-class tests' business; here every mapped
    // class exists and makes an object of itself, bound to the window.
    for (LONG type = 0; type <= 15; ++type) {
        HWND const hwnd = rawChild("Button", BS_PUSHBUTTON, 90);
        SetWindowLongA(hwnd, GWL_STYLE, (styleOf(hwnd) & ~0xF) | type);
        std::string const mapped = GwWindowClass::mappedClassName(hwnd).c_str();
        GwWindow* const object = GwWindow::window(hwnd, true);
        ASSERT_NE(object, nullptr) << "type " << type;
        EXPECT_EQ(object->isA()->name(), mapped) << "type " << type;
        EXPECT_EQ(GwWindow::window(hwnd, false), object);
        EXPECT_TRUE(
            object->isA()->isSubclassOf(type == BS_GROUPBOX ? GwStatic::isa() : GwButton::isa()));
        DestroyWindow(hwnd);
    }
    for (LONG style : {0x00L, 0x01L, 0x02L, 0x03L, 0x04L, 0x0BL, 0x0CL, 0x0EL, 0x0FL, 0x12L,
                       static_cast<LONG>(SS_LEFT | SS_NOPREFIX)}) {
        HWND const hwnd = rawChild("Static", style, 91);
        std::string const mapped = GwWindowClass::mappedClassName(hwnd).c_str();
        GwWindow* const object = GwWindow::window(hwnd, true);
        ASSERT_NE(object, nullptr) << "style " << style;
        EXPECT_EQ(object->isA()->name(), mapped) << "style " << style;
        EXPECT_TRUE(object->isA()->isSubclassOf(GwStatic::isa()));
        DestroyWindow(hwnd);
    }
}
