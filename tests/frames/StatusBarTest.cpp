// The status bar: the control it creates, and its place in a frame.
#include <gtest/gtest.h>

#include <string>

#include <GwEventData.h>

#include "BreakpointCounter.h"
#include "FrameTesting.h"

#include <commctrl.h>

using namespace testing_frames;
using namespace testing_windows;

namespace {

class StatusBarTest : public FrameFixture {
protected:
    void TearDown() override {
        delete frame;
        FrameFixture::TearDown();
    }

    TestFrame* frame = nullptr;
};

} // namespace

TEST_F(StatusBarTest, CreatesAVisibleStatusControlWithASizeGrip) {
    frame = new TestFrame(1, 0, false);
    auto* bar = new GwStatusBar(*frame, 0x44, true);
    HWND hwnd = static_cast<HWND>(bar->window());
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "msctls_statusbar32");
    EXPECT_EQ(GetParent(hwnd), frame->hwnd());
    EXPECT_EQ(GetDlgCtrlID(hwnd), 0x44);
    LONG const style = GetWindowLongA(hwnd, GWL_STYLE);
    EXPECT_EQ(style & (WS_CHILD | WS_VISIBLE), WS_CHILD | WS_VISIBLE);
    EXPECT_EQ(style & SBARS_SIZEGRIP, SBARS_SIZEGRIP);
    EXPECT_EQ(GwWindow::window(hwnd, false), bar);
    EXPECT_EQ(bar->isA(), GwStatusBar::isa());
    EXPECT_TRUE(GwStatusBar::isa()->isSubclassOf(GwControlBar::isa()));
}

TEST_F(StatusBarTest, WithoutSizeGrip) {
    frame = new TestFrame(1, 0, false);
    auto* bar = new GwStatusBar(static_cast<GwWindow*>(frame), 0x45, false);
    HWND hwnd = static_cast<HWND>(bar->window());
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(GetWindowLongA(hwnd, GWL_STYLE) & SBARS_SIZEGRIP, 0);
}

TEST_F(StatusBarTest, ANullParentMakesNoWindowAndBreaks) {
    BreakpointCounter breaks;
    auto* bar = new GwStatusBar(static_cast<GwWindow*>(nullptr), 1, true);
    EXPECT_EQ(bar->window(), nullptr);
    EXPECT_EQ(breaks.count(), 1);
    delete bar;
}

TEST_F(StatusBarTest, FactoryWrapsAnExistingStatusWindow) {
    frame = new TestFrame(1, 0, false);
    HWND hwnd = CreateWindowExA(0, "msctls_statusbar32", "", WS_CHILD, 0, 0, 0, 0, frame->hwnd(),
                                nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(hwnd, nullptr);
    GwEventData data(hwnd);
    auto* bar =
        dynamic_cast<GwStatusBar*>(Class::createInstance(Class::lookup("GwStatusBar"), &data));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(GwWindow::window(hwnd, false), bar);
    GwEventData empty;
    EXPECT_EQ(GwStatusBar::newInstance(&empty), nullptr);
    // A copy has no window of its own.
    GwStatusBar copy(*bar);
    EXPECT_EQ(copy.window(), nullptr);
}

TEST_F(StatusBarTest, AFrameLaysItsStatusBarOutAtTheBottomWithTheControlsHeight) {
    frame = new TestFrame(1, 0);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9));
    frame->setClient(client);
    resize(frame->hwnd(), 400, 300);
    frame->setVisible(true);
    HWND status = static_cast<HWND>(frame->statusWindow());
    ASSERT_NE(status, nullptr);
    RECT const room = clientRect(frame->hwnd());
    RECT const bar = rectInParent(status);
    long const height =
        frame->statusBar()->calculate(GwControlBar::eHorizontal, 0, nullptr).height();
    EXPECT_GT(height, 0);
    EXPECT_EQ(bar.bottom - bar.top, height);
    EXPECT_EQ(bar.bottom, room.bottom);
    EXPECT_EQ(bar.left, 0);
    EXPECT_EQ(bar.right, room.right);
    RECT const area = rectInParent(static_cast<HWND>(client->window()));
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.bottom, bar.top);
    EXPECT_EQ(area.right, room.right);
}

TEST_F(StatusBarTest, ReplacingTheStatusBarDestroysTheOldOneAndItsRecord) {
    frame = new TestFrame(1, 0);
    HWND old = static_cast<HWND>(frame->statusWindow());
    FixedBar* top = new FixedBar(frame->hwnd(), 10, 20);
    frame->add(top, GwWindow::eTop);
    ASSERT_EQ(frame->bars()->count(), 2);

    auto* replacement = new GwStatusBar(*frame, 0xFE02, false);
    frame->setStatusBar(replacement);
    EXPECT_FALSE(IsWindow(old));
    EXPECT_EQ(frame->statusWindow(), replacement->window());
    EXPECT_EQ(frame->statusBar(), replacement);
    // The old record's slot is taken by the new bar.
    ASSERT_EQ(frame->bars()->count(), 2);
    EXPECT_EQ(frame->bars()->at(0)->bar, replacement);
    EXPECT_EQ(frame->bars()->at(0)->side, GwWindow::eBottom);
    EXPECT_EQ(frame->bars()->at(1)->bar, top);

    HWND const replaced = static_cast<HWND>(replacement->window());
    frame->setStatusBar(nullptr); // the object goes with its window
    EXPECT_FALSE(IsWindow(replaced));
    EXPECT_EQ(frame->statusWindow(), nullptr);
    EXPECT_EQ(frame->bars()->at(0), nullptr);
    EXPECT_EQ(frame->bars()->at(1)->bar, top);
}
