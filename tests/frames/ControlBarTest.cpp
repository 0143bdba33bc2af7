// Control bars: the size they ask for, their class records and the drag gesture.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <GwEventData.h>

#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

// The focus rectangles that the library draws (it draws with XOR: drawing a rectangle again
// erases it). The drawing itself still happens.
struct FocusRectangles {
    static BOOL WINAPI draw(HDC dc, RECT const* rect) {
        drawn.push_back(*rect);
        return original != nullptr ? original(dc, rect) : TRUE;
    }
    static inline std::vector<RECT> drawn;
    static inline BOOL(WINAPI* original)(HDC, RECT const*) = nullptr;
};

bool operator==(RECT const& a, RECT const& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

RECT moved(RECT rect, int dx, int dy) {
    OffsetRect(&rect, dx, dy);
    return rect;
}

RECT windowRect(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    return rect;
}

// Every rectangle drawn an even number of times: with XOR drawing the desktop is as
// it was before.
bool allErased(std::vector<RECT> const& drawn) {
    for (RECT const& one : drawn) {
        int count = 0;
        for (RECT const& other : drawn)
            count += one == other ? 1 : 0;
        if (count % 2 != 0)
            return false;
    }
    return true;
}

// A control that records the messages offered to it with 0x1002 and those dispatched to it.
class OfferedWindow : public GwControl {
public:
    explicit OfferedWindow(HWND hwnd) : GwControl(hwnd) {}

    std::vector<UINT> offered;
    std::vector<UINT> dispatched;
    bool take = false;

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == 0x1002) {
            offered.push_back(reinterpret_cast<MSG const*>(lParam)->message);
            return take ? 1 : 0;
        }
        if (msg == WM_USER + 5)
            dispatched.push_back(static_cast<UINT>(msg));
        return GwControl::msgHandler(msg, wParam, lParam);
    }
};

class ControlBarTest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        }
        frame = new TestFrame(1, 0, false);
        resize(frame->hwnd(), 400, 300);
        HWND child = rawWindow(frame->hwnd(), 0x31, 10, 20, 80, 25);
        GwEventData data(child);
        bar = GwDockBar::newInstance(&data);
        ASSERT_NE(bar, nullptr);
        hwnd = child;
        FocusRectangles::drawn.clear();
    }
    void TearDown() override {
        if (GetCapture() != nullptr)
            ReleaseCapture();
        delete frame;
        FrameFixture::TearDown();
    }

    // Starts a drag with the pointer at (x, y) of the frame's client area, counted from the
    // top (the position is given bottom-up, as the library counts).
    std::vector<std::string> drag(int x, int y) {
        ImportHook hook(GetModuleHandleA("VmGui.dll"), "user32.dll", "DrawFocusRect",
                        reinterpret_cast<void*>(&FocusRectangles::draw));
        EXPECT_TRUE(hook.installed());
        FocusRectangles::original =
            reinterpret_cast<BOOL(WINAPI*)(HDC, RECT const*)>(hook.original());
        GwPosition start(x, clientRect(frame->hwnd()).bottom - y);
        StdoutCapture capture;
        GwControlBar& result = bar->dragBegin(start);
        EXPECT_EQ(&result, bar);
        return capture.lines();
    }

    TestFrame* frame = nullptr;
    GwDockBar* bar = nullptr;
    HWND hwnd = nullptr;
};

bool isFirstTraceLine(std::string const& line) {
    std::string const prefix = "GwControlBar::dragBegin DesktopDC[";
    return line.compare(0, prefix.size(), prefix) == 0 && line.size() > prefix.size() + 1 &&
           line.back() == ']';
}

} // namespace

TEST_F(ControlBarTest, CalculateAnswersTheCurrentSize) {
    GwObjectTable<GwRectangle> parts;
    for (auto kind :
         {GwControlBar::eHorizontal, GwControlBar::eVertical, GwControlBar::eFloating}) {
        GwDimension size = bar->calculate(kind, 500, &parts);
        EXPECT_EQ(size.width(), 80);
        EXPECT_EQ(size.height(), 25);
    }
    EXPECT_EQ(parts.count(), 0);
}

TEST_F(ControlBarTest, ClassRecords) {
    GwEventData data(hwnd);
    EXPECT_EQ(GwControlBar::newInstance(&data), nullptr);
    EXPECT_EQ(Class::createInstance(Class::lookup("GwControlBar"), &data), nullptr);
    EXPECT_TRUE(GwControlBar::isa()->isSubclassOf(GwWindow::isa()));
    EXPECT_TRUE(GwDockBar::isa()->isSubclassOf(GwControlBar::isa()));
    EXPECT_EQ(Class::lookup("GwDockBar"), GwDockBar::isa());
    GwEventData empty;
    EXPECT_EQ(GwDockBar::newInstance(&empty), nullptr);
    EXPECT_EQ(GwDockBar::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwWindow::window(hwnd, false), bar);
    EXPECT_EQ(bar->isA(), GwDockBar::isa());
    GwDockBar unbound;
    EXPECT_EQ(unbound.window(), nullptr);
}

TEST_F(ControlBarTest, EscapeEndsTheDragWithTheBarWhereItWas) {
    RECT const before = rectInParent(hwnd);
    RECT const onScreen = windowRect(hwnd);
    PostMessageA(hwnd, WM_KEYDOWN, VK_ESCAPE, 1);
    std::vector<std::string> lines = drag(15, 30);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(isFirstTraceLine(lines[0])) << lines[0];
    EXPECT_EQ(lines[1], "-->KeyDown");
    EXPECT_EQ(lines[2], "-->ReleaseCapture [ESC]");
    EXPECT_EQ(lines[3], "-->dragEnd");
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(rectInParent(hwnd) == before);
    // Drawn at the bar's place, and erased there once at the end.
    ASSERT_EQ(FocusRectangles::drawn.size(), 2u);
    EXPECT_TRUE(FocusRectangles::drawn[0] == onScreen);
    EXPECT_TRUE(FocusRectangles::drawn[1] == onScreen);
}

TEST_F(ControlBarTest, TheRectangleFollowsThePointerAndIsErasedOnceAtTheEnd) {
    RECT const before = rectInParent(hwnd);
    RECT const onScreen = windowRect(hwnd);
    PostMessageA(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(25, 35));
    PostMessageA(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(30, 25));
    PostMessageA(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(30, 25));
    std::vector<std::string> lines = drag(15, 30);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(isFirstTraceLine(lines[0])) << lines[0];
    EXPECT_EQ(lines[1], "-->ReleaseCapture");
    EXPECT_EQ(lines[2], "-->dragEnd");
    EXPECT_EQ(GetCapture(), nullptr);

    RECT const first = moved(onScreen, 10, 5);
    RECT const second = moved(first, 5, -10);
    std::vector<RECT> const& drawn = FocusRectangles::drawn;
    ASSERT_EQ(drawn.size(), 6u);
    EXPECT_TRUE(drawn[0] == onScreen);
    EXPECT_TRUE(drawn[1] == onScreen); // erased
    EXPECT_TRUE(drawn[2] == first);
    EXPECT_TRUE(drawn[3] == first); // erased
    EXPECT_TRUE(drawn[4] == second);
    EXPECT_TRUE(drawn[5] == second); // the last one, erased once at the end
    EXPECT_TRUE(allErased(drawn));
    // The bar does not move.
    EXPECT_TRUE(rectInParent(hwnd) == before);
}

TEST_F(ControlBarTest, PointerPositionsAreReadAsUnsignedWords) {
    RECT const onScreen = windowRect(hwnd);
    PostMessageA(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(-3, 4));
    PostMessageA(hwnd, WM_KEYDOWN, VK_ESCAPE, 1);
    drag(15, 30);
    ASSERT_EQ(FocusRectangles::drawn.size(), 4u);
    // -3 is 65533: the rectangle moves far to the right.
    EXPECT_TRUE(FocusRectangles::drawn[2] == moved(onScreen, 65533 - 15, 4 - 30));
    EXPECT_TRUE(allErased(FocusRectangles::drawn));
}

TEST_F(ControlBarTest, KeysAreTraced) {
    PostMessageA(hwnd, WM_KEYUP, 'A', 0);
    PostMessageA(hwnd, WM_KEYDOWN, 'B', 1);
    PostMessageA(hwnd, WM_KEYDOWN, VK_ESCAPE, 1);
    std::vector<std::string> lines = drag(15, 30);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[1], "-->KeyUp");
    EXPECT_EQ(lines[2], "-->KeyDown");
    EXPECT_EQ(lines[3], "-->KeyDown");
    EXPECT_EQ(lines[4], "-->ReleaseCapture [ESC]");
    EXPECT_EQ(lines[5], "-->dragEnd");
}

TEST_F(ControlBarTest, QuitDuringTheDragEndsItAndIsPostedAgain) {
    PostQuitMessage(5);
    std::vector<std::string> lines = drag(15, 30);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(isFirstTraceLine(lines[0])) << lines[0];
    EXPECT_EQ(lines[1], "-->dragEnd");
    MSG msg;
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 5u);
    ASSERT_EQ(FocusRectangles::drawn.size(), 2u);
    EXPECT_TRUE(allErased(FocusRectangles::drawn));
}

TEST_F(ControlBarTest, OtherMessagesAreOfferedWithTheFixedNumberThenDispatched) {
    auto* other = new OfferedWindow(rawWindow(frame->hwnd(), 0x32, 200, 20, 30, 30));
    PostMessageA(static_cast<HWND>(other->window()), WM_USER + 5, 0, 0);
    PostMessageA(hwnd, WM_KEYDOWN, VK_ESCAPE, 1);
    drag(15, 30);
    EXPECT_EQ(other->offered, std::vector<UINT>{WM_USER + 5});
    EXPECT_EQ(other->dispatched, std::vector<UINT>{WM_USER + 5});

    other->take = true;
    other->offered.clear();
    other->dispatched.clear();
    PostMessageA(static_cast<HWND>(other->window()), WM_USER + 5, 0, 0);
    PostMessageA(hwnd, WM_KEYDOWN, VK_ESCAPE, 1);
    drag(15, 30);
    EXPECT_EQ(other->offered, std::vector<UINT>{WM_USER + 5});
    EXPECT_TRUE(other->dispatched.empty());
}
