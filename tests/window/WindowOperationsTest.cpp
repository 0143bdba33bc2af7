#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include <GwThisDll.h>
#include <GwUserData.h>

#include "TestWindows.h"

using namespace testing_windows;

namespace {

std::string text(String const& string) {
    return string.c_str();
}

// A window's rectangle in the client coordinates of its parent (the screen without one).
RECT rectInParent(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    if (GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD)
        MapWindowPoints(nullptr, GetParent(hwnd), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

// A top-level window with a child and a grandchild, all bound to library objects.
class WindowOperations : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(GwWindow::message(), 0u);
        mTopHwnd = rawWindow(nullptr, 0, 100, 80, 400, 300);
        mChildHwnd = rawWindow(mTopHwnd, 10, 30, 40, 200, 120);
        ASSERT_NE(mChildHwnd, nullptr);
        mTop = &GwWindow::window(mTopHwnd);
        mChild = &GwWindow::window(mChildHwnd);
    }
    void TearDown() override {
        if (IsWindow(mTopHwnd))
            DestroyWindow(mTopHwnd); // deletes the objects
    }

    ScopedApplication mApplication;
    HWND mTopHwnd = nullptr;
    HWND mChildHwnd = nullptr;
    GwWindow* mTop = nullptr;
    GwWindow* mChild = nullptr;
};

} // namespace

TEST_F(WindowOperations, TranslateYOfAChildMeasuresFromTheParentsClientBottom) {
    int const parentHeight = clientHeight(mTopHwnd);
    ASSERT_GT(parentHeight, 0);
    EXPECT_EQ(mChild->translateY(30, true), parentHeight - 30);
    EXPECT_EQ(mChild->translateY(parentHeight - 30, true), 30) << "both directions";
    EXPECT_EQ(mChild->translateY(30, false), 120 - 30) << "the child's own client area";
    EXPECT_EQ(mChild->translateY(-5, false), 125);
}

TEST_F(WindowOperations, TranslateYOfATopLevelWindowMeasuresFromTheScreenBottom) {
    int const screen = GetSystemMetrics(SM_CYSCREEN);
    EXPECT_EQ(mTop->translateY(30, true), screen - 30);
    EXPECT_EQ(mTop->translateY(30, false), clientHeight(mTopHwnd) - 30);

    // An owned window is a top-level window too: its owner is no coordinate parent.
    HWND owned = CreateWindowExA(0, rawClassName(), "", WS_POPUP, 0, 0, 50, 40, mTopHwnd, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    GwWindow& object = GwWindow::window(owned);
    EXPECT_EQ(object.translateY(30, true), screen - 30);
    EXPECT_EQ(object.translateY(30, false), 40 - 30);
}

TEST_F(WindowOperations, SetPositionMovesTheBottomLeftCorner) {
    int const parentHeight = clientHeight(mTopHwnd);
    mChild->setPosition(GwPosition(15, 25));
    RECT rect = rectInParent(mChildHwnd);
    EXPECT_EQ(rect.left, 15);
    EXPECT_EQ(rect.bottom, parentHeight - 25);
    EXPECT_EQ(rect.right - rect.left, 200) << "the size is kept";
    EXPECT_EQ(rect.bottom - rect.top, 120);
    EXPECT_EQ(mChild->position(), GwPosition(15, 25));

    mChild->setPosition(7L, 0L);
    rect = rectInParent(mChildHwnd);
    EXPECT_EQ(rect.left, 7);
    EXPECT_EQ(rect.bottom, parentHeight) << "y 0 is the bottom of the parent's client area";
    long x = -1;
    long y = -1;
    mChild->position(x, y);
    EXPECT_EQ(x, 7);
    EXPECT_EQ(y, 0);
}

TEST_F(WindowOperations, PositionReadsTheBottomLeftCornerInTheParent) {
    int const parentHeight = clientHeight(mTopHwnd);
    SetWindowPos(mChildHwnd, nullptr, 40, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(mChild->position(), GwPosition(40, parentHeight - (50 + 120)));
}

TEST_F(WindowOperations, SetPositionOfATopLevelWindowUsesScreenCoordinates) {
    int const screen = GetSystemMetrics(SM_CYSCREEN);
    mTop->setPosition(GwPosition(120, 200));
    RECT rect{};
    GetWindowRect(mTopHwnd, &rect);
    EXPECT_EQ(rect.left, 120);
    EXPECT_EQ(rect.bottom, screen - 200);
    EXPECT_EQ(rect.bottom - rect.top, 300);
    EXPECT_EQ(mTop->position(), GwPosition(120, 200));
}

TEST_F(WindowOperations, SetDimensionKeepsTheBottomAndLeftEdges) {
    RECT before = rectInParent(mChildHwnd);
    mChild->setDimension(GwDimension(150, 60));
    RECT after = rectInParent(mChildHwnd);
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.bottom, before.bottom);
    EXPECT_EQ(after.right - after.left, 150);
    EXPECT_EQ(after.bottom - after.top, 60);
    EXPECT_EQ(mChild->dimension(), GwDimension(150, 60));

    GwPosition position = mChild->position();
    mChild->setDimension(90L, 200L);
    EXPECT_EQ(mChild->position(), position) << "the bottom-left corner stays";
    long width = 0;
    long height = 0;
    mChild->dimension(width, height);
    EXPECT_EQ(width, 90);
    EXPECT_EQ(height, 200);
}

TEST_F(WindowOperations, SetDimensionOfATopLevelWindowKeepsItsScreenBottom) {
    RECT before{};
    GetWindowRect(mTopHwnd, &before);
    mTop->setDimension(GwDimension(320, 180));
    RECT after{};
    GetWindowRect(mTopHwnd, &after);
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.bottom, before.bottom);
    EXPECT_EQ(after.right - after.left, 320);
    EXPECT_EQ(after.bottom - after.top, 180);
    EXPECT_EQ(mTop->dimension(), GwDimension(320, 180));
}

TEST_F(WindowOperations, TextIsWrittenToTheWindowAndReadBack) {
    mChild->setText(String("Hello"));
    char buffer[64] = {};
    GetWindowTextA(mChildHwnd, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "Hello");
    EXPECT_EQ(text(mChild->text()), "Hello");

    SetWindowTextA(mChildHwnd, "Changed outside");
    EXPECT_EQ(text(mChild->text()), "Changed outside") << "text() reads the window";
    EXPECT_STREQ(static_cast<char const*>(*mChild), "Changed outside");
    EXPECT_EQ(text(static_cast<String const&>(*mChild)), "Changed outside");
}

TEST_F(WindowOperations, TextLongerThan260CharactersIsCutTo260) {
    std::string longText;
    for (int i = 0; i < 300; ++i)
        longText += static_cast<char>('a' + i % 26);
    mChild->setText(String(longText.c_str()));
    EXPECT_EQ(GetWindowTextLengthA(mChildHwnd), 300) << "the window holds all of it";
    EXPECT_EQ(text(mChild->text()), longText.substr(0, 260));
}

TEST_F(WindowOperations, SetVisibleShowsAndHides) {
    EXPECT_FALSE(mTop->visible());
    mTop->setVisible(true);
    EXPECT_TRUE(IsWindowVisible(mTopHwnd));
    EXPECT_TRUE(mTop->visible());
    EXPECT_TRUE(mChild->visible());
    mChild->hide();
    EXPECT_FALSE(IsWindowVisible(mChildHwnd));
    EXPECT_FALSE(mChild->visible());
    mChild->show();
    EXPECT_TRUE(IsWindowVisible(mChildHwnd));
    mTop->setVisible(false);
    EXPECT_FALSE(IsWindowVisible(mTopHwnd));
    EXPECT_FALSE(mChild->visible()) << "a child of a hidden window is not visible";
}

TEST_F(WindowOperations, SetEnabledEnablesAndDisables) {
    EXPECT_TRUE(mChild->enabled());
    mChild->setEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(mChildHwnd));
    EXPECT_FALSE(mChild->enabled());
    mChild->setEnabled(true);
    EXPECT_TRUE(IsWindowEnabled(mChildHwnd));
    EXPECT_TRUE(mChild->enabled());
}

TEST_F(WindowOperations, IdAndHelpIdAreStoredInTheWindow) {
    EXPECT_EQ(mChild->id(), 10u);
    mChild->setId(0x1234);
    EXPECT_EQ(GetWindowLongPtrA(mChildHwnd, GWLP_ID), 0x1234);
    EXPECT_EQ(mChild->id(), 0x1234u);
    EXPECT_EQ(GetDlgItem(mTopHwnd, 0x1234), mChildHwnd);

    mChild->setHelpId(777);
    EXPECT_EQ(GetWindowContextHelpId(mChildHwnd), 777u);
    EXPECT_EQ(mChild->helpId(), 777u);
    SetWindowContextHelpId(mChildHwnd, 778);
    EXPECT_EQ(mChild->helpId(), 778u);
}

TEST_F(WindowOperations, SetParentToItselfDoesNothing) {
    mChild->setParent(mChild);
    EXPECT_EQ(GetParent(mChildHwnd), mTopHwnd);
}

TEST_F(WindowOperations, SetParentMovesTheWindowUnderAnother) {
    HWND otherHwnd = rawWindow();
    GwWindow& other = GwWindow::window(otherHwnd);
    mChild->setParent(&other);
    EXPECT_EQ(GetParent(mChildHwnd), otherHwnd);
    EXPECT_EQ(mChild->parent(), &other);
    mChild->setParent(mTop);
    EXPECT_EQ(GetParent(mChildHwnd), mTopHwnd);
    DestroyWindow(otherHwnd);
}

TEST_F(WindowOperations, ParentOfAChildIsItsParentWindow) {
    EXPECT_EQ(mChild->parent(), mTop);
    EXPECT_EQ(mTop->parent(), nullptr) << "neither parent nor owner";
}

TEST_F(WindowOperations, ParentOfAnOwnedTopLevelWindowIsItsOwner) {
    HWND owned = CreateWindowExA(0, rawClassName(), "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 80,
                                 mTopHwnd, nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_EQ(GetWindow(owned, GW_OWNER), mTopHwnd);
    GwWindow& object = GwWindow::window(owned);
    EXPECT_EQ(object.parent(), mTop);
}

TEST_F(WindowOperations, ParentWithoutObjectGetsOne) {
    HWND plainParent = rawWindow();
    HWND plainChild = rawWindow(plainParent, 3);
    GwWindow& child = GwWindow::window(plainChild);
    ASSERT_EQ(GwWindow::window(plainParent, false), nullptr);
    GwWindow* parent = child.parent();
    ASSERT_NE(parent, nullptr);
    EXPECT_EQ(parent->window(), plainParent);
    EXPECT_EQ(GwWindow::window(plainParent, false), parent) << "bound to its window";
    DestroyWindow(plainParent);
}

TEST_F(WindowOperations, RootFindsTheTopLevelWindowThroughNestedChildren) {
    HWND grandchild = rawWindow(mChildHwnd, 11, 5, 5, 50, 20);
    GwWindow& object = GwWindow::window(grandchild);
    EXPECT_EQ(object.root(true), mTop);
    EXPECT_EQ(object.root(false), mTop);
    EXPECT_EQ(mChild->root(false), mTop);
    EXPECT_EQ(mTop->root(true), mTop) << "a top-level window is its own root";
    EXPECT_EQ(mTop->root(false), mTop);
}

TEST_F(WindowOperations, RootWithoutTopMostStopsAtTheFirstWindowThatIsNoChild) {
    // A pop-up owned by the top-level window, with a child and a grandchild: GetParent of
    // the pop-up is its owner, but the pop-up itself has no WS_CHILD.
    HWND popup = CreateWindowExA(0, rawClassName(), "", WS_POPUP, 0, 0, 200, 150, mTopHwnd, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    HWND inner = rawWindow(popup, 1, 0, 0, 100, 80);
    HWND innermost = rawWindow(inner, 2, 0, 0, 50, 40);
    ASSERT_EQ(GetParent(popup), mTopHwnd);
    GwWindow& popupObject = GwWindow::window(popup);
    GwWindow& object = GwWindow::window(innermost);
    EXPECT_EQ(object.root(false), &popupObject);
    EXPECT_EQ(object.root(true), mTop);
}

TEST_F(WindowOperations, ChildIsFoundByIdAndBound) {
    EXPECT_EQ(mTop->child(10), mChild);

    HWND plain = rawWindow(mTopHwnd, 12, 0, 0, 20, 20);
    ASSERT_EQ(GwWindow::window(plain, false), nullptr);
    GwWindow* found = mTop->child(12);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->window(), plain);
    EXPECT_EQ(GetWindowLongPtrA(plain, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(found));
    EXPECT_EQ(mTop->child(12), found) << "the second lookup finds the same object";

    EXPECT_EQ(mTop->child(99), nullptr);
    EXPECT_EQ(mChild->child(10), nullptr) << "only the window's own children";
}

TEST_F(WindowOperations, TimerReachesCbTimerThroughTheLoopUntilStopped) {
    HWND hwnd = rawWindow();
    auto* window = new DispatchingWindow(hwnd);
    Recorder recorder;
    window->add(&recorder);
    window->startTimer(20);
    runLoopFor(250);
    std::size_t ticks = recorder.calls.size();
    EXPECT_GE(ticks, 2u);
    for (Call const& call : recorder.calls) {
        EXPECT_EQ(call.callback, "timer");
        EXPECT_EQ(call.window, window);
    }

    window->stopTimer();
    recorder.calls.clear();
    runLoopFor(150);
    EXPECT_TRUE(recorder.calls.empty()) << "no tick after stopTimer";
    DestroyWindow(hwnd);
}

TEST_F(WindowOperations, SetFocusSetsTheFocus) {
    ShowWindow(mTopHwnd, SW_SHOW);
    SetFocus(mTopHwnd);
    ASSERT_EQ(GetFocus(), mTopHwnd);
    mChild->setFocus();
    EXPECT_EQ(GetFocus(), mChildHwnd);
    MSG msg;
    EXPECT_FALSE(
        PeekMessageA(&msg, mChildHwnd, GwWindow::message(), GwWindow::message(), PM_NOREMOVE))
        << "no focus request is queued";
}

TEST_F(WindowOperations, SetFocusOnTheFocusedWindowQueuesAFocusRequest) {
    ShowWindow(mTopHwnd, SW_SHOW);
    SetFocus(mChildHwnd);
    ASSERT_EQ(GetFocus(), mChildHwnd);
    pumpMessages();
    mChild->setFocus();
    EXPECT_EQ(GetFocus(), mChildHwnd);
    UINT const registered = static_cast<UINT>(GwWindow::message());
    MSG msg;
    ASSERT_TRUE(PeekMessageA(&msg, mChildHwnd, registered, registered, PM_NOREMOVE))
        << "a focus request is queued";
    EXPECT_EQ(msg.wParam, static_cast<WPARAM>(GwCodeSetFocus));
    EXPECT_EQ(msg.lParam, 0);
    ASSERT_TRUE(PeekMessageA(&msg, mChildHwnd, registered, registered, PM_REMOVE));
    MSG more;
    EXPECT_FALSE(PeekMessageA(&more, mChildHwnd, registered, registered, PM_NOREMOVE))
        << "exactly one";

    // The request sets the focus again when it is handled, wherever the focus went meanwhile.
    SetFocus(mTopHwnd);
    ASSERT_EQ(GetFocus(), mTopHwnd);
    DispatchMessageA(&msg);
    EXPECT_EQ(GetFocus(), mChildHwnd);
}

TEST_F(WindowOperations, TranslateConvertsBetweenWindowsAndToTheScreen) {
    int const parentHeight = clientHeight(mTopHwnd);
    int const screen = GetSystemMetrics(SM_CYSCREEN);
    POINT origin{0, 0};
    ClientToScreen(mTopHwnd, &origin);

    // (5, 7) bottom-up in the child is (5, 113) top-down, (35, 153) in the parent.
    EXPECT_EQ(mChild->translate(mTop, GwPosition(5, 7)), GwPosition(35, parentHeight - 153));
    EXPECT_EQ(mTop->translate(mChild, GwPosition(35, parentHeight - 153)), GwPosition(5, 7));
    EXPECT_EQ(mChild->translate(nullptr, GwPosition(5, 7)),
              GwPosition(origin.x + 35, screen - (origin.y + 153)));

    long x = 5;
    long y = 7;
    mChild->translate(mTop, x, y);
    EXPECT_EQ(x, 35);
    EXPECT_EQ(y, parentHeight - 153);
}

namespace {

LPARAM const kOverClient = MAKELPARAM(HTCLIENT, WM_MOUSEMOVE);

HCURSOR systemCursor(LPCSTR id) {
    return LoadCursorA(nullptr, id);
}

} // namespace

TEST_F(WindowOperations, SetCursorWithASystemCursorShowsItOverTheClientArea) {
    HCURSOR cross = systemCursor(IDC_CROSS);
    ASSERT_NE(cross, nullptr);
    SetCursor(systemCursor(IDC_ARROW));
    mTop->setCursor(32515); // IDC_CROSS
    EXPECT_EQ(GetCursor(), cross) << "made current at once";

    SetCursor(systemCursor(IDC_ARROW));
    EXPECT_EQ(SendMessageA(mTopHwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(mTopHwnd), kOverClient),
              1);
    EXPECT_EQ(GetCursor(), cross);
}

TEST_F(WindowOperations, WithoutStoredCursorSetCursorMessagesArePassedOn) {
    mTop->setCursor(32515);
    mTop->setCursor(GwWindow::eNoCursor);
    HCURSOR arrow = systemCursor(IDC_ARROW);
    SetCursor(arrow);
    EXPECT_EQ(SendMessageA(mTopHwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(mTopHwnd), kOverClient),
              0)
        << "the window class has no cursor, so the default answers 0";
    EXPECT_EQ(GetCursor(), arrow);
}

TEST_F(WindowOperations, StoredCursorIsOnlyShownForTheWindowsOwnClientArea) {
    mChild->setCursor(32515);
    HCURSOR arrow = systemCursor(IDC_ARROW);
    SetCursor(arrow);
    EXPECT_NE(
        SendMessageA(mChildHwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(mTopHwnd), kOverClient), 1);
    EXPECT_EQ(GetCursor(), arrow) << "another window's handle in wParam";
    EXPECT_NE(SendMessageA(mChildHwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(mChildHwnd),
                           MAKELPARAM(HTBORDER, WM_MOUSEMOVE)),
              1);
    EXPECT_NE(GetCursor(), systemCursor(IDC_CROSS)) << "not over the client area";
}

TEST_F(WindowOperations, LibraryCursorComesFromTheLibrarysOwnModule) {
    ASSERT_NE(GwThisDll::mCurrent, nullptr);
    auto module = static_cast<HMODULE>(GwThisDll::mCurrent->module());
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path);
    std::string name = path;
    name = name.substr(name.find_last_of("\\/") + 1);
    for (char& c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_EQ(name, "vmgui.dll");
    HCURSOR cursor = LoadCursorA(module, MAKEINTRESOURCEA(100));
    ASSERT_NE(cursor, nullptr) << "cursor resource 100 of the library";

    SetCursor(systemCursor(IDC_ARROW));
    mTop->setCursor(GwWindow::eLibraryCursor);
    EXPECT_EQ(GetCursor(), cursor);
    SetCursor(systemCursor(IDC_ARROW));
    EXPECT_EQ(SendMessageA(mTopHwnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(mTopHwnd), kOverClient),
              1);
    EXPECT_EQ(GetCursor(), cursor);
}

TEST_F(WindowOperations, UserDataIsKeptWithTheObject) {
    GwUserData data(reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(mChild->userData(), nullptr);
    EXPECT_EQ(&mChild->setUserData(&data), mChild);
    EXPECT_EQ(mChild->userData(), &data);
    mChild->setUserData(nullptr);
    EXPECT_EQ(mChild->userData(), nullptr);
}

TEST_F(WindowOperations, InvalidateMarksTheClientAreaAndUpdatePaintsIt) {
    ShowWindow(mTopHwnd, SW_SHOW);
    UpdateWindow(mTopHwnd);
    RECT update{};
    ASSERT_FALSE(GetUpdateRect(mChildHwnd, &update, FALSE));

    mChild->invalidate();
    ASSERT_TRUE(GetUpdateRect(mChildHwnd, &update, FALSE));
    RECT client{};
    GetClientRect(mChildHwnd, &client);
    EXPECT_TRUE(EqualRect(&update, &client)) << "the whole client area";

    mChild->update();
    EXPECT_FALSE(GetUpdateRect(mChildHwnd, &update, FALSE)) << "painted";
}

TEST_F(WindowOperations, SetUpdateEnabledLocksAndUnlocksDrawing) {
    HWND other = rawWindow();
    mTop->setUpdateEnabled(false);
    EXPECT_FALSE(LockWindowUpdate(other)) << "only one window can be locked at a time";
    mTop->setUpdateEnabled(true);
    EXPECT_TRUE(LockWindowUpdate(other)) << "the lock was released";
    LockWindowUpdate(nullptr);
    DestroyWindow(other);
}

TEST_F(WindowOperations, InstanceIsTheProcessModule) {
    EXPECT_EQ(GwWindow::instance(), static_cast<void*>(GetModuleHandleA(nullptr)));
}
