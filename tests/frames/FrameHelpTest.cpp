// The frame's help: the help path and the answers to WM_HELP in the help modes that the
// message loop and the help button set.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

std::string executableDirectory() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string file = path;
    return file.substr(0, file.find_last_of("\\/") + 1);
}

class CountingFunctor : public GwFrame::GwHelpFunctor {
public:
    void operator()() override { ++calls; }
    int calls = 0;
};

class FrameHelpTest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        frame = new TestFrame(0x21, 0, false);
        hwnd = frame->hwnd();
        resize(hwnd, 400, 300);
        frame->setHelpFile("hilfe.hlp");
        path = executableDirectory() + "hilfe.hlp";
    }
    void TearDown() override {
        delete frame;
        FrameFixture::TearDown();
    }

    // WM_HELP for a control of the frame (window context).
    LRESULT helpForWindow(int controlId, DWORD contextId, POINT screen = POINT{0, 0}) {
        HELPINFO info{};
        info.cbSize = sizeof info;
        info.iContextType = HELPINFO_WINDOW;
        info.iCtrlId = controlId;
        info.dwContextId = contextId;
        info.MousePos = screen;
        return SendMessageA(hwnd, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    }
    LRESULT helpForMenu(int entryId, DWORD contextId) {
        HELPINFO info{};
        info.cbSize = sizeof info;
        info.iContextType = HELPINFO_MENUITEM;
        info.iCtrlId = entryId;
        info.dwContextId = contextId;
        return SendMessageA(hwnd, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    }
    void sendCode(unsigned int code) {
        SendMessageA(hwnd, static_cast<UINT>(GwWindow::message()), code, 0);
    }
    // A point of the frame's client area on the screen.
    POINT onScreen(int x, int y) {
        POINT point{x, y};
        ClientToScreen(hwnd, &point);
        return point;
    }

    TestFrame* frame = nullptr;
    HWND hwnd = nullptr;
    std::string path;
};

} // namespace

TEST_F(FrameHelpTest, HelpPathIsTheHelpFileBesideTheProgram) {
    EXPECT_EQ(std::string(frame->helpPath().c_str()), path);
    EXPECT_EQ(frame->helpFile(), String("hilfe.hlp"));
}

TEST_F(FrameHelpTest, HelpPathWithoutHelpFileIsTheApplicationsHelpName) {
    frame->setHelpFile("");
    mApplication.setHelpName("C:\\Hilfe\\anwendung.chm");
    EXPECT_EQ(frame->helpPath(), String("C:\\Hilfe\\anwendung.chm"));
}

TEST_F(FrameHelpTest, HelpPathWithoutAnyHelpNameIsTheApplicationBesideTheProgram) {
    frame->setHelpFile("");
    EXPECT_EQ(std::string(frame->helpPath().c_str()), executableDirectory() + "GwApplication");
    mApplication.setName("Anwendung");
    EXPECT_EQ(std::string(frame->helpPath().c_str()), executableDirectory() + "Anwendung");
}

TEST_F(FrameHelpTest, WindowHelpWithoutModeCallsWinHelpForAPopup) {
    EXPECT_EQ(helpForWindow(0x33, 0), 0);
    helpForWindow(0x33, 4711);
    std::vector<WinHelpCall> calls = gHelpCalls.requests();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].window, hwnd);
    EXPECT_EQ(calls[0].file, path);
    EXPECT_EQ(calls[0].command, static_cast<UINT>(HELP_CONTEXTPOPUP));
    // Without a context id: the frame's id with bit 15 in the high word, the control below.
    EXPECT_EQ(calls[0].data, static_cast<ULONG_PTR>((0x8021ull << 16) | 0x33));
    EXPECT_EQ(calls[1].data, 4711u);
    EXPECT_TRUE(gHelpCalls.shell.empty());
}

TEST_F(FrameHelpTest, MenuHelpWithoutModeCallsWinHelpForAContext) {
    helpForMenu(0xF826, 0);
    helpForMenu(0xF826, 99);
    std::vector<WinHelpCall> calls = gHelpCalls.requests();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].command, static_cast<UINT>(HELP_CONTEXT));
    EXPECT_EQ(calls[0].data, 0x21u); // the frame's id
    EXPECT_EQ(calls[1].command, static_cast<UINT>(HELP_CONTEXT));
    EXPECT_EQ(calls[1].data, 99u);
}

TEST_F(FrameHelpTest, AHelpFunctorReplacesWinHelp) {
    CountingFunctor functor;
    frame->setHelpFunctor(&functor);
    EXPECT_EQ(frame->helpFunctor(), &functor);
    helpForWindow(0x33, 0);
    helpForMenu(0x44, 0);
    EXPECT_EQ(functor.calls, 2);
    // F1 through the loop: the functor too.
    sendCode(GwCodeHelp);
    helpForWindow(0x33, 0);
    EXPECT_EQ(functor.calls, 3);
    EXPECT_TRUE(gHelpCalls.requests().empty());
    EXPECT_TRUE(gHelpCalls.shell.empty());
    frame->setHelpFunctor(nullptr);
}

TEST_F(FrameHelpTest, F1OpensTheHelpFileWithTheShellOnceThenTheModeIsSpent) {
    sendCode(GwCodeHelp);
    EXPECT_EQ(GwFrame::gHelpMode, static_cast<unsigned int>(GwCodeHelp));
    helpForWindow(0x33, 0);
    ASSERT_EQ(gHelpCalls.shell.size(), 1u);
    EXPECT_EQ(gHelpCalls.shell[0].file, path);
    EXPECT_EQ(gHelpCalls.shell[0].operation, "");
    EXPECT_EQ(gHelpCalls.shell[0].parameters, "");
    EXPECT_EQ(gHelpCalls.shell[0].show, SW_SHOW);
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
    // The next request is answered as without the key.
    helpForWindow(0x33, 0);
    EXPECT_EQ(gHelpCalls.shell.size(), 1u);
    EXPECT_EQ(gHelpCalls.requests().size(), 1u);
}

TEST_F(FrameHelpTest, F1ForAMenuOpensNothing) {
    sendCode(GwCodeHelp);
    helpForMenu(0x44, 0);
    EXPECT_TRUE(gHelpCalls.shell.empty());
    EXPECT_TRUE(gHelpCalls.requests().empty());
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
}

TEST_F(FrameHelpTest, HelpFileCodeOpensTheFileAtOnceAndTheModeStays) {
    sendCode(GwCodeHelpFile);
    ASSERT_EQ(gHelpCalls.shell.size(), 1u);
    EXPECT_EQ(gHelpCalls.shell[0].file, path);
    EXPECT_EQ(GwFrame::gHelpMode, static_cast<unsigned int>(GwCodeHelpFile));
    // Later requests keep opening the file, whatever their context.
    helpForMenu(0x44, 0);
    helpForWindow(0x33, 0);
    EXPECT_EQ(gHelpCalls.shell.size(), 3u);
    EXPECT_TRUE(gHelpCalls.requests().empty());
    // Until the help key comes through the loop.
    sendCode(GwCodeHelp);
    helpForMenu(0x44, 0);
    EXPECT_EQ(gHelpCalls.shell.size(), 3u);
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
}

TEST_F(FrameHelpTest, ShiftF1HelpsWithTheControlUnderThePointer) {
    frame->setFrameStyle(GwFrame::eContextHelp, true);
    HWND withId = rawWindow(hwnd, 0x51, 10, 10, 60, 30);
    HWND withoutId = rawWindow(hwnd, 0x52, 100, 10, 60, 30);
    SetWindowContextHelpId(withId, 777);

    sendCode(GwCodeContextHelp);
    EXPECT_EQ(GwFrame::gHelpMode, static_cast<unsigned int>(GwCodeContextHelp));
    helpForWindow(0, 0, onScreen(20, 20));
    sendCode(GwCodeContextHelp);
    helpForWindow(0, 0, onScreen(110, 20));
    EXPECT_EQ(GwFrame::gHelpMode, 0u);

    std::vector<WinHelpCall> calls = gHelpCalls.requests();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].command, static_cast<UINT>(HELP_CONTEXTPOPUP));
    EXPECT_EQ(calls[0].data, 777u);
    EXPECT_EQ(calls[0].file, path);
    EXPECT_EQ(calls[1].command, static_cast<UINT>(HELP_CONTEXTPOPUP));
    EXPECT_EQ(calls[1].data, static_cast<ULONG_PTR>((0x8021ull << 16) | 0x52));
    DestroyWindow(withoutId);
}

TEST_F(FrameHelpTest, ShiftF1OverADisabledControlFindsTheFrameAndHelpsWithNothing) {
    frame->setFrameStyle(GwFrame::eContextHelp, true);
    HWND disabled = rawWindow(hwnd, 0x53, 10, 10, 60, 30);
    SetWindowContextHelpId(disabled, 888);
    EnableWindow(disabled, FALSE);
    POINT point{20, 20};
    ASSERT_EQ(ChildWindowFromPointEx(hwnd, point,
                                     CWP_SKIPINVISIBLE | CWP_SKIPDISABLED | CWP_SKIPTRANSPARENT),
              hwnd);
    sendCode(GwCodeContextHelp);
    helpForWindow(0, 0, onScreen(20, 20));
    EXPECT_TRUE(gHelpCalls.requests().empty());
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
}

TEST_F(FrameHelpTest, ShiftF1WithoutTheContextHelpStyleHelpsWithNothing) {
    HWND control = rawWindow(hwnd, 0x51, 10, 10, 60, 30);
    SetWindowContextHelpId(control, 777);
    sendCode(GwCodeContextHelp);
    helpForWindow(0, 0, onScreen(20, 20));
    EXPECT_TRUE(gHelpCalls.requests().empty());
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
}

TEST_F(FrameHelpTest, OtherModesAreSpentWithoutHelp) {
    GwFrame::gHelpMode = 0x1013;
    helpForWindow(0x33, 0);
    EXPECT_TRUE(gHelpCalls.requests().empty());
    EXPECT_TRUE(gHelpCalls.shell.empty());
    EXPECT_EQ(GwFrame::gHelpMode, 0u);
}

TEST_F(FrameHelpTest, TheHelpKeyThroughTheMessageLoopSetsTheMode) {
    frame->setVisible(true);
    PostMessageA(hwnd, WM_KEYDOWN, VK_F1, 1);
    runLoopFor(50);
    EXPECT_EQ(GwFrame::gHelpMode, static_cast<unsigned int>(GwCodeHelp));

    setModifierKeys(false, true);
    PostMessageA(hwnd, WM_KEYDOWN, VK_F1, 1);
    runLoopFor(50);
    setModifierKeys(false, false);
    EXPECT_EQ(GwFrame::gHelpMode, static_cast<unsigned int>(GwCodeContextHelp));
}
