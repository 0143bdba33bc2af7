#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <GwApplication.h>
#include <GwEventData.h>
#include <GwWindow.h>
#include <GwWindowClass.h>

#include <memory>
#include <string>

namespace {

class ClassTestApp : public GwApplication {};

// A window class of the application's own, with a library class of the same name.
class MyPanel : public GwWindow {
    GW_DECLARE_CLASS(MyPanel)

public:
    explicit MyPanel(void* hwnd) : GwWindow(hwnd) {}
    MyPanel(MyPanel const& other) = default;
    MyPanel& operator=(MyPanel const& other) = default;

    static MyPanel* newInstance(EventData const* data) {
        auto const* eventData = dynamic_cast<GwEventData const*>(data);
        if (eventData == nullptr || eventData->window() == nullptr)
            return nullptr;
        return new MyPanel(eventData->window());
    }
};

char const* const gTableOrder[16] = {
    "Button",
    "ComboBox",
    "Edit",
    "ListBox",
    "ScrollBar",
    "Static",
    "SysTabControl32",
    "SysListView32",
    "SysTreeView32",
    "SysHeader32",
    "ToolbarWindow32",
    "msctls_statusbar32",
    "SysAnimate32",
    "msctls_updown32",
    "msctls_progress32",
    "msctls_trackbar32",
};
unsigned int const gTableKinds[16] = {1, 2, 3, 4, 5, 6, 11, 12, 13, 14, 7, 8, 16, 17, 9, 10};

void registerPlainClass(char const* name) {
    WNDCLASSEXA windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = name;
    RegisterClassExA(&windowClass); // a second registration fails harmlessly
}

std::string text(String const& string) {
    return string.c_str();
}

// Child windows of one host window, destroyed with it.
class WindowClassTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(GwApplication::mTheApplication, nullptr);
        registerPlainClass("WindowClassTestHost");
        mHost = CreateWindowExA(0, "WindowClassTestHost", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                                nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(mHost, nullptr);
    }
    void TearDown() override {
        DestroyWindow(mHost);
        EXPECT_EQ(GwApplication::mTheApplication, nullptr);
    }

    HWND child(char const* className, DWORD style) {
        HWND hwnd = CreateWindowExA(0, className, "", WS_CHILD | style, 0, 0, 50, 20, mHost,
                                    nullptr, GetModuleHandleA(nullptr), nullptr);
        EXPECT_NE(hwnd, nullptr) << className;
        return hwnd;
    }
    std::string mapped(char const* className, DWORD style) {
        return text(GwWindowClass::mappedClassName(child(className, style)));
    }

    HWND mHost = nullptr;
};

// The same, while an application (and so the table of known classes) exists.
class WindowClassMapping : public WindowClassTest {
protected:
    void SetUp() override {
        WindowClassTest::SetUp();
        mApp = std::make_unique<ClassTestApp>();
    }
    void TearDown() override {
        mApp.reset();
        WindowClassTest::TearDown();
    }

    std::unique_ptr<ClassTestApp> mApp;
};

} // namespace

GW_CLASS_MAKES(MyPanel, "MyPanel", "GwWindow")

TEST_F(WindowClassTest, TheRecordsCannotMakeInstances) {
    GwEventData data(mHost);
    for (char const* name : {"GwWindowClass", "GwWindowControl3D"}) {
        Class const* record = Class::lookup(name);
        ASSERT_NE(record, nullptr) << name;
        EXPECT_NE(record->factory(), nullptr) << name;
        EXPECT_STREQ(record->parentNames()[0], "GwObject") << name;
        EXPECT_EQ(record->createInstance(&data), nullptr) << name;
    }
    EXPECT_EQ(GwWindowClass::isa(), Class::lookup("GwWindowClass"));
    EXPECT_EQ(GwWindowControl3D::isa(), Class::lookup("GwWindowControl3D"));
}

TEST_F(WindowClassTest, TheTableIsEmptyWithoutApplication) {
    ASSERT_NE(GwWindowClass::table(), nullptr);
    EXPECT_EQ(GwWindowClass::table()->count(), 0);
}

TEST_F(WindowClassTest, ApplicationFillsTheTableWithTheKnownClassesInOrder) {
    ClassTestApp app;
    GwObjectTable<GwWindowClass> const* table = GwWindowClass::table();
    ASSERT_EQ(table->count(), 16);
    for (int i = 0; i < 16; ++i) {
        GwWindowClass const* entry = table->at(i);
        ASSERT_NE(entry, nullptr) << i;
        EXPECT_EQ(text(entry->name()), gTableOrder[i]) << i;
        EXPECT_EQ(entry->kind(), gTableKinds[i]) << gTableOrder[i];
        EXPECT_NE(entry->atom(), 0) << gTableOrder[i];
    }
}

TEST_F(WindowClassTest, ApplicationEndEmptiesTheTable) {
    { ClassTestApp app; }
    EXPECT_EQ(GwWindowClass::table()->count(), 0);
}

TEST_F(WindowClassTest, AtomsMatchThoseOfRealWindows) {
    ClassTestApp app;
    ASSERT_EQ(GwWindowClass::table()->count(), 16);
    for (GwObjectTableIterator<GwWindowClass> next(GwWindowClass::table());
         GwWindowClass* entry = next();) {
        HWND hwnd = CreateWindowExA(0, entry->name().c_str(), "", 0, 0, 0, 0, 0, nullptr, nullptr,
                                    GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(hwnd, nullptr) << entry->name().c_str();
        EXPECT_EQ(entry->atom(), GetClassWord(hwnd, GCW_ATOM)) << entry->name().c_str();
        DestroyWindow(hwnd);
    }
}

TEST_F(WindowClassTest, AnEntryLearnsItsAtomAndJoinsTheTable) {
    HWND button = child("Button", BS_PUSHBUTTON);
    {
        GwWindowClass entry("Button", GwWindowClass::eButton);
        EXPECT_EQ(entry.atom(), GetClassWord(button, GCW_ATOM));
        EXPECT_EQ(entry.kind(), 1u);
        EXPECT_EQ(GwWindowClass::table()->at(0), &entry);
        EXPECT_EQ(GwWindowClass::lookup(entry.atom()), &entry);
        EXPECT_EQ(GwWindowClass::kindOf(button), 1u);
        {
            GwWindowClass copy(entry);
            EXPECT_EQ(copy.atom(), entry.atom());
            EXPECT_EQ(GwWindowClass::table()->at(1), &copy);
            EXPECT_EQ(GwWindowClass::lookup(entry.atom()), &entry) << "the first entry wins";
        }
        EXPECT_EQ(GwWindowClass::table()->count(), 1);
    }
    EXPECT_EQ(GwWindowClass::table()->count(), 0);
    EXPECT_EQ(GwWindowClass::kindOf(button), 0u);
}

TEST_F(WindowClassTest, AnUnknownClassHasAtomZeroAndMatchesNoWindow) {
    GwWindowClass entry("NoSuchWindowClass", 15);
    EXPECT_EQ(entry.atom(), 0);
    EXPECT_EQ(GwWindowClass::lookup(0), nullptr);
    EXPECT_EQ(GwWindowClass::kindOf(nullptr), 0u);
}

TEST_F(WindowClassTest, WithoutApplicationAButtonMapsToGwControl) {
    EXPECT_EQ(mapped("Button", BS_PUSHBUTTON), "GwControl");
    EXPECT_EQ(mapped("Static", SS_LEFT), "GwControl");
}

TEST_F(WindowClassTest, WithoutApplicationAClassNamedLikeARecordMapsToIt) {
    registerPlainClass("MyPanel");
    EXPECT_EQ(mapped("MyPanel", 0), "MyPanel");
}

TEST_F(WindowClassMapping, ButtonTypesMapToTheirClasses) {
    struct Case {
        DWORD style;
        char const* name;
    } const cases[] = {
        {BS_PUSHBUTTON, "GwPushButton"},
        {BS_DEFPUSHBUTTON, "GwPushButton"},
        {BS_CHECKBOX, "GwToggleButton"},
        {BS_AUTOCHECKBOX, "GwToggleButton"},
        {BS_RADIOBUTTON, "GwRadioButton"},
        {BS_AUTORADIOBUTTON, "GwRadioButton"},
        {BS_3STATE, "Gw3StateButton"},
        {BS_AUTO3STATE, "Gw3StateButton"},
        {BS_GROUPBOX, "GwGroupBox"},
        {BS_PUSHBOX, "GwButton"},
        {BS_PUSHBUTTON | BS_MULTILINE, "GwPushButton"},
        {BS_CHECKBOX | BS_FLAT, "GwToggleButton"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(mapped("Button", c.style), c.name) << "style " << c.style;
}

TEST_F(WindowClassMapping, UserButtonMapsToGwUserButton) {
    // Wine's button turns BS_USERBUTTON into BS_PUSHBUTTON while it is created, so the
    // style is given afterwards.
    HWND button = child("Button", BS_PUSHBUTTON);
    SetWindowLongA(button, GWL_STYLE, WS_CHILD | BS_USERBUTTON);
    ASSERT_EQ(GetWindowLongA(button, GWL_STYLE) & 0x0F, BS_USERBUTTON);
    EXPECT_EQ(text(GwWindowClass::mappedClassName(button)), "GwUserButton");
}

TEST_F(WindowClassMapping, OwnerDrawButtonMapsToGwButton) {
    EXPECT_EQ(mapped("Button", BS_OWNERDRAW), "GwButton");
}

TEST_F(WindowClassMapping, StaticWithCenterAndNotifyMapsToGwText) {
    EXPECT_EQ(mapped("Static", SS_CENTER | SS_NOTIFY), "GwText");
}

TEST_F(WindowClassMapping, StaticWithNoPrefixMapsToGwStatic) {
    EXPECT_EQ(mapped("Static", SS_LEFT | SS_NOPREFIX), "GwStatic");
}

TEST_F(WindowClassMapping, StaticStylesMapByTheirLowByte) {
    struct Case {
        DWORD style;
        char const* name;
    } const cases[] = {
        {SS_LEFT, "GwText"},
        {SS_CENTER, "GwText"},
        {SS_RIGHT, "GwText"},
        {SS_SIMPLE, "GwText"},
        {SS_LEFTNOWORDWRAP, "GwText"},
        {SS_ICON, "GwImage"},
        {SS_BITMAP, "GwImage"},
        {SS_ENHMETAFILE, "GwImage"},
        {SS_BLACKRECT, "GwStatic"},
        {SS_ETCHEDHORZ, "GwStatic"},
        {SS_OWNERDRAW, "GwStatic"},
        {SS_RIGHT | SS_SUNKEN, "GwText"},
        {SS_CENTER | SS_CENTERIMAGE, "GwText"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(mapped("Static", c.style), c.name) << "style " << c.style;
}

TEST_F(WindowClassMapping, ScrollBarMapsToGwControl) {
    EXPECT_EQ(mapped("ScrollBar", SBS_HORZ), "GwControl");
    EXPECT_EQ(mapped("ScrollBar", SBS_VERT), "GwControl");
}

TEST_F(WindowClassMapping, ListsEditsAndTabsMapToTheirClasses) {
    EXPECT_EQ(mapped("ComboBox", CBS_DROPDOWN), "GwComboBox");
    EXPECT_EQ(mapped("ComboBox", CBS_DROPDOWNLIST), "GwComboBox");
    EXPECT_EQ(mapped("Edit", ES_LEFT), "GwEditField");
    EXPECT_EQ(mapped("ListBox", LBS_NOTIFY), "GwListBox");
    EXPECT_EQ(mapped(WC_TABCONTROLA, 0), "GwTab");
}

TEST_F(WindowClassMapping, OtherCommonControlsMapToGwControl) {
    EXPECT_EQ(mapped(TOOLBARCLASSNAMEA, 0), "GwControl");
    EXPECT_EQ(mapped(STATUSCLASSNAMEA, 0), "GwControl");
    EXPECT_EQ(mapped(WC_LISTVIEWA, 0), "GwControl");
    EXPECT_EQ(mapped(PROGRESS_CLASSA, 0), "GwControl");
}

TEST_F(WindowClassMapping, KindOfAWindowIsTheKindOfItsClass) {
    EXPECT_EQ(GwWindowClass::kindOf(child("Edit", 0)), GwWindowClass::eEdit);
    EXPECT_EQ(GwWindowClass::kindOf(child(TRACKBAR_CLASSA, 0)), GwWindowClass::eTrackBar);
    EXPECT_EQ(GwWindowClass::kindOf(child(UPDOWN_CLASSA, 0)), GwWindowClass::eUpDown);
    EXPECT_EQ(GwWindowClass::kindOf(mHost), 0u);
}

TEST_F(WindowClassMapping, ApplicationClassNamedLikeARecordMapsToIt) {
    registerPlainClass("MyPanel");
    EXPECT_EQ(mapped("MyPanel", 0), "MyPanel");
}

TEST_F(WindowClassMapping, ApplicationClassWithoutRecordMapsToGwControl) {
    registerPlainClass("OtherPanel");
    EXPECT_EQ(mapped("OtherPanel", 0), "GwControl");
}

TEST_F(WindowClassMapping, CreateChildBindsAnObjectOfTheRecordsClass) {
    registerPlainClass("MyPanel");
    HWND panel = child("MyPanel", 0);
    ASSERT_EQ(GwWindow::window(panel, false), nullptr);
    GwWindow* made = GwWindowClass::createChild(panel);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), MyPanel::isa());
    EXPECT_EQ(made->window(), panel);
    EXPECT_EQ(GwWindow::window(panel, false), made);
    DestroyWindow(panel); // the object goes with its window
    EXPECT_FALSE(IsWindow(panel));
}

TEST_F(WindowClassMapping, CreateChildOfARecordThatMakesNoWindowIsNull) {
    registerPlainClass("GwItem");
    HWND itemWindow = child("GwItem", 0);
    EXPECT_EQ(mapped("GwItem", 0), "GwItem");
    EXPECT_EQ(GwWindowClass::createChild(itemWindow), nullptr);
    EXPECT_EQ(GwWindow::window(itemWindow, false), nullptr);
}

TEST_F(WindowClassMapping, CreateChildOfARecordWithoutFactoryIsNull) {
    registerPlainClass("GwWindow");
    HWND plain = child("GwWindow", 0);
    EXPECT_EQ(GwWindowClass::createChild(plain), nullptr);
    EXPECT_EQ(GwWindow::window(plain, false), nullptr);
}

TEST_F(WindowClassMapping, CreateChildOfNoWindowIsNull) {
    EXPECT_EQ(GwWindowClass::createChild(nullptr), nullptr);
    EXPECT_EQ(text(GwWindowClass::mappedClassName(nullptr)), "GwControl");
}

TEST(WindowControl3D, TheHolderHasNoModule) {
    EXPECT_EQ(GwWindowControl3D::gControl3D.module(), nullptr);
    EXPECT_EQ(GwWindowControl3D::gControl3D.isA(), GwWindowControl3D::isa());
}

namespace {

class Control3DHolder : public GwWindowControl3D {
public:
    explicit Control3DHolder(void* module) : GwWindowControl3D(module) {}
};

} // namespace

TEST(WindowControl3D, AHolderWithAModuleFreesItAtTheEnd) {
    char const* const library = "olecli32.dll";
    if (GetModuleHandleA(library) != nullptr)
        GTEST_SKIP() << library << " is loaded already";
    HMODULE module = LoadLibraryA(library);
    ASSERT_NE(module, nullptr);
    {
        Control3DHolder holder(module);
        EXPECT_EQ(holder.module(), module);
        Control3DHolder copy(holder);
        EXPECT_EQ(copy.module(), nullptr) << "the module stays with the holder that got it";
    }
    EXPECT_EQ(GetModuleHandleA(library), nullptr);
}
