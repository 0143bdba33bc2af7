// Helpers of the list, combo box and tab tests: an item class that counts its live
// instances, a procedure that records what the library sends to a platform control, and the
// fixture with a bound top-level parent.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include <GwEventData.h>
#include <GwItem.h>

#include "TestWindows.h"

namespace testing_lists {

using namespace testing_windows;

// A text item with a class record of its own, so that the lists copy it through its factory;
// live counts every instance in existence.
class CountedItem : public GwTextItem {
    GW_DECLARE_CLASS(CountedItem)

public:
    CountedItem(unsigned long long id, String const& text) : GwTextItem(id, text) { ++live; }
    CountedItem(CountedItem const& other) : GwTextItem(other) { ++live; }
    CountedItem& operator=(CountedItem const& other) = default;
    ~CountedItem() override { --live; }

    static CountedItem* newInstance(EventData const* data) {
        auto const* eventData = dynamic_cast<GwEventData const*>(data);
        auto const* item =
            eventData != nullptr ? dynamic_cast<CountedItem const*>(eventData->item()) : nullptr;
        return item != nullptr ? new CountedItem(*item) : new CountedItem(0, "");
    }

    static inline int live = 0;
};

// Records the messages that reach a platform control through it and passes them on. Put in
// place before a library object wraps the control, it is the procedure that the object
// saves, so it sees what the library sends to the platform.
class Spy {
public:
    explicit Spy(HWND hwnd) {
        SetPropA(hwnd, "VmGuiTestSpy", this);
        mNext = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy::proc)));
    }
    Spy(Spy const&) = delete;
    Spy& operator=(Spy const&) = delete;

    struct Sent {
        UINT msg;
        WPARAM wParam;
        LPARAM lParam;
    };
    std::vector<Sent> sent;

    // The sent messages with this number.
    std::vector<Sent> of(UINT msg) const {
        std::vector<Sent> out;
        for (Sent const& one : sent) {
            if (one.msg == msg)
                out.push_back(one);
        }
        return out;
    }

private:
    static LRESULT CALLBACK proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
        auto* spy = static_cast<Spy*>(GetPropA(hwnd, "VmGuiTestSpy"));
        if (msg == WM_NCDESTROY)
            RemovePropA(hwnd, "VmGuiTestSpy");
        spy->sent.push_back({msg, wParam, lParam});
        return CallWindowProcA(spy->mNext, hwnd, msg, wParam, lParam);
    }

    WNDPROC mNext;
};

inline std::string lineText(HWND list, int line, UINT getText = LB_GETTEXT,
                            UINT getLength = LB_GETTEXTLEN) {
    LRESULT const length = SendMessageA(list, getLength, static_cast<WPARAM>(line), 0);
    if (length < 0)
        return "<none>";
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(list, getText, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

inline std::vector<std::string> lineTexts(HWND list, UINT getText = LB_GETTEXT,
                                          UINT getLength = LB_GETTEXTLEN,
                                          UINT getCount = LB_GETCOUNT) {
    std::vector<std::string> out;
    LRESULT const count = SendMessageA(list, getCount, 0, 0);
    for (int i = 0; i < count; ++i)
        out.push_back(lineText(list, i, getText, getLength));
    return out;
}

// How often the handler's callback was called.
inline long count(Recorder const& handler, std::string const& callback) {
    long calls = 0;
    for (Call const& call : handler.calls)
        calls += call.callback == callback ? 1 : 0;
    return calls;
}

// Posts a click (pressed and released) on a line of a list box; answers the point.
inline LPARAM clickLine(HWND list, int index) {
    RECT line{};
    SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&line));
    LPARAM const at = MAKELPARAM(line.left + 5, (line.top + line.bottom) / 2);
    PostMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(list, WM_LBUTTONUP, 0, at);
    return at;
}

inline HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// A bound top-level window (its handlers see the controls' bubbling events) with the
// application's start-up hooks run.
class ListFixture : public ::testing::Test {
protected:
    void SetUp() override { CountedItem::live = 0; }

    ScopedApplication mApplication;
    TopLevel mTop;
};

} // namespace testing_lists
