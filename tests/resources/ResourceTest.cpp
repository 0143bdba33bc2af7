#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include <GwApplication.h>
#include <GwBitmap.h>
#include <GwControl.h>
#include <GwEventData.h>
#include <GwMenu.h>
#include <GwRcData.h>
#include <GwResource.h>
#include <GwWindow.h>

#include "TestWindows.h"

// The program's own test resources are in data/resource_tests.rc, those of the library
// test_resources.dll in data/test_resources.rc; their attribute data in the two .txt files
// beside them.

namespace {

char const* const kLibrary = "test_resources.dll";

int gDialogsAlive = 0;
int gControlsAlive = 0;
int gMenusAlive = 0;

// A dialog class of the application's own. Like a frame, it keeps its identifier in the
// object, since a top-level window has no control identifier.
class ResTestDialog : public GwWindow {
    GW_DECLARE_CLASS(ResTestDialog)

public:
    explicit ResTestDialog(void* hwnd) : GwWindow(hwnd) { ++gDialogsAlive; }
    ResTestDialog(ResTestDialog const& other) : GwWindow(other), mId(other.mId) { ++gDialogsAlive; }
    ResTestDialog& operator=(ResTestDialog const& other) = default;
    ~ResTestDialog() override { --gDialogsAlive; }

    ResTestDialog& setId(unsigned long long id) override {
        mId = id;
        return *this;
    }
    unsigned long long id() const override { return mId; }

    static ResTestDialog* newInstance(EventData const* data) {
        void* hwnd = GwEventData::windowOf(data);
        return hwnd != nullptr ? new ResTestDialog(hwnd) : nullptr;
    }

private:
    unsigned long long mId = 0;
};

// A control class of the application's own.
class ResTestControl : public GwControl {
    GW_DECLARE_CLASS(ResTestControl)

public:
    explicit ResTestControl(void* hwnd) : GwControl(hwnd) { ++gControlsAlive; }
    ResTestControl(ResTestControl const&) = delete;
    ResTestControl& operator=(ResTestControl const& other) = default;
    ~ResTestControl() override { --gControlsAlive; }

    static ResTestControl* newInstance(EventData const* data) {
        void* hwnd = GwEventData::windowOf(data);
        return hwnd != nullptr ? new ResTestControl(hwnd) : nullptr;
    }
};

// A menu class of the application's own.
class ResTestMenu : public GwMenu {
    GW_DECLARE_CLASS(ResTestMenu)

public:
    explicit ResTestMenu(void* handle) : GwMenu(handle) { ++gMenusAlive; }
    ResTestMenu(ResTestMenu const& other) : GwMenu(other) { ++gMenusAlive; }
    ResTestMenu& operator=(ResTestMenu const& other) = default;
    ~ResTestMenu() override { --gMenusAlive; }

    static ResTestMenu* newInstance(EventData const* data) {
        void* handle = GwEventData::windowOf(data);
        return handle != nullptr ? new ResTestMenu(handle) : nullptr;
    }
};

// Stands in for the library's GwDialog where the library has none: a window object whose
// class record is named "GwDialog", registered for the length of a test.
Class const* gStandInRecord = nullptr;
char const* gStandInParents[] = {"GwWindow", nullptr};

class StandInDialog : public GwWindow {
public:
    explicit StandInDialog(void* hwnd) : GwWindow(hwnd) { ++gDialogsAlive; }
    ~StandInDialog() override { --gDialogsAlive; }
    Class const* isA() const override { return gStandInRecord; }
    StandInDialog& setId(unsigned long long id) override {
        mId = id;
        return *this;
    }
    unsigned long long id() const override { return mId; }

private:
    unsigned long long mId = 0;
};

Object* makeStandIn(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new StandInDialog(hwnd) : nullptr;
}

std::string text(String const& string) {
    return string.c_str();
}

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool endsWith(std::string const& s, std::string const& end) {
    return s.size() >= end.size() && s.compare(s.size() - end.size(), end.size(), end) == 0;
}

bool libraryLoaded() {
    return GetModuleHandleA(kLibrary) != nullptr;
}

int threadWindows() {
    int count = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND, LPARAM counter) -> BOOL {
            ++*reinterpret_cast<int*>(counter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

std::string caption(HWND hwnd) {
    char buffer[128] = {};
    GetWindowTextA(hwnd, buffer, sizeof buffer);
    return buffer;
}

HWND handleOf(GwWindow const* window) {
    return static_cast<HWND>(window->window());
}

// The child with the control identifier (also 0xFFFF, which GetDlgItem cannot tell apart).
HWND childWithId(HWND dialog, unsigned int id) {
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if ((static_cast<unsigned int>(GetWindowLongPtrA(child, GWLP_ID)) & 0xFFFF) == id)
            return child;
    }
    return nullptr;
}

GwMenuItem const* storedItem(HMENU menu, int position) {
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_DATA;
    if (!GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info))
        return nullptr;
    return reinterpret_cast<GwMenuItem const*>(info.dwItemData);
}

GwMenu* subMenu(HMENU menu, int position) {
    return GwMenu::lookup(GetSubMenu(menu, position));
}

void collectMenus(HMENU menu, std::vector<HMENU>& handles) {
    handles.push_back(menu);
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (HMENU sub = GetSubMenu(menu, i))
            collectMenus(sub, handles);
    }
}

COLORREF pixel(HBITMAP bitmap, int x, int y) {
    HDC memory = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(memory, bitmap);
    COLORREF colour = GetPixel(memory, x, y);
    SelectObject(memory, previous);
    DeleteDC(memory);
    return colour;
}

SIZE bitmapSize(void* handle) {
    BITMAP info = {};
    GetObjectA(static_cast<HBITMAP>(handle), sizeof info, &info);
    return SIZE{info.bmWidth, info.bmHeight};
}

// Every test leaves the library unloaded again.
class ResourceModule : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(libraryLoaded()); }
    void TearDown() override { EXPECT_FALSE(libraryLoaded()); }
};

using ResourceLoading = ResourceModule;

// An application for the length of a test (the window-class table is then filled), and a
// stand-in for GwDialog where the library has none.
class ResourceDialogs : public ResourceModule {
protected:
    void SetUp() override {
        ResourceModule::SetUp();
        ASSERT_EQ(GwApplication::mTheApplication, nullptr);
        mApp = std::make_unique<testing_windows::ScopedApplication>();
        if (Class::lookup("GwDialog") == nullptr) {
            mStandIn =
                std::make_unique<Class>("GwDialog", gStandInParents,
                                        static_cast<long>(sizeof(StandInDialog)), &makeStandIn);
            gStandInRecord = mStandIn.get();
        }
        mWindows = threadWindows();
    }
    void TearDown() override {
        for (HWND hwnd : mDestroy)
            DestroyWindow(hwnd);
        EXPECT_EQ(threadWindows(), mWindows);
        EXPECT_EQ(gDialogsAlive, 0);
        EXPECT_EQ(gControlsAlive, 0);
        mStandIn.reset();
        gStandInRecord = nullptr;
        mApp.reset();
        ResourceModule::TearDown();
    }

    // The dialog's window is destroyed at the end of the test.
    GwWindow* keep(GwWindow* dialog) {
        if (dialog != nullptr)
            mDestroy.push_back(handleOf(dialog));
        return dialog;
    }

    std::unique_ptr<testing_windows::ScopedApplication> mApp;
    std::unique_ptr<Class> mStandIn;
    std::vector<HWND> mDestroy;
    int mWindows = 0;
};

class ResourceMenus : public ResourceModule {
protected:
    void TearDown() override {
        EXPECT_EQ(gMenusAlive, 0);
        ResourceModule::TearDown();
    }
};

} // namespace

GW_CLASS_MAKES(ResTestDialog, "ResTestDialog", "GwWindow")
GW_CLASS_MAKES(ResTestControl, "ResTestControl", "GwControl")
GW_CLASS_MAKES(ResTestMenu, "ResTestMenu", "GwMenu")

// ---- The module reference

TEST_F(ResourceModule, TheClassRecordMakesAResourceOfTheExecutable) {
    Class const* record = Class::lookup("GwResource");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwResource::isa());
    EXPECT_STREQ(record->parentNames()[0], "GwObject");
    std::unique_ptr<Object> made(record->createInstance(nullptr));
    auto* resource = dynamic_cast<GwResource*>(made.get());
    ASSERT_NE(resource, nullptr);
    EXPECT_TRUE(resource->empty());
    EXPECT_EQ(resource->isA(), GwResource::isa());
}

TEST_F(ResourceModule, ADefaultResourceStandsForTheExecutable) {
    GwResource resource;
    EXPECT_TRUE(resource.empty());
    EXPECT_EQ(resource.module(), GetModuleHandleA(nullptr));
    char file[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, file, MAX_PATH);
    EXPECT_EQ(text(resource.name()), file);
    EXPECT_EQ(text(static_cast<String>(resource)), file);
}

TEST_F(ResourceModule, AnEmptyOrMissingFileStandsForTheExecutable) {
    GwResource none{String()};
    EXPECT_TRUE(none.empty());
    GwResource missing(String("no_such_library_h8.dll"));
    EXPECT_TRUE(missing.empty());
    EXPECT_EQ(missing.module(), GetModuleHandleA(nullptr));
}

TEST_F(ResourceModule, AFileResourceHoldsTheLibraryUntilItIsDestroyed) {
    {
        GwResource library{String(kLibrary)};
        EXPECT_FALSE(library.empty());
        EXPECT_EQ(library.module(), GetModuleHandleA(kLibrary));
        EXPECT_TRUE(endsWith(lower(text(library.name())), "\\test_resources.dll"))
            << text(library.name());
        EXPECT_EQ(text(static_cast<String>(library)), text(library.name()));
    }
    EXPECT_FALSE(libraryLoaded());
}

TEST_F(ResourceModule, ACopyOfADefaultResourceHoldsTheExecutableByReference) {
    GwResource original;
    GwResource copy(original);
    EXPECT_TRUE(original.empty());
    EXPECT_FALSE(copy.empty());
    EXPECT_EQ(copy.module(), GetModuleHandleA(nullptr));
    EXPECT_EQ(text(copy.name()), text(original.name()));
}

TEST_F(ResourceModule, ADefaultResourceAssignedStaysEmpty) {
    GwResource original;
    GwResource target;
    target = original;
    EXPECT_TRUE(target.empty());

    GwResource library{String(kLibrary)};
    library = original;
    EXPECT_TRUE(library.empty());
    EXPECT_EQ(library.module(), GetModuleHandleA(nullptr));
    EXPECT_FALSE(libraryLoaded()) << "the assignment dropped the load reference";
}

TEST_F(ResourceModule, ACopyTakesALoadReferenceOfItsOwn) {
    auto original = std::make_unique<GwResource>(String(kLibrary));
    GwResource copy(*original);
    EXPECT_EQ(copy.module(), original->module());
    original.reset();
    ASSERT_TRUE(libraryLoaded());
    EXPECT_EQ(text(copy.loadString(6001)), "Aus der Bibliothek");
}

TEST_F(ResourceModule, AssignmentLoadsTheOthersFileAgain) {
    GwResource target;
    {
        GwResource library{String(kLibrary)};
        target = library;
        EXPECT_EQ(target.module(), library.module());
    }
    ASSERT_TRUE(libraryLoaded());
    EXPECT_EQ(text(target.loadString(6001)), "Aus der Bibliothek");

    GwResource& self = target;
    target = self;
    ASSERT_TRUE(libraryLoaded()) << "assigning a resource to itself keeps its module";
    EXPECT_EQ(target.module(), GetModuleHandleA(kLibrary));

    target = GwResource();
    EXPECT_FALSE(libraryLoaded());
}

TEST_F(ResourceModule, AssignmentFromAnObjectChecksItsClass) {
    GwResource target;
    {
        GwResource library{String(kLibrary)};
        Object const& object = library;
        target = object;
    }
    EXPECT_EQ(target.module(), GetModuleHandleA(kLibrary));
    GwBitmap bitmap;
    Object const& other = bitmap;
    EXPECT_THROW(target = other, std::bad_cast);
    target = GwResource();
}

// ---- Strings, bitmaps, raw data and attribute data

TEST_F(ResourceLoading, LoadStringReadsTheModulesStringTable) {
    EXPECT_EQ(text(GwResource().loadString(6001)), "Aus dem Programm");
    EXPECT_EQ(text(GwResource(String(kLibrary)).loadString(6001)), "Aus der Bibliothek");
}

TEST_F(ResourceLoading, LoadStringOfALongTextYieldsItsFirst255Characters) {
    std::string expected;
    for (int i = 0; i < 255; ++i)
        expected += static_cast<char>('0' + i % 10);
    String loaded = GwResource().loadString(6002);
    EXPECT_EQ(loaded.size(), 255u);
    EXPECT_EQ(text(loaded), expected);
}

TEST_F(ResourceLoading, LoadStringOfAMissingTextOrOfIdentifierZeroIsEmpty) {
    GwResource resource;
    EXPECT_TRUE(resource.loadString(6099).empty());
    EXPECT_TRUE(resource.loadString(0).empty());
}

TEST_F(ResourceLoading, LoadBitmapGivesTheBitmapWithItsIdentifier) {
    std::unique_ptr<GwBitmap> bitmap(GwResource().loadBitmap(6101));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->id(), 6101u);
    ASSERT_NE(bitmap->handle(), nullptr);
    SIZE size = bitmapSize(bitmap->handle());
    EXPECT_EQ(size.cx, 4);
    EXPECT_EQ(size.cy, 3);
    HBITMAP handle = static_cast<HBITMAP>(bitmap->handle());
    EXPECT_EQ(pixel(handle, 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(pixel(handle, 3, 0), RGB(255, 255, 255));
    EXPECT_EQ(pixel(handle, 1, 1), RGB(255, 255, 0));
    EXPECT_EQ(pixel(handle, 0, 2), RGB(255, 128, 0));
}

TEST_F(ResourceLoading, LoadBitmapReadsTheLibrarysBitmap) {
    std::unique_ptr<GwBitmap> bitmap(GwResource(String(kLibrary)).loadBitmap(6101));
    ASSERT_NE(bitmap, nullptr);
    SIZE size = bitmapSize(bitmap->handle());
    EXPECT_EQ(size.cx, 2);
    EXPECT_EQ(size.cy, 5);
    bitmap.reset();
}

TEST_F(ResourceLoading, LoadBitmapOfAMissingBitmapOrOfIdentifierZeroIsNull) {
    GwResource resource;
    EXPECT_EQ(resource.loadBitmap(6199), nullptr);
    EXPECT_EQ(resource.loadBitmap(0), nullptr);
    EXPECT_EQ(resource.loadBitmapTransparent(6199), nullptr);
    EXPECT_EQ(resource.loadBitmapTransparent(0), nullptr);
}

TEST_F(ResourceLoading, LoadBitmapTransparentGivesTheFirstPixelsColourTheWindowColour) {
    GwResource resource;
    std::unique_ptr<GwBitmap> plain(resource.loadBitmap(6102));
    std::unique_ptr<GwBitmap> transparent(resource.loadBitmapTransparent(6102));
    ASSERT_NE(plain, nullptr);
    ASSERT_NE(transparent, nullptr);
    EXPECT_EQ(transparent->id(), 6102u);
    EXPECT_EQ(pixel(static_cast<HBITMAP>(plain->handle()), 0, 0), RGB(255, 0, 255));
    EXPECT_EQ(pixel(static_cast<HBITMAP>(transparent->handle()), 0, 0), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(pixel(static_cast<HBITMAP>(transparent->handle()), 1, 1), RGB(0, 128, 0));
}

TEST_F(ResourceLoading, LoadBinaryGivesTheBytesOfTheResource) {
    GwResource resource;
    char const* bytes = resource.loadBinary(6150);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(std::memcmp(bytes, "\x01\x02\x03\x00\xFF", 5), 0);
    EXPECT_EQ(resource.loadBinary(6199), nullptr);
    EXPECT_EQ(resource.loadBinary(0), nullptr);
}

TEST_F(ResourceLoading, LoadAttributeGivesTheParsedAttributeData) {
    std::unique_ptr<GwRcData> data(GwResource().loadAttribute(6200));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->id(), 6200u);
    EXPECT_TRUE(GwRcData::allRcData.contains(data.get()));
    GwRcDataEntry* first = (*data)[1];
    ASSERT_NE(first, nullptr);
    ASSERT_NE((*first)["Origin"], nullptr);
    EXPECT_EQ(text((*first)["Origin"]->value()), "program");
    GwRcDataEntry* second = (*data)[2];
    ASSERT_NE(second, nullptr);
    ASSERT_NE((*second)["Count"], nullptr);
    EXPECT_EQ(text((*second)["Count"]->value()), "3");
}

TEST_F(ResourceLoading, LoadAttributeOfMissingDataOrOfIdentifierZeroIsNull) {
    GwResource resource;
    EXPECT_EQ(resource.loadAttribute(6299), nullptr);
    EXPECT_EQ(resource.loadAttribute(0), nullptr);
}

TEST_F(ResourceLoading, LoadAttributeReadsTheLibrarysData) {
    std::unique_ptr<GwRcData> data(GwResource(String(kLibrary)).loadAttribute(6200));
    ASSERT_NE(data, nullptr);
    ASSERT_NE((*data)[1], nullptr);
    ASSERT_NE((*(*data)[1])["Origin"], nullptr);
    EXPECT_EQ(text((*(*data)[1])["Origin"]->value()), "library");
    EXPECT_EQ((*data)[2], nullptr);
}

TEST_F(ResourceLoading, AttributeDataOfAResourceIsReadFromItsModule) {
    GwResource library{String(kLibrary)};
    GwRcData data(6200, library);
    EXPECT_EQ(data.id(), 6200u);
    ASSERT_NE(data[1], nullptr);
    EXPECT_EQ(text((*data[1])["Origin"]->value()), "library");

    GwRcData own(6200, GwResource());
    ASSERT_NE(own[1], nullptr);
    EXPECT_EQ(text((*own[1])["Origin"]->value()), "program");

    GwRcData missing(6299, GwResource());
    EXPECT_EQ(missing.entries().count(), 0);
    GwRcData zero(0, GwResource());
    EXPECT_EQ(zero.entries().count(), 0);
}

TEST_F(ResourceLoading, AttributeDataWithoutEndMarkIsReadOnlyWithinTheResource) {
    GwRcData data(6290, GwResource());
    GwRcDataEntry* complete = data[1001];
    ASSERT_NE(complete, nullptr);
    ASSERT_NE((*complete)["Class"], nullptr);
    EXPECT_EQ(text((*complete)["Class"]->value()), "GwPushButton");
    GwRcDataEntry* cut = data[1002];
    if (cut != nullptr) {
        EXPECT_EQ((*cut)["Class"], nullptr) << "the value runs past the resource's end";
    }
}

// ---- The application's resource references

TEST_F(ResourceModule, AnApplicationsResourceReferencesStartEmpty) {
    testing_windows::ScopedApplication app;
    EXPECT_TRUE(app.resource(true).empty());
    EXPECT_TRUE(app.resource(false).empty());
    EXPECT_NE(&app.resource(true), &app.resource(false));
    EXPECT_EQ(app.resource(true).module(), GetModuleHandleA(nullptr));
}

TEST_F(ResourceModule, SetResourceAssignsTheSelectedReference) {
    testing_windows::ScopedApplication app;
    {
        GwResource library{String(kLibrary)};
        EXPECT_EQ(&app.setResource(library, true), &app);
        EXPECT_EQ(app.resource(true).module(), library.module());
        EXPECT_TRUE(app.resource(false).empty());
        app.setResource(library, false);
        EXPECT_EQ(app.resource(false).module(), library.module());
    }
    EXPECT_TRUE(libraryLoaded()) << "the references hold the library of their own";
    EXPECT_EQ(text(app.resource(false).loadString(6001)), "Aus der Bibliothek");

    app.setResource(GwResource(), true); // assigned: stays empty
    EXPECT_TRUE(app.resource(true).empty());
    app.setResource(GwResource(), false);
    EXPECT_FALSE(libraryLoaded());
}

TEST_F(ResourceModule, AnApplicationReleasesItsReferencesWhenDestroyed) {
    {
        testing_windows::ScopedApplication app;
        app.setResource(GwResource(String(kLibrary)), true);
        {
            testing_windows::ScopedApplication inert; // a second application: inert
            inert.setResource(GwResource(String(kLibrary)), false);
        }
        EXPECT_TRUE(libraryLoaded());
    }
    EXPECT_FALSE(libraryLoaded());
}

// ---- Dialogs

TEST_F(ResourceDialogs, LoadDialogBindsTheClassThatTheAttributesName) {
    GwWindow* dialog = keep(GwResource().loadDialog(6300, nullptr));
    ASSERT_NE(dialog, nullptr);
    HWND hwnd = handleOf(dialog);
    EXPECT_EQ(dialog->isA(), ResTestDialog::isa());
    EXPECT_EQ(GwWindow::window(hwnd, false), dialog);
    EXPECT_EQ(caption(hwnd), "Resource test 6300");
    EXPECT_EQ(dialog->id(), 6300u);
    EXPECT_EQ(GetWindowContextHelpId(hwnd), 77u);
    EXPECT_FALSE(IsWindowVisible(hwnd));
}

TEST_F(ResourceDialogs, OnlyChildrenThatTheAttributesGiveAClassGetAnObject) {
    GwWindow* dialog = keep(GwResource().loadDialog(6300, nullptr));
    ASSERT_NE(dialog, nullptr);
    HWND hwnd = handleOf(dialog);

    GwWindow* button = GwWindow::window(GetDlgItem(hwnd, 1001), false);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->isA(), GwControl::isa());
    GwWindow* edit = GwWindow::window(GetDlgItem(hwnd, 1002), false);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->isA(), ResTestControl::isa());
    EXPECT_EQ(gControlsAlive, 1);
    EXPECT_EQ(GetWindowContextHelpId(GetDlgItem(hwnd, 1002)), 32u);

    // A help identifier alone makes no object.
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, 1003), false), nullptr);
    EXPECT_EQ(GetWindowContextHelpId(GetDlgItem(hwnd, 1003)), 33u);
    // Without an entry: nothing.
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, 1004), false), nullptr);
    EXPECT_EQ(GetWindowContextHelpId(GetDlgItem(hwnd, 1004)), 0u);
    // A class that makes no window, a class that does not exist, a menu class: no object.
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, 1005), false), nullptr);
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, 1006), false), nullptr);
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, 1007), false), nullptr);
    EXPECT_EQ(GwMenu::lookup(GetDlgItem(hwnd, 1007)), nullptr);

    DestroyWindow(hwnd);
    EXPECT_EQ(gControlsAlive, 0);
    EXPECT_EQ(gDialogsAlive, 0);
}

TEST_F(ResourceDialogs, AControlWithIdentifier0xFFFFNeverGetsAttributes) {
    GwWindow* dialog = keep(GwResource().loadDialog(6300, nullptr));
    ASSERT_NE(dialog, nullptr);
    HWND label = childWithId(handleOf(dialog), 0xFFFF);
    ASSERT_NE(label, nullptr);
    // Entry 0xFFFF is the dialog's own: its class and help identifier stay the dialog's.
    EXPECT_EQ(GwWindow::window(label, false), nullptr);
    EXPECT_EQ(GetWindowContextHelpId(label), 0u);
    EXPECT_EQ(gDialogsAlive, 1);
}

TEST_F(ResourceDialogs, ADialogWhoseAttributesNameAnUnknownClassIsAPlainGwDialog) {
    GwWindow* dialog = keep(GwResource().loadDialog(6301, nullptr));
    ASSERT_NE(dialog, nullptr);
    EXPECT_STREQ(Class::name(dialog->isA()), "GwDialog");
    EXPECT_EQ(GwWindow::window(handleOf(dialog), false), dialog);
    EXPECT_EQ(dialog->id(), 6301u);
}

TEST_F(ResourceDialogs, ADialogWhoseAttributesNameNoWindowClassIsAPlainGwDialog) {
    GwWindow* dialog = keep(GwResource().loadDialog(6304, nullptr));
    ASSERT_NE(dialog, nullptr);
    EXPECT_STREQ(Class::name(dialog->isA()), "GwDialog");
}

TEST_F(ResourceDialogs, ADialogWithoutAttributeDataIsAPlainGwDialog) {
    GwWindow* dialog = keep(GwResource().loadDialog(6303, nullptr));
    ASSERT_NE(dialog, nullptr);
    EXPECT_STREQ(Class::name(dialog->isA()), "GwDialog");
    EXPECT_EQ(caption(handleOf(dialog)), "Resource test 6303");
}

TEST_F(ResourceDialogs, ADialogWhoseClassMakesNoWindowIsDestroyedAgain) {
    // "GwWindow" is a window class, but its record has no factory.
    EXPECT_EQ(GwResource().loadDialog(6302, nullptr), nullptr);
    EXPECT_EQ(threadWindows(), mWindows);
    EXPECT_EQ(FindWindowA(nullptr, "Resource test 6302"), nullptr);
}

TEST_F(ResourceDialogs, TheParentWindowOwnsTheDialog) {
    HWND parentWindow = testing_windows::rawWindow();
    auto* parent = new testing_windows::DispatchingWindow(parentWindow);
    mDestroy.push_back(parentWindow);
    GwWindow* dialog = GwResource().loadDialog(6300, parent);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(handleOf(dialog), GW_OWNER), parentWindow);
    DestroyWindow(parentWindow); // takes the dialog with it
    mDestroy.clear();
    EXPECT_EQ(gDialogsAlive, 0);
}

TEST_F(ResourceDialogs, LoadDialogReadsTheLibrarysTemplateAndAttributes) {
    GwResource library{String(kLibrary)};
    GwWindow* dialog = keep(library.loadDialog(6300, nullptr));
    ASSERT_NE(dialog, nullptr);
    HWND hwnd = handleOf(dialog);
    EXPECT_EQ(caption(hwnd), "Library test 6300");
    EXPECT_EQ(dialog->isA(), ResTestDialog::isa());
    EXPECT_EQ(GetWindowContextHelpId(hwnd), 88u);
    GwWindow* button = GwWindow::window(GetDlgItem(hwnd, 1001), false);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->isA(), ResTestControl::isa());
    DestroyWindow(hwnd);
    mDestroy.clear();
}

TEST_F(ResourceDialogs, LoadDialogOfAMissingTemplateOrOfIdentifierZeroIsNull) {
    GwResource resource;
    EXPECT_EQ(resource.loadDialog(6399, nullptr), nullptr);
    EXPECT_EQ(resource.loadDialog(0, nullptr), nullptr);
    EXPECT_EQ(threadWindows(), mWindows);
}

// Where the library has no GwDialog yet, a dialog without a class of its own cannot get an
// object: its window must not be left behind.
TEST_F(ResourceModule, WithoutAGwDialogClassADialogIsDestroyedAgain) {
    if (Class::lookup("GwDialog") != nullptr)
        GTEST_SKIP() << "the library has a GwDialog class";
    int windows = threadWindows();
    EXPECT_EQ(GwResource().loadDialog(6303, nullptr), nullptr);
    EXPECT_EQ(GwResource().loadDialog(6301, nullptr), nullptr);
    EXPECT_EQ(threadWindows(), windows);
    EXPECT_EQ(FindWindowA(nullptr, "Resource test 6303"), nullptr);
}

TEST_F(ResourceDialogs, CreateChildGivesAWindowTheObjectOfItsClass) {
    HWND host = testing_windows::rawWindow();
    mDestroy.push_back(host);
    HWND scrollBar = CreateWindowExA(0, "ScrollBar", "", WS_CHILD, 0, 0, 50, 10, host, nullptr,
                                     GetModuleHandleA(nullptr), nullptr);
    GwWindow* object = GwResource::createChild(scrollBar);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->isA(), GwControl::isa());
    EXPECT_EQ(GwWindow::window(scrollBar, false), object);

    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "ResTestControl";
    RegisterClassA(&windowClass);
    HWND own = CreateWindowExA(0, "ResTestControl", "", WS_CHILD, 0, 0, 50, 10, host, nullptr,
                               GetModuleHandleA(nullptr), nullptr);
    GwWindow* ownObject = GwResource::createChild(own);
    ASSERT_NE(ownObject, nullptr);
    EXPECT_EQ(ownObject->isA(), ResTestControl::isa());

    EXPECT_EQ(GwResource::createChild(nullptr), nullptr);
}

// ---- Menus

TEST_F(ResourceMenus, LoadMenuGivesAMenuWithItsIdentifierAndHelpIdentifier) {
    std::unique_ptr<GwMenu> menu(GwResource().loadMenu(6400));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->isA(), GwMenu::isa());
    EXPECT_EQ(menu->id(), 6400u);
    HMENU handle = static_cast<HMENU>(menu->window());
    EXPECT_EQ(GwMenu::lookup(handle), menu.get());
    EXPECT_EQ(GetMenuContextHelpId(handle), 90u);
    EXPECT_EQ(GetMenuItemCount(handle), 5);
}

TEST_F(ResourceMenus, EveryEntryCarriesAMenuItem) {
    std::unique_ptr<GwMenu> menu(GwResource().loadMenu(6400));
    ASSERT_NE(menu, nullptr);
    HMENU bar = static_cast<HMENU>(menu->window());

    GwMenuItem const* command = storedItem(bar, 4);
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->id(), 6540u) << "popup attributes do not apply to a command entry";
    EXPECT_EQ(text(command->text()), "&Direkt");
    EXPECT_EQ(command->menu(), nullptr);

    GwMenuItem const* file = storedItem(bar, 0);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(text(file->text()), "&Datei");
    EXPECT_EQ(file->menu(), subMenu(bar, 0));
    EXPECT_EQ(file->style(), 0x10);

    HMENU fileMenu = GetSubMenu(bar, 0);
    GwMenuItem const* fresh = storedItem(fileMenu, 0);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->id(), 6501u);
    EXPECT_EQ(text(fresh->text()), "&Neu");
    GwMenuItem const* separator = storedItem(fileMenu, 1);
    ASSERT_NE(separator, nullptr);
    EXPECT_EQ(separator->id(), ~0ull);
    EXPECT_EQ(separator->style(), 0x800);
    GwMenuItem const* end = storedItem(fileMenu, 3);
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(end->id(), 6503u);
    EXPECT_EQ(text(end->text()), "&Ende");
    EXPECT_NE(end->state() & MFS_CHECKED, 0);
}

TEST_F(ResourceMenus, SubMenusTakeIdentifiersAndHelpIdentifiersFromTheAttributes) {
    std::unique_ptr<GwMenu> menu(GwResource().loadMenu(6400));
    ASSERT_NE(menu, nullptr);
    HMENU bar = static_cast<HMENU>(menu->window());

    GwMenu* file = subMenu(bar, 0);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->isA(), GwMenu::isa());
    EXPECT_EQ(file->id(), 6410u);
    EXPECT_FALSE(file->dynamic());
    EXPECT_EQ(GetMenuContextHelpId(GetSubMenu(bar, 0)), 91u);
    EXPECT_EQ(storedItem(bar, 0)->id(), 6410u) << "the item takes the sub-menu's identifier";

    // "GwMenu" stands in for "GwMenuId"; "GwId" names the item's identifier.
    GwMenu* view = subMenu(bar, 1);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->isA(), ResTestMenu::isa());
    EXPECT_EQ(view->id(), 6411u);
    EXPECT_EQ(storedItem(bar, 1)->id(), 7001u);
    EXPECT_EQ(storedItem(bar, 1)->menu(), view);
    EXPECT_EQ(storedItem(GetSubMenu(bar, 1), 0)->id(), 6511u);

    // A popup of a plain menu template has no identifier of its own.
    GwMenu* help = subMenu(bar, 3);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->id(), 0u);
    EXPECT_EQ(storedItem(bar, 3)->id(), 0u);
    EXPECT_EQ(GetMenuContextHelpId(GetSubMenu(bar, 3)), 0u);
}

TEST_F(ResourceMenus, LinkedSubMenusAreDynamicWithTheLinkedIdentifier) {
    std::unique_ptr<GwMenu> menu(GwResource().loadMenu(6400));
    ASSERT_NE(menu, nullptr);
    HMENU bar = static_cast<HMENU>(menu->window());

    // "GwLink" (with a "GwMenuId" beside it, which the link overrides).
    GwMenu* extras = subMenu(bar, 2);
    ASSERT_NE(extras, nullptr);
    EXPECT_TRUE(extras->dynamic());
    EXPECT_EQ(extras->id(), 6421u);
    EXPECT_EQ(storedItem(bar, 2)->id(), 6421u);

    // "GwLinkId" comes before "GwLink"; read from the attribute data of the sub-menu 6410.
    HMENU file = GetSubMenu(bar, 0);
    GwMenu* recent = subMenu(file, 2);
    ASSERT_NE(recent, nullptr);
    EXPECT_TRUE(recent->dynamic());
    EXPECT_EQ(recent->id(), 6420u);
    EXPECT_EQ(storedItem(file, 2)->id(), 6420u);
    EXPECT_EQ(text(storedItem(file, 2)->text()), "&Zuletzt");
    EXPECT_EQ(storedItem(GetSubMenu(file, 2), 0)->id(), 6502u);
}

TEST_F(ResourceMenus, AnExtendedTemplateGivesItsPopupsTheirIdentifiers) {
    std::unique_ptr<GwMenu> menu(GwResource().loadMenu(6403));
    ASSERT_NE(menu, nullptr);
    HMENU bar = static_cast<HMENU>(menu->window());
    GwMenu* outer = subMenu(bar, 0);
    ASSERT_NE(outer, nullptr);
    EXPECT_EQ(outer->id(), 6430u);
    EXPECT_EQ(storedItem(bar, 0)->id(), 6430u);

    // Filled with the attribute data of 6430, whose entry for position 0 names 6440.
    HMENU outerHandle = GetSubMenu(bar, 0);
    GwMenu* inner = subMenu(outerHandle, 0);
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->id(), 6440u);
    EXPECT_EQ(storedItem(outerHandle, 0)->id(), 6440u);
    EXPECT_EQ(storedItem(GetSubMenu(outerHandle, 0), 0)->id(), 6441u);
    EXPECT_EQ(storedItem(outerHandle, 1)->id(), 6431u);
}

TEST_F(ResourceMenus, TheAttributesChooseTheMenusClass) {
    GwResource resource;
    std::unique_ptr<GwMenu> own(resource.loadMenu(6402));
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->isA(), ResTestMenu::isa());
    EXPECT_EQ(own->id(), 6402u);
    EXPECT_EQ(GetMenuContextHelpId(static_cast<HMENU>(own->window())), 92u);
    EXPECT_EQ(storedItem(GetSubMenu(static_cast<HMENU>(own->window()), 0), 0)->id(), 6602u);

    std::unique_ptr<GwMenu> plain(resource.loadMenu(6401)); // names a class that is no menu
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->isA(), GwMenu::isa());
}

TEST_F(ResourceMenus, LoadMenuOfAMissingMenuOrOfIdentifierZeroIsNull) {
    int menus = GwMenu::allMenus().count();
    GwResource resource;
    EXPECT_EQ(resource.loadMenu(6499), nullptr);
    EXPECT_EQ(resource.loadMenu(0), nullptr);
    EXPECT_EQ(GwMenu::allMenus().count(), menus);
}

TEST_F(ResourceMenus, LoadMenuReadsTheLibrarysMenuAndAttributes) {
    GwResource library{String(kLibrary)};
    std::unique_ptr<GwMenu> menu(library.loadMenu(6400));
    ASSERT_NE(menu, nullptr);
    HMENU bar = static_cast<HMENU>(menu->window());
    EXPECT_EQ(GetMenuItemCount(bar), 1);
    EXPECT_EQ(text(storedItem(bar, 0)->text()), "&Bibliothek");
    ASSERT_NE(subMenu(bar, 0), nullptr);
    EXPECT_EQ(subMenu(bar, 0)->id(), 6450u);
}

TEST_F(ResourceMenus, DeletingTheMenuBarLeavesNeitherMenuObjectsNorHandles) {
    int menus = GwMenu::allMenus().count();
    GwMenu* menu = GwResource().loadMenu(6400);
    ASSERT_NE(menu, nullptr);
    std::vector<HMENU> handles;
    collectMenus(static_cast<HMENU>(menu->window()), handles);
    ASSERT_EQ(handles.size(), 6u); // the bar, four popups and one popup inside the first
    EXPECT_EQ(GwMenu::allMenus().count(), menus + 6);
    for (HMENU handle : handles)
        EXPECT_NE(GwMenu::lookup(handle), nullptr);
    EXPECT_EQ(gMenusAlive, 1);

    delete menu;
    EXPECT_EQ(GwMenu::allMenus().count(), menus);
    EXPECT_EQ(gMenusAlive, 0);
    for (HMENU handle : handles) {
        EXPECT_FALSE(IsMenu(handle));
        EXPECT_EQ(GwMenu::lookup(handle), nullptr);
    }
}
