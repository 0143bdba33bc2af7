// Tool bars in a frame: tooltips and status texts, clicks, check groups, embedded controls and
// their end, the non-client edge, docking at each edge, floating and re-docking by dragging.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <GwMessages.h>
#include <GwResource.h>

#include "ToolBarTesting.h"

#include <uxtheme.h>

using namespace testing_toolbars;
using namespace testing_windows;
using testing_frames::clientRect;
using testing_frames::rectInParent;

namespace {

// What the bar wrote into the tooltip's ANSI requests, caught as they return. The platform's
// tooltip asks the tool bar, which passes TTN_GETDISPINFOA on to its parent (the frame),
// which reflects it to the bar.
struct TooltipRequests {
    static inline HWND frame = nullptr;
    static inline std::vector<std::string> texts;

    static LRESULT CALLBACK hook(int code, WPARAM wParam, LPARAM lParam) {
        auto const* sent = reinterpret_cast<CWPRETSTRUCT const*>(lParam);
        if (code == HC_ACTION && sent->message == WM_NOTIFY && sent->hwnd == frame) {
            auto const* info = reinterpret_cast<NMTTDISPINFOA const*>(sent->lParam);
            if (static_cast<int>(info->hdr.code) == static_cast<int>(TTN_GETDISPINFOA))
                texts.emplace_back(info->lpszText != nullptr ? info->lpszText : "(null)");
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
};

class ToolBarFrameTest : public ToolBarFixture {
protected:
    // A bar at the frame's top with the buttons 10 and 11 of resource 300 (texts 10, 11).
    TestToolBar* loadedBar() {
        TestToolBar* bar = makeBar();
        bar->load(300, GwResource(), 0xFF00FF);
        frame->add(bar, GwWindow::eTop);
        return bar;
    }

    // Rests the pointer on the button at index until the bar's own tooltip shows (as long as
    // the platform takes, at most two seconds).
    void hover(TestToolBar* bar, int index) {
        SetWindowPos(frame->hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
        SetForegroundWindow(frame->hwnd());
        RECT const rect = itemRect(bar->hwnd(), index);
        POINT point{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
        POINT screen = point;
        ClientToScreen(bar->hwnd(), &screen);
        SetCursorPos(screen.x, screen.y);
        PostMessageA(bar->hwnd(), WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
        HWND tip = reinterpret_cast<HWND>(SendMessageA(bar->hwnd(), TB_GETTOOLTIPS, 0, 0));
        for (int waited = 0; waited < 2000 && !IsWindowVisible(tip); waited += 100)
            runLoopFor(100);
    }

    // A click on the middle of the button at index, as posted mouse messages.
    static void click(TestToolBar* bar, int index) {
        RECT const rect = itemRect(bar->hwnd(), index);
        LPARAM const at = MAKELPARAM((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
        PostMessageA(bar->hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, at);
        PostMessageA(bar->hwnd(), WM_LBUTTONUP, 0, at);
        pumpMessages();
    }

    // A tooltip request for the button id, as the platform's tooltip sends it, reflected to
    // the bar as its parent does it.
    static NMTTDISPINFOA request(TestToolBar* bar, unsigned int id) {
        NMTTDISPINFOA info{};
        info.hdr.hwndFrom = reinterpret_cast<HWND>(SendMessageA(bar->hwnd(), TB_GETTOOLTIPS, 0, 0));
        info.hdr.idFrom = id;
        info.hdr.code = TTN_GETDISPINFOA;
        info.lpszText = info.szText;
        info.uFlags = 0x5A5A;
        SendMessageA(bar->hwnd(), GwMsgNotifyReflected, id, reinterpret_cast<LPARAM>(&info));
        return info;
    }

    // A docked bar with one button whose edge is calculated again (with the theme answer
    // of the moment).
    TestToolBar* edgedBar() {
        TestToolBar* bar = makeBar();
        bar->add(GwToolBarItem(1, 0));
        frame->add(bar, GwWindow::eTop);
        SetWindowPos(bar->hwnd(), nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return bar;
    }

    Recorder recorder;
};

// Answers IsThemeActive for the library while it lives.
class ThemeAnswer {
public:
    explicit ThemeAnswer(BOOL active)
        : mHook(GetModuleHandleA("VmGui.dll"), "uxtheme.dll", "IsThemeActive",
                reinterpret_cast<void*>(active ? &yes : &no)) {}
    bool installed() const { return mHook.installed(); }

private:
    static BOOL WINAPI yes() { return TRUE; }
    static BOOL WINAPI no() { return FALSE; }
    ImportHook mHook;
};

} // namespace

TEST_F(ToolBarFrameTest, ATooltipRequestFillsTheTipAndPutsTheStatusTextIntoTheStatusBar) {
    TestToolBar* bar = loadedBar();
    TooltipRequests::frame = frame->hwnd();
    TooltipRequests::texts.clear();
    HHOOK hook =
        SetWindowsHookExA(WH_CALLWNDPROCRET, &TooltipRequests::hook, nullptr, GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    hover(bar, 2);
    UnhookWindowsHookEx(hook);
    HWND tip = reinterpret_cast<HWND>(SendMessageA(bar->hwnd(), TB_GETTOOLTIPS, 0, 0));
    ASSERT_TRUE(IsWindowVisible(tip));
    ASSERT_FALSE(TooltipRequests::texts.empty());
    EXPECT_EQ(TooltipRequests::texts.front(), "Sichern");
    char shown[100] = {};
    GetWindowTextA(tip, shown, sizeof shown);
    EXPECT_STREQ(shown, "Sichern");
    // Shown: the status bar is in simple mode with the status text.
    EXPECT_TRUE(SendMessageA(statusWindow(), SB_ISSIMPLE, 0, 0));
    EXPECT_EQ(statusText(statusWindow()), "Zeichnung sichern");
    // Gone: out of simple mode, the text cleared.
    SendMessageA(tip, TTM_POP, 0, 0);
    EXPECT_FALSE(SendMessageA(statusWindow(), SB_ISSIMPLE, 0, 0));
    SendMessageA(statusWindow(), SB_SIMPLE, TRUE, 0);
    EXPECT_EQ(statusText(statusWindow()), "");
}

TEST_F(ToolBarFrameTest, AReflectedRequestCopiesTheTipAfterTheLineFeed) {
    TestToolBar* bar = loadedBar();
    SendMessageA(statusWindow(), SB_SIMPLE, TRUE, 0);
    NMTTDISPINFOA const info = request(bar, 10);
    EXPECT_STREQ(info.szText, "Neu");
    EXPECT_EQ(statusText(statusWindow()), "Neue Zeichnung anlegen");
}

TEST_F(ToolBarFrameTest, ATipOfMoreThanSeventyNineCharactersIsCutToFitSzText) {
    TestToolBar* bar = loadedBar();
    NMTTDISPINFOA const info = request(bar, 13);
    std::string const full = GwResource().loadString(13).c_str();
    std::string const tip = full.substr(full.find('\n') + 1);
    ASSERT_GT(tip.size(), 80u);
    EXPECT_EQ(std::strlen(info.szText), 79u);
    EXPECT_EQ(std::string(info.szText), tip.substr(0, 79));
    // Nothing written behind szText.
    EXPECT_EQ(info.uFlags, 0x5A5Au);
}

TEST_F(ToolBarFrameTest, AStringWithoutLineFeedIsAllStatusTextAndNoTip) {
    TestToolBar* bar = loadedBar();
    SendMessageA(statusWindow(), SB_SIMPLE, TRUE, 0);
    NMTTDISPINFOA const info = request(bar, 12);
    EXPECT_STREQ(info.szText, "");
    EXPECT_EQ(statusText(statusWindow()), "Nur ein Statustext");
    // An identifier without string: both empty.
    NMTTDISPINFOA const none = request(bar, 77);
    EXPECT_STREQ(none.szText, "");
    EXPECT_EQ(statusText(statusWindow()), "");
}

TEST_F(ToolBarFrameTest, TheTextsComeFromTheBarsResource) {
    TestToolBar* bar = loadedBar();
    GwResource other;
    bar->setResource(other);
    EXPECT_TRUE(bar->resource().empty());
    EXPECT_STREQ(request(bar, 10).szText, "Neu");
}

TEST_F(ToolBarFrameTest, AClickReachesTheFramesHandlersAsActivateAndSetsSelected) {
    TestToolBar* bar = loadedBar();
    frame->add(&recorder);
    click(bar, 2);
    ASSERT_EQ(recorder.names(), std::vector<std::string>{"activate"});
    EXPECT_EQ(recorder.calls[0].window, bar);
    EXPECT_EQ(bar->selected(), 11u);
    click(bar, 0);
    EXPECT_EQ(bar->selected(), 10u);
    EXPECT_EQ(recorder.calls.size(), 2u);
    frame->remove(&recorder);
}

TEST_F(ToolBarFrameTest, ACheckGroupKeepsOneButtonChecked) {
    TestToolBar* bar = makeBar();
    bar->add(GwToolBarItem(21, 0, GwToolBarItem::eCheckGroup, 1));
    bar->add(GwToolBarItem(22, 1, GwToolBarItem::eCheckGroup));
    bar->add(GwToolBarItem(23, 2, GwToolBarItem::eCheckGroup));
    frame->add(bar, GwWindow::eTop);
    EXPECT_TRUE(bar->value(21));
    click(bar, 1);
    EXPECT_FALSE(bar->value(21));
    EXPECT_TRUE(bar->value(22));
    EXPECT_EQ(bar->selected(), 22u);
    click(bar, 2);
    EXPECT_FALSE(bar->value(22));
    EXPECT_TRUE(bar->value(23));
    // Clicking the checked one keeps it checked.
    click(bar, 2);
    EXPECT_TRUE(bar->value(23));
}

TEST_F(ToolBarFrameTest, AnEmbeddedComboBoxSitsOverItsSeparatorAndMovesWithIt) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    combo->setDimension(80, 120);
    bar->add(GwToolBarItem(1, 0)).add(GwToolBarItem(2, 1)).add(GwToolBarItem(9, *combo));
    frame->add(bar, GwWindow::eTop);
    EXPECT_EQ(GetParent(combo->hwnd()), bar->hwnd());
    EXPECT_EQ(GetDlgCtrlID(combo->hwnd()), 9);
    EXPECT_EQ(buttonAt(bar->hwnd(), 2).iBitmap, 80);
    EXPECT_TRUE(IsWindowVisible(combo->hwnd()));
    RECT const place = itemRect(bar->hwnd(), 2);
    RECT combo1 = rectInParent(combo->hwnd());
    EXPECT_EQ(combo1.left, place.left);
    EXPECT_EQ(combo1.bottom, place.bottom);

    bar->setVisible(1, true); // hides button 1
    RECT const moved = itemRect(bar->hwnd(), 2);
    EXPECT_EQ(moved.left, place.left - 23);
    RECT const combo2 = rectInParent(combo->hwnd());
    EXPECT_EQ(combo2.left, moved.left);
    EXPECT_EQ(combo2.bottom, moved.bottom);

    // Read back: the control, a separator as wide as the control, enabled.
    GwToolBarItem const& item = bar->item(9);
    EXPECT_EQ(item.toolCtrl(), combo);
    EXPECT_EQ(item.style(), GwToolBarItem::eSeparator);
    EXPECT_EQ(item.bitmap(), 80);
    EXPECT_EQ(item.state(), 4);
}

TEST_F(ToolBarFrameTest, TheControlFollowsItsButtonsStateAndTheHideFlag) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    combo->setDimension(80, 120);
    bar->add(GwToolBarItem(9, *combo));
    bar->setEnabled(9, false);
    EXPECT_FALSE(IsWindowEnabled(combo->hwnd()));
    bar->setEnabled(9, true);
    EXPECT_TRUE(IsWindowEnabled(combo->hwnd()));
    // The flag goes to the control unchanged: hiding the separator shows the control.
    bar->setVisible(9, true);
    EXPECT_TRUE(IsWindowVisible(combo->hwnd()));
    EXPECT_EQ(bar->item(9).state(), 4 | 8);
    bar->setVisible(9, false);
    EXPECT_FALSE(IsWindowVisible(combo->hwnd()));
}

TEST_F(ToolBarFrameTest, AComboBoxSelectionReachesTheFrameOnce) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    combo->setDimension(80, 120);
    bar->add(GwToolBarItem(9, *combo));
    frame->add(&recorder);
    SendMessageA(bar->hwnd(), WM_COMMAND, MAKEWPARAM(9, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo->hwnd()));
    ASSERT_EQ(recorder.names(), std::vector<std::string>{"select"});
    EXPECT_EQ(recorder.calls[0].window, combo);
    frame->remove(&recorder);
}

TEST_F(ToolBarFrameTest, DeletingTheBarDeletesItsControlOnce) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    HWND comboWindow = combo->hwnd();
    GwToolBarItem item(9, *combo);
    bar->add(item);
    frame->add(bar, GwWindow::eTop);
    frame->remove(bar);
    delete bar;
    EXPECT_EQ(TestToolBar::alive, 0);
    EXPECT_EQ(CountedCombo::alive, 0);
    EXPECT_EQ(CountedCombo::deleted, 1);
    EXPECT_FALSE(IsWindow(comboWindow));
    // The item that showed the control was told of its end.
    EXPECT_EQ(item.toolCtrl(), nullptr);
}

TEST_F(ToolBarFrameTest, DestroyingTheFrameWindowDeletesTheControlOnce) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    GwToolBarItem item(9, *combo);
    bar->add(item);
    frame->add(bar, GwWindow::eTop);
    HWND comboWindow = combo->hwnd();
    HWND barWindow = bar->hwnd();
    DestroyWindow(frame->hwnd()); // the frame's object deletes itself
    frame = nullptr;
    EXPECT_FALSE(IsWindow(barWindow));
    EXPECT_FALSE(IsWindow(comboWindow));
    EXPECT_EQ(TestToolBar::alive, 0);
    EXPECT_EQ(CountedCombo::alive, 0);
    EXPECT_EQ(CountedCombo::deleted, 1);
    EXPECT_EQ(item.toolCtrl(), nullptr);
}

TEST_F(ToolBarFrameTest, AControlDeletedFirstIsForgottenByTheBar) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    auto* second = new CountedCombo(*frame, 98);
    GwToolBarItem item(9, *combo);
    bar->add(item).add(GwToolBarItem(8, *second));
    delete combo;
    EXPECT_EQ(bar->sizeOf(), 2);
    EXPECT_EQ(buttonAt(bar->hwnd(), 0).dwData, 0u);
    EXPECT_EQ(item.toolCtrl(), nullptr);
    // A control whose window is destroyed goes with it.
    DestroyWindow(second->hwnd());
    EXPECT_EQ(buttonAt(bar->hwnd(), 1).dwData, 0u);
    EXPECT_EQ(CountedCombo::alive, 0);
    bar->remove();
    delete bar;
    EXPECT_EQ(CountedCombo::deleted, 2);
}

TEST_F(ToolBarFrameTest, RemovingAButtonDeletesItsControlButReplacingWithTheSameControlKeepsIt) {
    TestToolBar* bar = makeBar();
    auto* combo = new CountedCombo(*frame, 99);
    bar->add(GwToolBarItem(9, *combo));
    bar->add(GwToolBarItem(9, *combo));
    EXPECT_EQ(CountedCombo::alive, 1);
    EXPECT_EQ(bar->sizeOf(), 1);
    bar->remove(9ull);
    EXPECT_EQ(CountedCombo::alive, 0);
    EXPECT_EQ(bar->sizeOf(), 0);
}

TEST_F(ToolBarFrameTest, WithoutAThemeTheEdgeIsPaintedInTheButtonFace) {
    // The library asks uxtheme whether a theme is active: here it is told no.
    ThemeAnswer noTheme(FALSE);
    ASSERT_TRUE(noTheme.installed());
    TestToolBar* bar = edgedBar();
    RECT window{};
    GetWindowRect(bar->hwnd(), &window);
    RECT const client = clientRect(bar->hwnd());
    int const width = window.right - window.left;
    int const height = window.bottom - window.top;
    EXPECT_EQ(client.right, width - 4);
    EXPECT_EQ(client.bottom, height - 3);
    POINT origin{0, 0};
    ClientToScreen(bar->hwnd(), &origin);
    EXPECT_EQ(origin.x - window.left, 2);
    EXPECT_EQ(origin.y - window.top, 2);

    HDC dc = GetWindowDC(bar->hwnd());
    RECT const all{0, 0, width, height};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    ReleaseDC(bar->hwnd(), dc);
    EXPECT_EQ(SendMessageA(bar->hwnd(), WM_NCPAINT, 1, 0), 0);
    dc = GetWindowDC(bar->hwnd());
    COLORREF const face = GetSysColor(COLOR_BTNFACE);
    EXPECT_EQ(GetPixel(dc, 0, 0), face);
    EXPECT_EQ(GetPixel(dc, 1, height / 2), face);
    EXPECT_EQ(GetPixel(dc, width - 1, height - 1), face);
    EXPECT_EQ(GetPixel(dc, width / 2, 1), face);
    // The inside is left alone.
    EXPECT_EQ(GetPixel(dc, width / 2, height / 2), RGB(0, 0, 0));
    ReleaseDC(bar->hwnd(), dc);

    // Erasing fills the whole window rectangle and answers 1.
    dc = GetDC(bar->hwnd());
    RECT const inside{0, 0, client.right, client.bottom};
    FillRect(dc, &inside, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(SendMessageA(bar->hwnd(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0), 1);
    EXPECT_EQ(GetPixel(dc, client.right / 2, client.bottom / 2), face);
    EXPECT_EQ(GetPixel(dc, 0, 0), face);
    ReleaseDC(bar->hwnd(), dc);
}

TEST_F(ToolBarFrameTest, WithAThemeTheControlKeepsItsOwnEdge) {
    ThemeAnswer theme(TRUE);
    ASSERT_TRUE(theme.installed());
    TestToolBar* bar = edgedBar();
    RECT window{};
    GetWindowRect(bar->hwnd(), &window);
    POINT origin{0, 0};
    ClientToScreen(bar->hwnd(), &origin);
    // No left edge of 2 pixels: the platform's calculation.
    EXPECT_EQ(origin.x - window.left, 0);
    EXPECT_EQ(clientRect(bar->hwnd()).right, window.right - window.left);
}
