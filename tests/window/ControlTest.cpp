#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <GwEventData.h>

#include "TestWindows.h"

using namespace testing_windows;

namespace {

// A control with the protected parts in reach.
class TestControl : public GwControl {
public:
    TestControl() = default;
    explicit TestControl(HWND hwnd) : GwControl(hwnd) {}
    using GwControl::setControlFont;
};

HWND button(HWND parent, char const* text = "Button", int id = 1, DWORD style = BS_PUSHBUTTON,
            DWORD exStyle = 0, int x = 0, int y = 0, int width = 80, int height = 24) {
    return CreateWindowExA(exStyle, "Button", text, WS_CHILD | WS_VISIBLE | style, x, y, width,
                           height, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleA(nullptr), nullptr);
}

RECT rectInParent(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    MapWindowPoints(nullptr, GetParent(hwnd), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

int childCount(HWND parent) {
    int count = 0;
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        ++count;
    return count;
}

class Control : public ::testing::Test {
protected:
    void SetUp() override {
        mParent = rawWindow(nullptr, 0, 0, 0, 400, 300);
        ASSERT_NE(mParent, nullptr);
    }
    void TearDown() override { DestroyWindow(mParent); } // deletes the bound controls

    HWND mParent = nullptr;
};

} // namespace

TEST_F(Control, SetTabstopWritesTheLiveStyle) {
    HWND hwnd = button(mParent);
    auto* control = new TestControl(hwnd);
    LONG const before = styleOf(hwnd);
    ASSERT_EQ(before & WS_TABSTOP, 0);
    EXPECT_FALSE(control->tabstop());

    EXPECT_EQ(&control->setTabstop(true), control);
    EXPECT_EQ(styleOf(hwnd), before | WS_TABSTOP) << "only the tab-stop bit changes";
    EXPECT_TRUE(control->tabstop());
    control->setTabstop(false);
    EXPECT_EQ(styleOf(hwnd), before);
    EXPECT_FALSE(control->tabstop());
}

TEST_F(Control, TabstopReadsAStyleChangedOutsideTheLibrary) {
    HWND hwnd = button(mParent);
    auto* control = new TestControl(hwnd);
    SetWindowLongA(hwnd, GWL_STYLE, styleOf(hwnd) | WS_TABSTOP);
    EXPECT_TRUE(control->tabstop());
    SetWindowLongA(hwnd, GWL_STYLE, styleOf(hwnd) & ~WS_TABSTOP);
    EXPECT_FALSE(control->tabstop());
}

TEST_F(Control, SetGroupWritesTheLiveStyle) {
    HWND hwnd = button(mParent, "B", 1, BS_PUSHBUTTON | WS_TABSTOP);
    auto* control = new TestControl(hwnd);
    LONG const before = styleOf(hwnd);
    ASSERT_EQ(before & WS_GROUP, 0);
    EXPECT_FALSE(control->group());

    EXPECT_EQ(&control->setGroup(true), control);
    EXPECT_EQ(styleOf(hwnd), before | WS_GROUP) << "only the group bit changes";
    EXPECT_TRUE(control->group());
    EXPECT_TRUE(control->tabstop());
    control->setGroup(false);
    EXPECT_EQ(styleOf(hwnd), before);
    EXPECT_FALSE(control->group());
}

TEST_F(Control, GroupReadsAStyleChangedOutsideTheLibrary) {
    HWND hwnd = button(mParent);
    auto* control = new TestControl(hwnd);
    SetWindowLongA(hwnd, GWL_STYLE, styleOf(hwnd) | WS_GROUP);
    EXPECT_TRUE(control->group());
    SetWindowLongA(hwnd, GWL_STYLE, styleOf(hwnd) & ~WS_GROUP);
    EXPECT_FALSE(control->group());
}

TEST_F(Control, CopyClonesThePlatformControl) {
    HWND source = button(mParent, "Clone me", 55, BS_AUTOCHECKBOX | WS_TABSTOP | WS_GROUP,
                         WS_EX_CLIENTEDGE, 12, 34, 90, 25);
    HWND after = button(mParent, "After", 56);
    auto* original = new TestControl(source);
    auto* copy = new TestControl(*original);
    HWND clone = static_cast<HWND>(copy->window());
    ASSERT_NE(clone, nullptr);
    ASSERT_NE(clone, source);

    EXPECT_EQ(classNameOf(clone), "Button");
    EXPECT_EQ(styleOf(clone), styleOf(source));
    EXPECT_EQ(GetWindowLongA(clone, GWL_EXSTYLE), GetWindowLongA(source, GWL_EXSTYLE));
    EXPECT_NE(GetWindowLongA(clone, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    EXPECT_EQ(GetWindowLongPtrA(clone, GWLP_ID), 55);
    EXPECT_EQ(GetParent(clone), mParent);
    RECT const from = rectInParent(source);
    RECT const to = rectInParent(clone);
    EXPECT_EQ(to.left, 12);
    EXPECT_EQ(to.top, 34);
    EXPECT_TRUE(EqualRect(&from, &to)) << "same position and size";
    EXPECT_EQ(textOf(clone), "Clone me");
    EXPECT_EQ(GetWindow(source, GW_HWNDNEXT), clone) << "right after the source";
    EXPECT_EQ(GetWindow(clone, GW_HWNDNEXT), after);

    EXPECT_EQ(GwWindow::window(clone, false), copy) << "the clone is bound to the copy";
    EXPECT_EQ(GetWindowLongPtrA(clone, GWLP_WNDPROC), GetWindowLongPtrA(source, GWLP_WNDPROC));
    EXPECT_EQ(original->window(), source) << "the source keeps its window";
}

TEST_F(Control, CopyOfALongTextKeepsTheFirst255Characters) {
    std::string longText;
    for (int i = 0; i < 300; ++i)
        longText += static_cast<char>('A' + i % 26);
    HWND source = button(mParent, longText.c_str());
    ASSERT_EQ(textOf(source), longText);
    auto* original = new TestControl(source);
    auto* copy = new TestControl(*original);
    ASSERT_NE(copy->window(), nullptr);
    EXPECT_EQ(textOf(static_cast<HWND>(copy->window())), longText.substr(0, 255));
}

TEST_F(Control, CopyOfAControlWithoutWindowHasNoWindow) {
    int const before = childCount(mParent);
    TestControl empty;
    TestControl copy(empty);
    EXPECT_EQ(copy.window(), nullptr);
    EXPECT_EQ(copy.text().size(), 0u);
    EXPECT_EQ(childCount(mParent), before);
}

TEST_F(Control, MoveConstructionClonesToo) {
    HWND source = button(mParent, "Moved", 7);
    auto* original = new TestControl(source);
    auto* moved = new TestControl(std::move(*original));
    EXPECT_EQ(original->window(), source) << "the source keeps its window";
    ASSERT_NE(moved->window(), nullptr);
    EXPECT_NE(moved->window(), source);
    EXPECT_EQ(textOf(static_cast<HWND>(moved->window())), "Moved");
}

TEST_F(Control, AssignmentMakesBothObjectsNameTheSameWindow) {
    HWND hwnd = button(mParent, "Shared", 8);
    auto* bound = new TestControl(hwnd);
    int const before = childCount(mParent);
    {
        TestControl other;
        other = *bound;
        EXPECT_EQ(other.window(), hwnd);
        EXPECT_EQ(childCount(mParent), before) << "assignment creates no window";
        EXPECT_EQ(GwWindow::window(hwnd, false), bound) << "the window stays bound to the first";
        EXPECT_EQ(std::string(other.text().c_str()), "Shared");
        other.setText(String("Through the other"));
        EXPECT_EQ(textOf(hwnd), "Through the other");

        other = TestControl(); // lets go of the window before it is destroyed
        EXPECT_EQ(other.window(), nullptr);
    }
    EXPECT_TRUE(IsWindow(hwnd));
    EXPECT_EQ(bound->window(), hwnd);
}

TEST_F(Control, NewInstanceBindsTheWindowThatTheDataCarries) {
    HWND hwnd = button(mParent);
    GwEventData data(hwnd);
    GwControl* control = GwControl::newInstance(&data);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->window(), hwnd);
    EXPECT_EQ(control->isA(), GwControl::isa());
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(control));

    HWND second = button(mParent, "Second", 2);
    GwEventData secondData(second);
    Object* made = Class::createInstance(Class::lookup("GwControl"), &secondData);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(GwWindow::window(second, false), made) << "the class record's factory binds too";
}

TEST_F(Control, NewInstanceWithoutWindowReturnsNull) {
    GwEventData empty;
    EXPECT_EQ(GwControl::newInstance(&empty), nullptr);
    EXPECT_EQ(GwControl::newInstance(nullptr), nullptr);
    EventData other;
    EXPECT_EQ(GwControl::newInstance(&other), nullptr);
}

namespace {

HFONT gParentFont = nullptr;

// A parent that answers WM_GETFONT with gParentFont, whatever its style.
LRESULT CALLBACK fontParentProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_GETFONT)
        return reinterpret_cast<LRESULT>(gParentFont);
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

HWND fontParent(DWORD style) {
    static bool registered = false;
    if (!registered) {
        WNDCLASSA cls{};
        cls.lpfnWndProc = fontParentProc;
        cls.hInstance = GetModuleHandleA(nullptr);
        cls.lpszClassName = "VmGuiTestFontParent";
        RegisterClassA(&cls);
        registered = true;
    }
    return CreateWindowExA(0, "VmGuiTestFontParent", "", WS_OVERLAPPEDWINDOW | style, 0, 0, 300,
                           200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

HFONT controlFont(HWND hwnd) {
    return reinterpret_cast<HFONT>(SendMessageA(hwnd, WM_GETFONT, 0, 0));
}

INT_PTR CALLBACK quietDialogProc(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// An in-memory dialog template without items, with its own font (DS_SETFONT).
std::vector<WORD> dialogTemplate(DWORD style) {
    std::vector<WORD> words(sizeof(DLGTEMPLATE) / sizeof(WORD), 0);
    auto* header = reinterpret_cast<DLGTEMPLATE*>(words.data());
    header->style = style;
    header->cdit = 0;
    header->cx = 200;
    header->cy = 100;
    words.push_back(0); // no menu
    words.push_back(0); // the standard dialog class
    for (char const* c = "Fonts"; *c != '\0'; ++c)
        words.push_back(static_cast<WORD>(*c));
    words.push_back(0);
    if (style & DS_SETFONT) {
        words.push_back(8); // point size
        for (char const* c = "MS Shell Dlg"; *c != '\0'; ++c)
            words.push_back(static_cast<WORD>(*c));
        words.push_back(0);
    }
    return words;
}

} // namespace

TEST_F(Control, ControlFontIsTakenFromADialogWithItsOwnFont) {
    std::vector<WORD> const words = dialogTemplate(WS_POPUP | WS_CAPTION | DS_SETFONT);
    HWND dialog = CreateDialogIndirectParamA(GetModuleHandleA(nullptr),
                                             reinterpret_cast<DLGTEMPLATE const*>(words.data()),
                                             nullptr, quietDialogProc, 0);
    ASSERT_NE(dialog, nullptr);
    ASSERT_NE(styleOf(dialog) & DS_SETFONT, 0) << "the dialog keeps DS_SETFONT in its style";
    HFONT dialogFont = controlFont(dialog);
    ASSERT_NE(dialogFont, nullptr);

    HWND hwnd = button(dialog);
    ASSERT_NE(controlFont(hwnd), dialogFont);
    auto* control = new TestControl(hwnd);
    EXPECT_EQ(&control->setControlFont(), control);
    EXPECT_EQ(controlFont(hwnd), dialogFont);
    DestroyWindow(dialog);
}

TEST_F(Control, ControlFontIsTakenOnlyFromAParentWithTheFontStyle) {
    gParentFont = static_cast<HFONT>(GetStockObject(ANSI_FIXED_FONT));
    HWND plain = fontParent(0);
    HWND withFont = fontParent(DS_SETFONT);
    ASSERT_NE(styleOf(withFont) & DS_SETFONT, 0);

    HWND first = button(plain);
    auto* firstControl = new TestControl(first);
    firstControl->setControlFont();
    EXPECT_EQ(controlFont(first), nullptr) << "the parent has no DS_SETFONT";

    HWND second = button(withFont);
    auto* secondControl = new TestControl(second);
    secondControl->setControlFont();
    EXPECT_EQ(controlFont(second), gParentFont);

    DestroyWindow(plain);
    DestroyWindow(withFont);
}

TEST_F(Control, ControlFontOfAControlWithoutWindowChangesNothing) {
    TestControl empty;
    EXPECT_EQ(&empty.setControlFont(), &empty);
    EXPECT_EQ(empty.window(), nullptr);
}

TEST_F(Control, ControlWithoutWindowHasNeitherTabstopNorGroup) {
    TestControl empty;
    EXPECT_EQ(&empty.setTabstop(true), &empty);
    EXPECT_FALSE(empty.tabstop());
    EXPECT_EQ(&empty.setGroup(true), &empty);
    EXPECT_FALSE(empty.group());
}
