#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestWindows.h"

using namespace testing_windows;

namespace {

UINT const kCustom = WM_USER + 7;

// What a window saw: the codes of the registered message (for 0x1002 the queued message it
// was offered) and the other messages that reached its msgHandler.
struct Seen {
    std::vector<unsigned long long> codes; // wParam of each registered message
    std::vector<MSG> offered;              // lParam of each 0x1002 question
    std::vector<UINT> dispatched;          // other messages
};

// A window that records what reaches it and answers the pre-translation question with
// `take` for the messages listed there.
class LoopWindow : public GwControl {
public:
    LoopWindow(HWND hwnd, std::vector<std::string>* order = nullptr, std::string name = "")
        : GwControl(hwnd), mOrder(order), mName(std::move(name)) {}

    Seen seen;
    std::vector<UINT> take; // messages the window takes when they are offered

    std::vector<UINT> offeredMessages() const {
        std::vector<UINT> out;
        for (MSG const& msg : seen.offered)
            out.push_back(msg.message);
        return out;
    }
    bool wasDispatched(UINT message) const {
        for (UINT one : seen.dispatched) {
            if (one == message)
                return true;
        }
        return false;
    }

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == GwWindow::message()) {
            seen.codes.push_back(wParam);
            if (wParam == GwCodePreTranslate) {
                MSG const& queued = *reinterpret_cast<MSG const*>(lParam);
                seen.offered.push_back(queued);
                note("offered", queued.message);
                for (UINT one : take) {
                    if (one == queued.message)
                        return 1;
                }
                return 0;
            }
            note("code", static_cast<UINT>(wParam));
        } else {
            seen.dispatched.push_back(static_cast<UINT>(msg));
            note("got", static_cast<UINT>(msg));
        }
        return GwControl::msgHandler(msg, wParam, lParam);
    }

private:
    void note(char const* what, UINT value) {
        if (mOrder != nullptr)
            mOrder->push_back(mName + ":" + what + ":" + std::to_string(value));
    }

    std::vector<std::string>* mOrder;
    std::string mName;
};

// LPARAM of a key message: repeat count and scan code; transition bits for a release.
LPARAM keyParam(WORD repeat, bool up = false) {
    LPARAM lParam = repeat | (0x3B << 16); // scan code of F1
    if (up)
        lParam |= 0xC0000000;
    return lParam;
}

class MessageLoop : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(GwWindow::message(), 0u) << "the application registers GwWM_Message";
        setModifierKeys(false, false);
        mTopHwnd = rawWindow();
        mChildHwnd = rawWindow(mTopHwnd, 5, 10, 10, 50, 30);
        mTop = new LoopWindow(mTopHwnd, &mOrder, "top");
        mChild = new LoopWindow(mChildHwnd, &mOrder, "child");
        pumpMessages(); // whatever creating the windows queued
        mTop->seen = Seen();
        mChild->seen = Seen();
        mOrder.clear();
    }
    void TearDown() override {
        setModifierKeys(false, false);
        DestroyWindow(mTopHwnd); // deletes both objects
    }

    // Runs the library's loop until the queued messages are done.
    void runLoop() { runLoopFor(100); }

    ScopedApplication mApplication;
    HWND mTopHwnd = nullptr;
    HWND mChildHwnd = nullptr;
    LoopWindow* mTop = nullptr;
    LoopWindow* mChild = nullptr;
    std::vector<std::string> mOrder;
};

} // namespace

TEST_F(MessageLoop, F1SendsHelpToTheTopLevelWindow) {
    PostMessageA(mTopHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    runLoop();
    EXPECT_EQ(mTop->seen.codes, std::vector<unsigned long long>{GwCodeHelp});
    EXPECT_FALSE(mTop->wasDispatched(WM_KEYDOWN)) << "F1 is never dispatched";
    EXPECT_FALSE(mTop->wasDispatched(WM_HELP));
}

TEST_F(MessageLoop, F1PostedToAChildSendsHelpToItsTopLevelWindow) {
    PostMessageA(mChildHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    runLoop();
    EXPECT_EQ(mTop->seen.codes, std::vector<unsigned long long>{GwCodeHelp});
    EXPECT_TRUE(mChild->seen.codes.empty());
    EXPECT_FALSE(mChild->wasDispatched(WM_KEYDOWN));
}

TEST_F(MessageLoop, ShiftF1SendsContextHelp) {
    setModifierKeys(false, true);
    PostMessageA(mChildHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    runLoop();
    EXPECT_EQ(mTop->seen.codes, std::vector<unsigned long long>{GwCodeContextHelp});
    EXPECT_FALSE(mChild->wasDispatched(WM_KEYDOWN));
}

TEST_F(MessageLoop, ControlF1IsSwallowedAndNothingIsSent) {
    setModifierKeys(true, false);
    PostMessageA(mTopHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    PostMessageA(mChildHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    runLoop();
    EXPECT_TRUE(mTop->seen.codes.empty());
    EXPECT_TRUE(mChild->seen.codes.empty());
    EXPECT_FALSE(mTop->wasDispatched(WM_KEYDOWN));
    EXPECT_FALSE(mChild->wasDispatched(WM_KEYDOWN));
}

TEST_F(MessageLoop, ControlShiftF1IsSwallowedAndNothingIsSent) {
    setModifierKeys(true, true);
    PostMessageA(mTopHwnd, WM_KEYDOWN, VK_F1, keyParam(1));
    runLoop();
    EXPECT_TRUE(mTop->seen.codes.empty());
    EXPECT_FALSE(mTop->wasDispatched(WM_KEYDOWN));
}

TEST_F(MessageLoop, F1ReleaseIsSwallowedAndNothingIsSent) {
    PostMessageA(mTopHwnd, WM_KEYUP, VK_F1, keyParam(1, true));
    PostMessageA(mChildHwnd, WM_KEYUP, VK_F1, keyParam(1, true));
    runLoop();
    EXPECT_TRUE(mTop->seen.codes.empty());
    EXPECT_TRUE(mChild->seen.codes.empty());
    EXPECT_FALSE(mTop->wasDispatched(WM_KEYUP));
    EXPECT_FALSE(mChild->wasDispatched(WM_KEYUP));
}

TEST_F(MessageLoop, RepeatedF1IsSwallowedAndNothingIsSent) {
    PostMessageA(mTopHwnd, WM_KEYDOWN, VK_F1, keyParam(2) | 0x40000000);
    PostMessageA(mTopHwnd, WM_KEYDOWN, VK_F1, keyParam(5) | 0x40000000);
    runLoop();
    EXPECT_TRUE(mTop->seen.codes.empty());
    EXPECT_FALSE(mTop->wasDispatched(WM_KEYDOWN));
}

TEST_F(MessageLoop, EveryQueuedMessageIsOfferedToItsTopLevelWindowFirst) {
    PostMessageA(mChildHwnd, kCustom, 11, 22);
    PostMessageA(mTopHwnd, kCustom, 33, 44);
    runLoop();
    ASSERT_EQ(mTop->offeredMessages(), (std::vector<UINT>{kCustom, kCustom}));
    EXPECT_TRUE(mChild->seen.offered.empty()) << "only the top-level window is asked";
    MSG const& first = mTop->seen.offered[0];
    EXPECT_EQ(first.hwnd, mChildHwnd);
    EXPECT_EQ(first.wParam, 11u);
    EXPECT_EQ(first.lParam, 22);
    MSG const& second = mTop->seen.offered[1];
    EXPECT_EQ(second.hwnd, mTopHwnd);
    EXPECT_EQ(second.wParam, 33u);
    EXPECT_EQ(second.lParam, 44);

    std::string const custom = std::to_string(kCustom);
    EXPECT_EQ(mOrder, (std::vector<std::string>{"top:offered:" + custom, "child:got:" + custom,
                                                "top:offered:" + custom, "top:got:" + custom}));
}

TEST_F(MessageLoop, MessageTakenByTheTopLevelWindowIsNotDispatched) {
    mTop->take = {kCustom};
    PostMessageA(mChildHwnd, kCustom, 1, 0);
    PostMessageA(mChildHwnd, kCustom + 1, 2, 0);
    PostMessageA(mTopHwnd, kCustom, 3, 0);
    runLoop();
    EXPECT_EQ(mTop->offeredMessages(), (std::vector<UINT>{kCustom, kCustom + 1, kCustom}));
    EXPECT_FALSE(mChild->wasDispatched(kCustom));
    EXPECT_FALSE(mTop->wasDispatched(kCustom));
    EXPECT_TRUE(mChild->wasDispatched(kCustom + 1)) << "what is not taken is dispatched";
}

TEST_F(MessageLoop, TheRegisteredMessageItselfIsNotOffered) {
    auto const registered = static_cast<UINT>(GwWindow::message());
    PostMessageA(mTopHwnd, registered, 0x4321, 0);
    PostMessageA(mChildHwnd, registered, 0x4322, 0);
    runLoop();
    EXPECT_TRUE(mTop->seen.offered.empty());
    EXPECT_EQ(mTop->seen.codes, std::vector<unsigned long long>{0x4321});
    EXPECT_EQ(mChild->seen.codes, std::vector<unsigned long long>{0x4322})
        << "it is dispatched to the window it was posted to";
}

TEST_F(MessageLoop, OtherKeysAreOfferedThenTranslatedAndDispatched) {
    PostMessageA(mChildHwnd, WM_KEYDOWN, 'A', 1 | (0x1E << 16));
    runLoop();
    std::vector<UINT> const offered = mTop->offeredMessages();
    ASSERT_FALSE(offered.empty());
    EXPECT_EQ(offered[0], static_cast<UINT>(WM_KEYDOWN));
    EXPECT_TRUE(mChild->wasDispatched(WM_KEYDOWN));
    EXPECT_TRUE(mChild->wasDispatched(WM_CHAR)) << "TranslateMessage made a character";
    EXPECT_EQ(offered.back(), static_cast<UINT>(WM_CHAR)) << "the character is queued too";
}

TEST_F(MessageLoop, LoopEndsWithTheQuitMessage) {
    PostMessageA(mTopHwnd, kCustom, 0, 0);
    PostQuitMessage(0);
    GwWindow::msgLoop();
    EXPECT_TRUE(mTop->wasDispatched(kCustom)) << "posted messages come before the end";
    MSG msg;
    EXPECT_FALSE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE))
        << "the loop consumed the quit message";
}

// The end-to-end click of a push button in a dialog, with a raw dialog-class window standing
// in for the library's dialog.
namespace {

// Answers the pre-translation question with IsDialogMessageA, as dialogs do.
class StandInDialog : public GwWindow {
public:
    explicit StandInDialog(HWND hwnd) : GwWindow(hwnd) {}

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == GwWindow::message() && wParam == GwCodePreTranslate)
            return IsDialogMessageA(static_cast<HWND>(window()), reinterpret_cast<MSG*>(lParam));
        return GwWindow::msgHandler(msg, wParam, lParam);
    }
};

// Records the activation and ends the loop.
class Ending : public Recorder {
public:
    using Recorder::Recorder;
    int cbActivate(GwWindow& w) override {
        PostQuitMessage(0);
        return Recorder::cbActivate(w);
    }
};

bool gTimedOut = false;

// Ends a loop that nothing else ended in time.
void CALLBACK onSafetyTimer(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    gTimedOut = true;
    PostQuitMessage(0);
}

class MessageLoopDialogClick : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(GwWindow::message(), 0u);
        mDialogHwnd =
            CreateWindowExA(WS_EX_DLGMODALFRAME, "#32770", "Dialog",
                            WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 50, 50, 300, 200,
                            nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(mDialogHwnd, nullptr);
        mButtonHwnd = CreateWindowExA(
            0, "Button", "Press", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 20, 20, 100,
            30, mDialogHwnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(100)),
            GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(mButtonHwnd, nullptr);
        mDialog = new StandInDialog(mDialogHwnd);
        mButton = new StandInButton(mButtonHwnd);
        pumpMessages();
    }
    void TearDown() override {
        if (IsWindow(mDialogHwnd))
            DestroyWindow(mDialogHwnd);
    }

    // Presses and releases the left button inside the button, then runs the library's loop
    // until a handler ends it or two seconds have passed. False on the time-out.
    bool clickAndRun() {
        LPARAM inside = MAKELPARAM(30, 12);
        PostMessageA(mButtonHwnd, WM_LBUTTONDOWN, MK_LBUTTON, inside);
        PostMessageA(mButtonHwnd, WM_LBUTTONUP, 0, inside);
        gTimedOut = false;
        UINT_PTR timer = SetTimer(nullptr, 0, 2000, &onSafetyTimer);
        GwWindow::msgLoop();
        if (!gTimedOut)
            KillTimer(nullptr, timer);
        return !gTimedOut;
    }

    ScopedApplication mApplication;
    HWND mDialogHwnd = nullptr;
    HWND mButtonHwnd = nullptr;
    StandInDialog* mDialog = nullptr;
    StandInButton* mButton = nullptr;
    std::vector<std::string> mOrder;
};

} // namespace

TEST_F(MessageLoopDialogClick, ClickOnAButtonActivatesItsHandlersThenTheDialogs) {
    Recorder buttonHandler(false, GwResultContinue, &mOrder, "button");
    Ending dialogHandler(false, GwResultContinue, &mOrder, "dialog");
    mButton->add(&buttonHandler);
    mDialog->add(&dialogHandler);

    ASSERT_TRUE(clickAndRun()) << "no activation reached the dialog within two seconds";
    EXPECT_EQ(activations(mOrder),
              (std::vector<std::string>{"button:activate", "dialog:activate"}));
    for (Recorder const* handler : {static_cast<Recorder const*>(&buttonHandler),
                                    static_cast<Recorder const*>(&dialogHandler)}) {
        for (Call const& call : handler->calls) {
            if (call.callback == "activate") {
                EXPECT_EQ(call.window, mButton) << "the handlers hear of the button";
            }
        }
    }
    DestroyWindow(mDialogHwnd); // before the handlers go
}

TEST_F(MessageLoopDialogClick, ButtonHandlersRunLastAddedFirst) {
    Recorder older(false, GwResultContinue, &mOrder, "older");
    Recorder newer(false, GwResultContinue, &mOrder, "newer");
    Ending dialogHandler(false, GwResultContinue, &mOrder, "dialog");
    mButton->add(&older);
    mButton->add(&newer);
    mDialog->add(&dialogHandler);

    ASSERT_TRUE(clickAndRun());
    EXPECT_EQ(activations(mOrder),
              (std::vector<std::string>{"newer:activate", "older:activate", "dialog:activate"}));
    DestroyWindow(mDialogHwnd);
}

TEST_F(MessageLoopDialogClick, ClickHandledByTheButtonDoesNotReachTheDialog) {
    Ending buttonHandler(false, GwResultHandled, &mOrder, "button");
    Recorder dialogHandler(false, GwResultContinue, &mOrder, "dialog");
    mButton->add(&buttonHandler);
    mDialog->add(&dialogHandler);

    ASSERT_TRUE(clickAndRun());
    EXPECT_EQ(activations(mOrder), std::vector<std::string>{"button:activate"});
    for (Call const& call : dialogHandler.calls)
        EXPECT_NE(call.callback, "activate");
    DestroyWindow(mDialogHwnd);
}
