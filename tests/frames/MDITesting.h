// Helpers of the MDI frame tests: a frame that opens its protected parts, children that tell
// when their objects go, and the fixture with a frame and its client.
#pragma once

#include <windows.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <GwMDIFrame.h>

#include "FrameTesting.h"

namespace testing_mdi {

using namespace testing_frames;
using namespace testing_windows;

// An MDI frame whose protected parts the tests reach.
class TestMDIFrame : public GwMDIFrame {
public:
    using GwMDIFrame::callDefHandler;
    using GwMDIFrame::closeAll;
    using GwMDIFrame::GwMDIFrame;
    using GwMDIFrame::msgHandler;
    using GwMDIFrame::msgHandlerCommand;

    HWND hwnd() const { return static_cast<HWND>(window()); }
    HWND clientWindow() const {
        return mdiClient() != nullptr ? static_cast<HWND>(mdiClient()->window()) : nullptr;
    }

    // The library's file menu (menu 100 of the library's resources) as the menu bar.
    void useLibraryMenuBar() {
        setResource(GwThisDll::current().resource());
        setMenuBar(100);
    }
};

// Set when a child's object is deleted; shared, since the object may outlive the test body.
using Flag = std::shared_ptr<bool>;

// A child frame that tells when its object is deleted.
class TrackedChild : public GwMDIChildFrame {
public:
    TrackedChild(GwMDIFrame& frame, Flag* deleted) : GwMDIChildFrame(frame) {
        *deleted = std::make_shared<bool>(false);
        mDeleted = *deleted;
    }
    ~TrackedChild() override { *mDeleted = true; }

    using GwMDIChildFrame::callDefHandler;
    using GwMDIChildFrame::msgHandler;

    HWND hwnd() const { return static_cast<HWND>(window()); }

private:
    Flag mDeleted;
};

inline HWND activeChild(HWND client) {
    return reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
}

// The bytes of a menu entry's text, as the menu holds them (Windows-1252).
inline std::string menuText(HMENU menu, UINT item, UINT flags) {
    char text[128] = {};
    GetMenuStringA(menu, item, text, sizeof text, flags);
    return text;
}

// The callbacks among names that are one of wanted, in their order.
inline std::vector<std::string> only(std::vector<std::string> const& names,
                                     std::vector<std::string> const& wanted) {
    std::vector<std::string> out;
    for (std::string const& name : names) {
        if (std::find(wanted.begin(), wanted.end(), name) != wanted.end())
            out.push_back(name);
    }
    return out;
}

class MDITest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        frame = new TestMDIFrame(1);
        hwnd = frame->hwnd();
        client = frame->clientWindow();
        ASSERT_NE(hwnd, nullptr);
        ASSERT_NE(client, nullptr);
    }
    void TearDown() override {
        delete frame;
        setModifierKeys(false, false);
        FrameFixture::TearDown();
        quitPosted();
    }

    // Shows the frame at a fixed size.
    void showFrame() {
        SetWindowPos(hwnd, nullptr, 10, 10, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
        frame->setVisible(true);
    }

    // A new, shown child; the latest one is the active child.
    TrackedChild* addChild(Flag* deleted) {
        auto* child = new TrackedChild(*frame, deleted);
        child->setVisible(true);
        return child;
    }

    // The window menu merged into the library's file menu bar: [Datei, Fenster, Hilfe].
    HMENU mergeWindowMenu() {
        frame->useLibraryMenuBar();
        frame->setMenuStyle(GwFrame::eWindowMenu | GwFrame::eHelpMenu);
        HMENU const bar = GetMenu(hwnd);
        return GetMenuItemCount(bar) == 3 ? GetSubMenu(bar, 1) : nullptr;
    }

    // Chooses a command from a popup menu as the user does: the entry is selected, then
    // its command arrives.
    void choose(HMENU popup, unsigned int command) {
        SendMessageA(hwnd, WM_MENUSELECT, MAKEWPARAM(command, MF_STRING),
                     reinterpret_cast<LPARAM>(popup));
        SendMessageA(hwnd, WM_COMMAND, MAKEWPARAM(command, 0), 0);
    }

    TestMDIFrame* frame = nullptr;
    HWND hwnd = nullptr;
    HWND client = nullptr;
};

} // namespace testing_mdi
