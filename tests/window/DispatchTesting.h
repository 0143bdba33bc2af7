// Helpers of the dispatcher tests: the thread's keyboard state, the fixture that starts
// every test with no entered window and no key held, and two sibling windows.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

#include <GwWindow.h>

#include "TestWindows.h"

namespace testing_dispatch {

using testing_windows::DispatchingWindow;
using testing_windows::rawWindow;
using testing_windows::Recorder;
using testing_windows::WindowCloser;

using Names = std::vector<std::string>;

// Sets the thread's keyboard state: the given virtual keys down, every other key up.
inline void setKeysDown(std::initializer_list<int> keys) {
    BYTE state[256] = {};
    for (int key : keys)
        state[key] = 0x80;
    SetKeyboardState(state);
}

// Every test starts with no entered window and no key held.
class DispatchFixture : public ::testing::Test {
protected:
    void SetUp() override {
        GwWindow::mEnterWindow = nullptr;
        setKeysDown({});
    }
    void TearDown() override { setKeysDown({}); }
};

// Two sibling child windows side by side in a top-level window, each with a recorder
// writing to one list.
struct TwoSiblings {
    TwoSiblings()
        : top(rawWindow()), closer{top}, left(rawWindow(top, 1, 0, 0, 100, 100)),
          right(rawWindow(top, 2, 100, 0, 100, 100)), topObject(new DispatchingWindow(top)),
          leftObject(new DispatchingWindow(left)), rightObject(new DispatchingWindow(right)),
          leftRecorder(false, GwResultContinue, &order, "left"),
          rightRecorder(false, GwResultContinue, &order, "right") {
        leftObject->add(&leftRecorder);
        rightObject->add(&rightRecorder);
    }
    HWND top;
    WindowCloser closer;
    HWND left;
    HWND right;
    DispatchingWindow* topObject;
    DispatchingWindow* leftObject;
    DispatchingWindow* rightObject;
    Names order;
    Recorder leftRecorder;
    Recorder rightRecorder;
};

} // namespace testing_dispatch
