// Laying out a frame: bars along the edges in record order, the client in what they leave.
#include <gtest/gtest.h>

#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

// A frame without status bar of a known size, with bars that ask for fixed sizes.
class FrameLayoutTest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        frame = new TestFrame(1, 0, false);
        resize(frame->hwnd(), 400, 300);
        room = clientRect(frame->hwnd());
        ASSERT_GT(room.right, 200);
        ASSERT_GT(room.bottom, 150);
    }
    void TearDown() override {
        delete frame; // the bars' windows and objects go with it
        FrameFixture::TearDown();
    }

    FixedBar* bar(long width, long height) { return new FixedBar(frame->hwnd(), width, height); }

    TestFrame* frame = nullptr;
    RECT room{};
};

void expectRect(HWND hwnd, long x, long y, long width, long height) {
    RECT rect = rectInParent(hwnd);
    EXPECT_EQ(rect.left, x);
    EXPECT_EQ(rect.top, y);
    EXPECT_EQ(rect.right - rect.left, width);
    EXPECT_EQ(rect.bottom - rect.top, height);
}

} // namespace

TEST_F(FrameLayoutTest, TwoTopBarsAndALeftBarInThatOrder) {
    FixedBar* top1 = bar(50, 20);
    FixedBar* top2 = bar(60, 30);
    FixedBar* left = bar(40, 10);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9));
    frame->add(top1, GwWindow::eTop).add(top2, GwWindow::eTop).add(left, GwWindow::eLeft);
    frame->setClient(client);

    long const width = room.right;
    long const height = room.bottom;
    // Both top bars span the full width; the left bar fills the height below them.
    expectRect(top1->hwnd(), 0, 0, width, 20);
    expectRect(top2->hwnd(), 0, 20, width, 30);
    expectRect(left->hwnd(), 0, 50, 40, height - 50);
    expectRect(static_cast<HWND>(client->window()), 40, 50, width - 40, height - 50);
    // Asked horizontally for the width, vertically for the height that is left.
    ASSERT_FALSE(top1->calls.empty());
    EXPECT_EQ(top1->calls.back(), std::make_pair(1, static_cast<int>(width)));
    EXPECT_EQ(left->calls.back(), std::make_pair(2, static_cast<int>(height - 50)));
}

TEST_F(FrameLayoutTest, BottomAndRightBarsTakeTheirRoomFromTheFarEdges) {
    FixedBar* bottom = bar(10, 25);
    FixedBar* right = bar(35, 10);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9));
    frame->add(bottom, GwWindow::eBottom).add(right, GwWindow::eRight);
    frame->setClient(client);
    long const width = room.right;
    long const height = room.bottom;
    expectRect(bottom->hwnd(), 0, height - 25, width, 25);
    expectRect(right->hwnd(), width - 35, 0, 35, height - 25);
    expectRect(static_cast<HWND>(client->window()), 0, 0, width - 35, height - 25);
}

TEST_F(FrameLayoutTest, BarsTallerThanTheFrameCutTheLastOneAndEmptyTheRest) {
    long const height = room.bottom;
    FixedBar* first = bar(10, height - 30);
    FixedBar* second = bar(10, 50); // only 30 are left
    FixedBar* third = bar(10, 20);
    FixedBar* fourth = bar(10, 20);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9, 1, 1, 5, 5));
    frame->setClient(client);
    frame->add(first, GwWindow::eTop)
        .add(second, GwWindow::eBottom)
        .add(third, GwWindow::eTop)
        .add(fourth, GwWindow::eBottom);
    long const width = room.right;
    expectRect(first->hwnd(), 0, 0, width, height - 30);
    expectRect(second->hwnd(), 0, height - 30, width, 30);
    expectRect(third->hwnd(), 0, 0, 0, 0);
    expectRect(fourth->hwnd(), 0, 0, 0, 0);
    expectRect(static_cast<HWND>(client->window()), 0, 0, 0, 0);
    // The bars without room are not asked.
    EXPECT_TRUE(third->calls.empty());
    EXPECT_TRUE(fourth->calls.empty());
}

TEST_F(FrameLayoutTest, RemovingTheFirstOfThreeBarsLeavesAHoleThatStopsTheLayout) {
    FixedBar* a = bar(10, 20);
    FixedBar* b = bar(10, 30);
    FixedBar* c = bar(10, 40);
    frame->add(a, GwWindow::eTop).add(b, GwWindow::eTop).add(c, GwWindow::eTop);
    long const width = room.right;
    expectRect(b->hwnd(), 0, 20, width, 30);
    expectRect(c->hwnd(), 0, 50, width, 40);

    frame->remove(a);
    ASSERT_EQ(frame->bars()->count(), 3);
    EXPECT_EQ(frame->bars()->at(0), nullptr);
    // The others keep their places, also when the frame is resized.
    expectRect(b->hwnd(), 0, 20, width, 30);
    expectRect(c->hwnd(), 0, 50, width, 40);
    resize(frame->hwnd(), 420, 320);
    expectRect(b->hwnd(), 0, 20, width, 30);

    // A bar added again fills the hole and the layout reaches them all.
    FixedBar* d = bar(10, 5);
    frame->add(d, GwWindow::eTop);
    EXPECT_EQ(frame->bars()->at(0)->bar, d);
    long const newWidth = clientRect(frame->hwnd()).right;
    expectRect(d->hwnd(), 0, 0, newWidth, 5);
    expectRect(b->hwnd(), 0, 5, newWidth, 30);
    expectRect(c->hwnd(), 0, 35, newWidth, 40);
}

TEST_F(FrameLayoutTest, RemovingTheLastBarDropsItsRecord) {
    FixedBar* a = bar(10, 20);
    FixedBar* b = bar(10, 30);
    frame->add(a, GwWindow::eTop).add(b, GwWindow::eTop);
    frame->remove(b);
    EXPECT_EQ(frame->bars()->count(), 1);
    // An unknown bar changes nothing but lays out.
    FixedBar* stranger = bar(10, 10);
    frame->remove(stranger);
    EXPECT_EQ(frame->bars()->count(), 1);
    frame->remove(a);
    EXPECT_EQ(frame->bars()->count(), 0);
}

TEST_F(FrameLayoutTest, ABarAddedTwiceIsLaidOutForEachRecord) {
    FixedBar* twice = bar(10, 20);
    FixedBar* other = bar(10, 10);
    frame->add(twice, GwWindow::eTop).add(other, GwWindow::eTop).add(twice, GwWindow::eTop);
    EXPECT_EQ(frame->bars()->count(), 3);
    // The second record wins the window's place; both took their room.
    expectRect(other->hwnd(), 0, 20, room.right, 10);
    expectRect(twice->hwnd(), 0, 30, room.right, 20);
}

TEST_F(FrameLayoutTest, AnotherAlignmentGivesAnEmptyRectangle) {
    FixedBar* odd = bar(10, 20);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9));
    frame->setClient(client);
    frame->add(odd, static_cast<GwWindow::eAlignment>(4));
    expectRect(odd->hwnd(), 0, 0, 0, 0);
    expectRect(static_cast<HWND>(client->window()), 0, 0, room.right, room.bottom);
    EXPECT_TRUE(odd->calls.empty());
}

TEST_F(FrameLayoutTest, ResizingLaysOutAndMovingDoesNot) {
    FixedBar* top = bar(10, 20);
    frame->add(top, GwWindow::eTop);
    top->calls.clear();
    resize(frame->hwnd(), 500, 350);
    ASSERT_EQ(top->calls.size(), 1u);
    expectRect(top->hwnd(), 0, 0, clientRect(frame->hwnd()).right, 20);
    SetWindowPos(frame->hwnd(), nullptr, 30, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(top->calls.size(), 1u);
}

TEST_F(FrameLayoutTest, TheClientAloneFillsTheFrame) {
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 9, 3, 3, 5, 5));
    frame->setClient(client);
    expectRect(static_cast<HWND>(client->window()), 0, 0, room.right, room.bottom);
    EXPECT_EQ(frame->bars(), nullptr);
}

TEST_F(FrameLayoutTest, ShowingLaysOutWhenThereAreBars) {
    FixedBar* top = bar(10, 20);
    frame->add(top, GwWindow::eTop);
    top->calls.clear();
    frame->setVisible(true);
    EXPECT_EQ(top->calls.size(), 1u);
}

TEST_F(FrameLayoutTest, LayoutMessageLaysOut) {
    FixedBar* top = bar(10, 20);
    frame->add(top, GwWindow::eTop);
    top->calls.clear();
    SendMessageA(frame->hwnd(), GwWindow::message(), GwCodeLayout, 0);
    EXPECT_EQ(top->calls.size(), 1u);
}
