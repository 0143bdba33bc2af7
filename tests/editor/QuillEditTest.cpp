// The editor window over the stand-in editor: the document opened in the parent, the edit
// area bound and subclassed, the counted hook, input offered to the handlers first, the
// editor's notifications as cbNotify (with the MDI and frame rules for a notification that
// names no window), and the edit area after its editor object has gone.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <vector>

#include <GwFrame.h>
#include <GwMDIFrame.h>
#include <GwQuillEdit.h>

#include "BreakpointCounter.h"
#include "QuillTesting.h"
#include "TestWindows.h"

using namespace testing_quill;
using testing_windows::DispatchingWindow;
using testing_windows::pumpMessages;
using testing_windows::rawWindow;
using testing_windows::Recorder;

namespace {

class QuillEditTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(useStandIn());
        ASSERT_NE(mFrame.window(), nullptr);
        mHolder = new DispatchingWindow(rawWindow(frameHwnd(), 5, 0, 0, 300, 200));
    }
    void TearDown() override {
        pumpMessages();
        removeQuillPath();
    }

    HWND frameHwnd() const { return static_cast<HWND>(mFrame.window()); }
    HWND holderHwnd() const { return static_cast<HWND>(mHolder->window()); }

    std::vector<Call> opened() const {
        std::vector<Call> out;
        for (Call const& call : calls())
            if (call.name == "QuillDll_OpenDocExt")
                out.push_back(call);
        return out;
    }

    testing_windows::ScopedApplication mApplication;
    GwFrame mFrame{1, 0, false};
    DispatchingWindow* mHolder = nullptr; // owned by its window
};

void* const kDocument = reinterpret_cast<void*>(0x1234);

LONG_PTR procedureOf(HWND hwnd) {
    return GetWindowLongPtrA(hwnd, GWLP_WNDPROC);
}

} // namespace

TEST_F(QuillEditTest, OpensTheDocumentAndBindsItsEditArea) {
    int const before = GwQuillEdit::count;
    {
        GwQuillEdit edit(*mHolder, kDocument, false);
        std::vector<Call> const calls = opened();
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_EQ(calls[0].slots[0], 0x1234);
        EXPECT_EQ(reinterpret_cast<HWND>(calls[0].slots[1]), holderHwnd());
        EXPECT_EQ(calls[0].slots[2], 0);
        EXPECT_EQ(static_cast<int>(calls[0].slots[3]), 1);
        EXPECT_EQ(static_cast<int>(calls[0].slots[4]), 1); // editable
        EXPECT_EQ(static_cast<int>(calls[0].slots[5]), 0);
        ASSERT_NE(edit.window(), nullptr);
        EXPECT_EQ(static_cast<HWND>(edit.window()), lastEditArea());
        EXPECT_EQ(GwWindow::window(edit.window(), false), &edit);
        EXPECT_EQ(procedureOf(lastEditArea()), procedureOf(holderHwnd())); // the library's
        EXPECT_EQ(GwQuillEdit::count, before + 1);
        EXPECT_NE(GwQuillEdit::hHook, nullptr);
        EXPECT_NE(GwQuillEdit::msgNotify, 0u);
        EXPECT_EQ(GwQuillEdit::msgNotify, RegisterWindowMessageA("QuillDllNotification"));
    }
    EXPECT_EQ(GwQuillEdit::count, before);
}

TEST_F(QuillEditTest, ReadOnlyOpensTheDocumentNotEditable) {
    GwQuillEdit edit(*mHolder, kDocument, true);
    std::vector<Call> const calls = opened();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(static_cast<int>(calls[0].slots[4]), 0);
}

TEST_F(QuillEditTest, FileNameAlwaysOpensTheDocument) {
    GwQuillEdit first(*mHolder, kDocument, String("brief.qwd"));
    GwQuillEdit second(*mHolder, kDocument, "brief.qwd"); // not the bool form
    std::vector<Call> const calls = opened();
    ASSERT_EQ(calls.size(), 2u);
    for (Call const& call : calls) {
        EXPECT_NE(call.slots[2], 0);
        EXPECT_EQ(static_cast<int>(call.slots[3]), 1);
        EXPECT_EQ(static_cast<int>(call.slots[4]), 0);
        EXPECT_EQ(static_cast<int>(call.slots[5]), 0);
    }
    EXPECT_NE(first.window(), nullptr);
    EXPECT_NE(second.window(), nullptr);
}

TEST_F(QuillEditTest, SecondEditorBindsWithoutOpeningAndTheHookIsCounted) {
    int const before = GwQuillEdit::count;
    auto* first = new GwQuillEdit(*mHolder, kDocument, false);
    auto* second = new GwQuillEdit(*mHolder, kDocument, false);
    EXPECT_EQ(opened().size(), 1u);
    EXPECT_EQ(second->window(), first->window());
    EXPECT_EQ(GwQuillEdit::count, before + 2);
    auto* handler = new Recorder(true, GwResultHandled);
    second->add(handler);
    delete first;
    EXPECT_EQ(GwQuillEdit::count, before + 1);
    EXPECT_NE(GwQuillEdit::hHook, nullptr);
    // The area stays with the second object.
    EXPECT_EQ(GwWindow::window(second->window(), false), second);
    SendMessageA(static_cast<HWND>(second->window()), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_EQ(handler->names(), std::vector<std::string>{"button"});
    delete second;
    EXPECT_EQ(GwQuillEdit::count, before);
    if (before == 0) {
        EXPECT_EQ(GwQuillEdit::hHook, nullptr);
    }
}

TEST_F(QuillEditTest, NoDocumentAndNoEditAreaLeavesItUnbound) {
    int const before = GwQuillEdit::count;
    GwQuillEdit edit(*mHolder, nullptr, false);
    EXPECT_TRUE(opened().empty());
    EXPECT_EQ(edit.window(), nullptr);
    EXPECT_EQ(GwQuillEdit::count, before);
    EXPECT_EQ(GwQuillEdit::newInstance(nullptr), nullptr);
}

TEST_F(QuillEditTest, EmptyParentTakesItsParentsClientArea) {
    auto* empty = new DispatchingWindow(rawWindow(holderHwnd(), 6, 10, 10, 0, 0));
    GwQuillEdit edit(*empty, kDocument, false);
    RECT room{};
    GetClientRect(static_cast<HWND>(empty->window()), &room);
    EXPECT_EQ(room.right, 300);
    EXPECT_EQ(room.bottom, 200);
    RECT area{};
    GetClientRect(static_cast<HWND>(edit.window()), &area);
    EXPECT_EQ(area.right, 300);
}

TEST_F(QuillEditTest, InputGoesToTheHandlersFirst) {
    GwQuillEdit edit(*mHolder, kDocument, false);
    HWND const area = static_cast<HWND>(edit.window());
    auto* handler = new Recorder(true, GwResultHandled);
    edit.add(handler);
    int const buttons = received(WM_LBUTTONDOWN);
    int const keys = received(WM_KEYDOWN);
    int const characters = received(WM_CHAR);
    EXPECT_EQ(SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(SendMessageA(area, WM_KEYDOWN, VK_LEFT, 0), 1);
    EXPECT_EQ(SendMessageA(area, WM_CHAR, 'a', 0), 1);
    EXPECT_EQ(handler->names(), (std::vector<std::string>{"button", "key", "key"}));
    // Taken: the editor never saw them.
    EXPECT_EQ(received(WM_LBUTTONDOWN), buttons);
    EXPECT_EQ(received(WM_KEYDOWN), keys);
    EXPECT_EQ(received(WM_CHAR), characters);

    handler->result = GwResultContinue;
    SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageA(area, WM_KEYDOWN, VK_LEFT, 0);
    SendMessageA(area, WM_CHAR, 'a', 0);
    EXPECT_EQ(received(WM_LBUTTONDOWN), buttons + 1);
    EXPECT_EQ(received(WM_KEYDOWN), keys + 1);
    EXPECT_EQ(received(WM_CHAR), characters + 1);
}

TEST_F(QuillEditTest, NotificationNamingItsWindowReachesCbNotify) {
    GwQuillEdit edit(*mHolder, kDocument, false);
    auto* handler = new Recorder(true);
    edit.add(handler);
    notify(holderHwnd(), MAKEWPARAM(42, 7), reinterpret_cast<LPARAM>(holderHwnd()));
    pumpMessages();
    ASSERT_EQ(handler->names(), std::vector<std::string>{"notify"});
    EXPECT_EQ(handler->calls[0].a, 42u);
    EXPECT_EQ(handler->calls[0].window, &edit);
}

TEST_F(QuillEditTest, NotificationWithoutWindowInAFrameReachesItsClientsEditor) {
    mFrame.setClient(mHolder);
    GwQuillEdit edit(*mHolder, kDocument, false);
    auto* handler = new Recorder(true);
    edit.add(handler);
    notify(static_cast<HWND>(edit.window()), 9, 0);
    pumpMessages();
    ASSERT_EQ(handler->names(), std::vector<std::string>{"notify"});
    EXPECT_EQ(handler->calls[0].a, 9u);
}

TEST_F(QuillEditTest, NotificationWithoutWindowInAnMdiFrameReachesTheActiveChildsEditor) {
    GwMDIFrame frame(2);
    ASSERT_NE(frame.mdiClient(), nullptr);
    auto* child = new GwMDIChildFrame(frame);
    ASSERT_NE(child->window(), nullptr);
    child->GwWindow::setVisible(true);
    SendMessageA(static_cast<HWND>(frame.mdiClient()->window()), WM_MDIACTIVATE,
                 reinterpret_cast<WPARAM>(child->window()), 0);
    auto* holder =
        new DispatchingWindow(rawWindow(static_cast<HWND>(child->window()), 7, 0, 0, 200, 100));
    ASSERT_EQ(GetWindow(static_cast<HWND>(child->window()), GW_CHILD),
              static_cast<HWND>(holder->window()));
    GwQuillEdit edit(*holder, kDocument, false);
    ASSERT_NE(edit.window(), nullptr);
    auto* handler = new Recorder(true);
    edit.add(handler);
    // Sent to the MDI frame itself, naming no window.
    notify(static_cast<HWND>(frame.window()), 77, 0x5);
    pumpMessages();
    ASSERT_EQ(handler->names(), std::vector<std::string>{"notify"});
    EXPECT_EQ(handler->calls[0].a, 77u);
}

TEST_F(QuillEditTest, EditAreaKeepsWorkingAfterItsEditorHasGone) {
    BreakpointCounter breaks;
    auto* edit = new GwQuillEdit(*mHolder, kDocument, false);
    HWND const area = static_cast<HWND>(edit->window());
    LONG_PTR const bound = procedureOf(area);
    delete edit;
    // The library's procedure stays in place.
    EXPECT_EQ(procedureOf(area), bound);
    int const buttons = received(WM_LBUTTONDOWN);
    SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(received(WM_LBUTTONDOWN), buttons + 2);
    EXPECT_EQ(breaks.count(), 0);

    // A new editor object over the same area: each message reaches the editor once.
    GwQuillEdit again(*mHolder, kDocument, false);
    EXPECT_EQ(static_cast<HWND>(again.window()), area);
    EXPECT_EQ(opened().size(), 1u);
    SendMessageA(area, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(received(WM_LBUTTONDOWN), buttons + 3);
    EXPECT_EQ(breaks.count(), 0);
}
