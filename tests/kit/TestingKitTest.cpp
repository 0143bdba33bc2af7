// The application test kit (VmGuiTesting) on real windows: the loop until a condition or for
// a time, keystrokes and menu mnemonics as the platform handles them, dialogs found by their
// caption and answered, and a control found by its text.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include <GwFrame.h>
#include <GwMenu.h>
#include <GwThisDll.h>

#include <VmGuiTesting.h>

#include "TestWindows.h"

using namespace vmgui_testing;
using testing_windows::rawWindow;
using testing_windows::ScopedApplication;

namespace {

class TestingKitTest : public ::testing::Test {
protected:
    void TearDown() override {
        setModifierKeys(false, false);
        pumpMessages();
    }

    ScopedApplication mApplication;
};

bool quitQueued() {
    MSG msg;
    return PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
}

// The messages a raw window received, in their order.
struct Received {
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
};
std::vector<Received> gReceived;

LRESULT CALLBACK recordingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_KEYDOWN || msg == WM_KEYUP || msg == WM_CHAR)
        gReceived.push_back({msg, wParam, lParam});
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

bool gFlag = false;

void CALLBACK setFlag(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    gFlag = true;
}

// The command of the menu whose activation reached the frame's handlers.
class MenuChoice : public GwEventHandler {
public:
    MenuChoice() : GwEventHandler(false) {}
    int cbActivate(GwWindow& window) override {
        if (auto* const menu = dynamic_cast<GwMenu*>(&window))
            chosen = menu->selected();
        return GwResultHandled | GwResultStop;
    }
    unsigned long long chosen = 0;
};

} // namespace

TEST_F(TestingKitTest, LoopRunsUntilTheConditionHolds) {
    gFlag = false;
    SetTimer(nullptr, 0, 100, &setFlag);
    DWORD const start = GetTickCount();
    EXPECT_TRUE(runLoopUntil([] { return gFlag; }, 5000));
    EXPECT_LT(GetTickCount() - start, 4000u);
    EXPECT_FALSE(quitQueued());
}

TEST_F(TestingKitTest, LoopGivesUpAtTheLimit) {
    DWORD const start = GetTickCount();
    EXPECT_FALSE(runLoopUntil([] { return false; }, 200));
    EXPECT_GE(GetTickCount() - start, 190u);
    EXPECT_FALSE(quitQueued());
}

TEST_F(TestingKitTest, LoopEndedEarlyLeavesNoLateQuitBehind) {
    PostQuitMessage(0);
    runLoopFor(100); // ends at once with the quit already queued
    Sleep(200);
    pumpMessages(); // a timer left behind would post its quit now
    EXPECT_FALSE(quitQueued());
}

TEST_F(TestingKitTest, PostedKeyArrivesAsKeyDownCharacterAndKeyUp) {
    WNDCLASSA cls{};
    cls.lpfnWndProc = &recordingProc;
    cls.hInstance = GetModuleHandleA(nullptr);
    cls.lpszClassName = "VmGuiKitKeys";
    RegisterClassA(&cls);
    HWND const hwnd = CreateWindowExA(0, "VmGuiKitKeys", "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                      nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    WindowCloser closer{hwnd};
    gReceived.clear();
    pressKey(hwnd, 'A');
    ASSERT_EQ(gReceived.size(), 3u);
    EXPECT_EQ(gReceived[0].msg, static_cast<UINT>(WM_KEYDOWN));
    EXPECT_EQ(gReceived[0].wParam, static_cast<WPARAM>('A'));
    EXPECT_EQ(gReceived[0].lParam & 0xFFFF, 1);                    // one press
    EXPECT_EQ((gReceived[0].lParam >> 16) & 0xFF, 0x1E);           // the scan code of A
    EXPECT_EQ(gReceived[1].msg, static_cast<UINT>(WM_CHAR));       // translated by the pump
    EXPECT_EQ(gReceived[1].wParam, static_cast<WPARAM>('a'));      // no Shift held
    EXPECT_EQ(gReceived[2].msg, static_cast<UINT>(WM_KEYUP));      //
    EXPECT_NE(gReceived[2].lParam & (LPARAM(1) << 31), LPARAM(0)); // the key goes up
}

TEST_F(TestingKitTest, MenuMnemonicsChooseTheEntryThroughThePlatformsMenuLoop) {
    GwFrame* const frame = new GwFrame(1, 0, true);
    HWND const hwnd = static_cast<HWND>(frame->window());
    WindowCloser closer{hwnd};
    frame->setResource(GwThisDll::current().resource());
    frame->setMenuBar(100); // the library's "&Datei" menu: "&Neu" is 0xF820
    MenuChoice choice;
    frame->add(&choice);
    frame->setVisible(true);
    postMenuKeys(hwnd, "dn");
    EXPECT_TRUE(runLoopUntil([&] { return choice.chosen != 0; }, 5000));
    EXPECT_EQ(choice.chosen, 0xF820u);
    frame->remove(&choice);
}

TEST_F(TestingKitTest, AnswererPressesOnlyTheDialogWithItsCaption) {
    // A script answers the first box; the answerer waits for the second one's caption.
    DialogAnswerer answerer(IDNO, {}, "Zweite Frage");
    HWND seenFirst = nullptr;
    Script script({[&] {
        seenFirst = findDialog("Erste Frage");
        if (seenFirst == nullptr)
            return false;
        postButton(seenFirst, IDYES);
        return true;
    }});
    int const first = MessageBoxA(nullptr, "Eins?", "Erste Frage", MB_YESNO);
    EXPECT_NE(seenFirst, nullptr);
    EXPECT_EQ(first, IDYES);
    EXPECT_EQ(answerer.presses(), 0);
    int const second = MessageBoxA(nullptr, "Zwei?", "Zweite Frage", MB_YESNO);
    EXPECT_EQ(second, IDNO);
    EXPECT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.title, "Zweite Frage");
    EXPECT_EQ(answerer.presses(), 1);
    EXPECT_FALSE(answerer.timedOut());
}

TEST_F(TestingKitTest, ButtonFoundByItsTextWithOrWithoutTheMnemonic) {
    HWND const top = rawWindow();
    WindowCloser closer{top};
    HWND const button =
        CreateWindowExA(0, "BUTTON", "&Weiter", WS_CHILD | WS_VISIBLE, 0, 0, 80, 20, top,
                        reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
    EXPECT_EQ(childWithText(top, "Weiter"), button);
    EXPECT_EQ(childWithText(top, "&Weiter"), button);
    EXPECT_EQ(childWithText(top, "Zurück"), nullptr);
}

TEST_F(TestingKitTest, FindDialogIgnoresHiddenDialogsAndOtherCaptions) {
    EXPECT_EQ(findDialog("Nirgends"), nullptr);
    DialogAnswerer answerer(IDOK, [](HWND box) {
        EXPECT_EQ(findDialog("Nirgends"), nullptr);
        EXPECT_EQ(findDialog(nullptr), box);
        EXPECT_EQ(findTopLevel(kDialogClass, "Hinweis", GetCurrentProcessId()), box);
    });
    MessageBoxA(nullptr, "Text", "Hinweis", MB_OK);
    EXPECT_TRUE(answerer.seen.found);
    EXPECT_EQ(findDialog("Hinweis"), nullptr); // gone
}
