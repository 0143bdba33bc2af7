// Window creations that the platform refuses: frames, dialogs, controls and bars end up
// without a window, quietly, and leak nothing.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>

#include <VmGui.h>

#include "BreakpointCounter.h"
#include "FailureTesting.h"
#include "TestWindows.h"

using namespace testing_failures;
using namespace testing_windows;

namespace {

// Ends a queued quit message so that it cannot end a later test's loop; true when one was there.
bool quitQueued() {
    MSG msg;
    return PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
}

class RefusedWindow : public ::testing::Test {
protected:
    void SetUp() override {
        mParent = new GwFrame(1, 0, false);
        ASSERT_NE(mParent->window(), nullptr);
    }
    void TearDown() override {
        DestroyWindow(static_cast<HWND>(mParent->window()));
        pumpMessages();
        EXPECT_FALSE(quitQueued());
    }

    ScopedApplication mApplication;
    GwFrame* mParent = nullptr; // deletes itself with its window
};

} // namespace

TEST_F(RefusedWindow, AFrameWhoseWindowIsRefusedHasNoWindowNoBarsAndLeaksNothing) {
    BreakpointCounter breaks;
    RefusedCreation refused;
    ASSERT_TRUE(refused.installed());
    auto* frame = new GwFrame(2, 100, true);
    EXPECT_GT(RefusedCreation::refused(), 0);
    EXPECT_EQ(frame->window(), nullptr);
    EXPECT_EQ(frame->statusBar(), nullptr);
    EXPECT_NE(frame->menuBar(), nullptr) << "the rest of the construction goes on";
    delete frame;
    auto* owned = new GwFrame(*mParent, 3, 0, true);
    EXPECT_EQ(owned->window(), nullptr);
    EXPECT_EQ(owned->statusBar(), nullptr);
    delete owned;
    EXPECT_EQ(breaks.count(), 0);

    long const growth = heapGrowth([] { delete new GwFrame(2, 100, true); });
    EXPECT_LT(growth, 20) << "a refused frame leaves objects behind";
}

TEST_F(RefusedWindow, AnMdiFrameWhoseWindowIsRefusedHasNeitherWindowNorClient) {
    BreakpointCounter breaks;
    RefusedCreation refused;
    auto* frame = new GwMDIFrame(4, 0, 0);
    EXPECT_EQ(frame->window(), nullptr);
    EXPECT_EQ(frame->mdiClient(), nullptr);
    delete frame;
    EXPECT_EQ(breaks.count(), 0);
    EXPECT_LT(heapGrowth([this] { delete new GwMDIFrame(*mParent, 5); }), 20);
}

TEST_F(RefusedWindow, ADialogWhoseWindowIsRefusedShowsNothingAndRaisesNothing) {
    BreakpointCounter breaks;
    RefusedCreation refused;
    for (GwDialog* dialog : {new GwDialog(6), new GwDialog(7, *mParent)}) {
        EXPECT_EQ(dialog->window(), nullptr);
        dialog->setModal(true);
        EXPECT_TRUE(dialog->modal());
        dialog->setVisible(true); // no window: no loop to run
        EXPECT_EQ(dialog->result(), -1);
        dialog->setVisible(false);
        EXPECT_FALSE(dialog->visible());
        delete dialog;
    }
    EXPECT_FALSE(quitQueued());
    EXPECT_EQ(breaks.count(), 0);
    EXPECT_LT(heapGrowth([] { delete new GwDialog(6); }), 20);
}

TEST_F(RefusedWindow, ControlsWhoseWindowsAreRefusedHaveNoWindowAndStayQuiet) {
    BreakpointCounter breaks;
    int const before = GetWindow(static_cast<HWND>(mParent->window()), GW_CHILD) != nullptr;
    auto makeAll = [this] {
        std::unique_ptr<GwControl> controls[] = {
            std::make_unique<GwPushButton>(*mParent, 10, "Los"),
            std::make_unique<GwToggleButton>(*mParent, 11, "Fett"),
            std::make_unique<Gw3StateButton>(*mParent, 12, "Kursiv"),
            std::make_unique<GwRadioButton>(*mParent, 13, "Links"),
            std::make_unique<GwUserButton>(*mParent, 14, "Eigen"),
            std::make_unique<GwEditField>(*mParent, 15),
            std::make_unique<GwComboBox>(*mParent, 16),
            std::make_unique<GwListBox>(*mParent, 17, true, GwWindow::eUnsorted),
            std::make_unique<GwText>(*mParent, 18, "Name"),
            std::make_unique<GwGroupBox>(*mParent, 19, "Gruppe"),
            std::make_unique<GwTab>(*mParent, 20),
            std::make_unique<GwViewport>(*mParent, 21),
        };
        for (auto const& control : controls) {
            EXPECT_EQ(control->window(), nullptr) << control->isA()->name();
            EXPECT_EQ(control->text().size(), 0u);
            control->setText("nichts");
            control->setVisible(true);
        }
        GwStatusBar bar(*mParent, 22, true);
        EXPECT_EQ(bar.window(), nullptr);
    };
    {
        RefusedCreation refused;
        makeAll();
        EXPECT_GE(RefusedCreation::refused(), 13);
        EXPECT_LT(heapGrowth(makeAll, 50), 20);
    }
    EXPECT_EQ(GetWindow(static_cast<HWND>(mParent->window()), GW_CHILD) != nullptr, before != 0);
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(RefusedWindow, CopiesOfControlsWhoseWindowsAreRefusedHaveNoWindow) {
    BreakpointCounter breaks;
    GwPushButton button(*mParent, 30, "Original");
    GwEditField edit(*mParent, 31);
    GwComboBox combo(*mParent, 32);
    GwListBox list(*mParent, 33, false, GwWindow::eUnsorted);
    GwTab tab(*mParent, 34);
    GwViewport viewport(*mParent, 35);
    ASSERT_NE(button.window(), nullptr);
    ASSERT_NE(viewport.window(), nullptr);
    RefusedCreation refused;
    GwPushButton buttonCopy(button);
    GwEditField editCopy(edit);
    GwComboBox comboCopy(combo);
    GwListBox listCopy(list);
    GwTab tabCopy(tab);
    GwViewport viewportCopy(viewport);
    for (GwWindow const* copy : std::initializer_list<GwWindow const*>{
             &buttonCopy, &editCopy, &comboCopy, &listCopy, &tabCopy, &viewportCopy})
        EXPECT_EQ(copy->window(), nullptr) << copy->isA()->name();
    EXPECT_EQ(breaks.count(), 0);
}

namespace {

// Destroys its window inside its own close callback and then tries to give it a child.
class LateChild : public GwEventHandler {
public:
    LateChild() : GwEventHandler(false) {}
    int cbClose(GwWindow& window) override {
        ++calls;
        DestroyWindow(static_cast<HWND>(window.window()));
        parentAfterDestruction = window.window();
        child = std::make_unique<GwPushButton>(window, 40, "Zu spät");
        return GwResultHandled;
    }
    int calls = 0;
    void* parentAfterDestruction = reinterpret_cast<void*>(1);
    std::unique_ptr<GwPushButton> child;
};

} // namespace

TEST_F(RefusedWindow, AChildOfAParentDestroyedInItsOwnCallbackGetsNoWindow) {
    BreakpointCounter breaks;
    TopLevel top;
    LateChild handler;
    top.window->add(&handler);
    SendMessageA(top.hwnd, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(top.hwnd));
    EXPECT_EQ(handler.calls, 1);
    EXPECT_EQ(handler.parentAfterDestruction, nullptr);
    ASSERT_NE(handler.child, nullptr);
    EXPECT_EQ(handler.child->window(), nullptr);
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(RefusedWindow, ADialogTemplateWhoseWindowIsRefusedLoadsAsNull) {
    BreakpointCounter breaks;
    GwResource const executable;
    {
        RefusedCreation refused;
        EXPECT_EQ(executable.loadDialog(100, nullptr), nullptr);
        EXPECT_EQ(executable.loadDialog(100, mParent), nullptr);
        EXPECT_GT(RefusedCreation::refused(), 0);
        EXPECT_LT(heapGrowth([&] { executable.loadDialog(100, nullptr); }), 20);
    }
    GwWindow* const loaded = executable.loadDialog(100, nullptr);
    ASSERT_NE(loaded, nullptr) << "the template loads once creation is allowed";
    DestroyWindow(static_cast<HWND>(loaded->window()));
    EXPECT_EQ(breaks.count(), 0);
}
