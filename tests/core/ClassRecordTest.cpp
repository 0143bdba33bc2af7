#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <set>
#include <string>

#include <VmGui.h>

namespace {

enum class Factory { makes, null, none };

struct Row {
    char const* name;
    char const* parent; // null: no parent list at all
    Factory factory;
};

// Every class of the library with its parent and the kind of its factory.
Row const kClasses[] = {
    {"Gw3StateButton", "GwButton", Factory::makes},
    {"GwApplication", "GwObject", Factory::none},
    {"GwBitmap", "GwObject", Factory::makes},
    {"GwButton", "GwControl", Factory::makes},
    {"GwColorSelect", "GwDialog", Factory::null},
    {"GwComboBox", "GwControl", Factory::makes},
    {"GwControl", "GwWindow", Factory::makes},
    {"GwControlBar", "GwWindow", Factory::null},
    {"GwDialog", "GwFrame", Factory::makes},
    {"GwDockBar", "GwControlBar", Factory::makes},
    {"GwEditField", "GwControl", Factory::makes},
    {"GwEventData", "EventData", Factory::makes},
    {"GwEventHandler", "GwObject", Factory::none},
    {"GwFileSelect", "GwDialog", Factory::makes},
    {"GwFileSelect::Iterator", "GwObject", Factory::makes},
    {"GwFrame", "GwWindow", Factory::makes},
    {"GwGC", "GwObject", Factory::makes},
    {"GwGCWMF", "GwGC", Factory::makes},
    {"GwGroupBox", "GwStatic", Factory::makes},
    {"GwImage", "GwStatic", Factory::makes},
    {"GwItem", "GwObject", Factory::makes},
    {"GwListBox", "GwControl", Factory::makes},
    {"GwMDIChildFrame", "GwFrame", Factory::makes},
    {"GwMDIClient", "GwWindow", Factory::makes},
    {"GwMDIFrame", "GwFrame", Factory::makes},
    {"GwMenu", "GwWindow", Factory::makes},
    {"GwMenuItem", "GwTextItem", Factory::makes},
    {"GwMessageBox", "GwDialog", Factory::makes},
    {"GwObject", "Object", Factory::none},
    {"GwPushButton", "GwButton", Factory::makes},
    {"GwRadioButton", "GwButton", Factory::makes},
    {"GwRcData", "GwObject", Factory::null},
    {"GwRcDataEntry", "GwObject", Factory::null},
    {"GwRcDataItem", "GwObject", Factory::null},
    {"GwResource", "GwObject", Factory::makes},
    {"GwStartup", "GwObject", Factory::null},
    {"GwStatic", "GwControl", Factory::makes},
    {"GwStatusBar", "GwControlBar", Factory::makes},
    {"GwTab", "GwControl", Factory::makes},
    {"GwTabItem", "GwItem", Factory::makes},
    {"GwQuillEdit", "GwWindow", Factory::null},
    {"GwText", "GwStatic", Factory::makes},
    {"GwTextItem", "GwItem", Factory::makes},
    {"GwThisDll", "GwObject", Factory::makes},
    {"GwToggleButton", "GwButton", Factory::makes},
    {"GwToolBar", "GwControlBar", Factory::makes},
    {"GwToolBarItem", "GwItem", Factory::makes},
    {"GwTools", nullptr, Factory::none},
    {"GwUserButton", "GwButton", Factory::makes},
    {"GwUserData", "GwObject", Factory::makes},
    {"GwViewport", "GwControl", Factory::makes},
    {"GwWindow", "GwObject", Factory::none},
    {"GwWindowClass", "GwObject", Factory::null},
    {"GwWindowControl3D", "GwObject", Factory::null},
};

// The classes the library has so far; each must be registered exactly as its row says.
std::set<std::string> const kBuilt = {
    "GwEventData", "GwEventHandler", "GwItem",  "GwObject",
    "GwStartup",   "GwTextItem",     "GwTools", "GwUserData",
    // buttons, edit field, statics
    "GwButton", "GwPushButton", "GwToggleButton", "Gw3StateButton", "GwRadioButton",
    "GwUserButton", "GwEditField", "GwStatic", "GwText", "GwGroupBox", "GwImage",
    // graphics
    "GwGC", "GwGCWMF", "GwViewport",
    // Lists and tabs.
    "GwComboBox", "GwListBox", "GwTab", "GwTabItem",
    // common dialogs
    "GwFileSelect", "GwFileSelect::Iterator", "GwColorSelect",
    // editor window
    "GwQuillEdit",
    // tool bars
    "GwToolBar", "GwToolBarItem",
};

} // namespace

TEST(ClassRecord, TableHasFiftyFourClasses) {
    EXPECT_EQ(std::size(kClasses), 54u);
}

TEST(ClassRecord, EveryBuiltClassIsRegistered) {
    for (std::string const& name : kBuilt)
        EXPECT_NE(Class::lookup(name.c_str()), nullptr) << name;
}

TEST(ClassRecord, RegisteredRecordsMatchTheirRows) {
    // A window handle, so that window-class factories have something to bind to.
    HWND window = CreateWindowExA(0, "Static", "", 0, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    for (Row const& row : kClasses) {
        Class const* record = Class::lookup(row.name);
        if (record == nullptr) {
            EXPECT_EQ(kBuilt.count(row.name), 0u) << row.name;
            continue;
        }
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(record->name(), row.name);
        EXPECT_GT(record->instanceSize(), 0);
        if (row.parent == nullptr) {
            EXPECT_EQ(record->parentNames(), nullptr);
        } else {
            ASSERT_NE(record->parentNames(), nullptr);
            EXPECT_STREQ(record->parentNames()[0], row.parent);
            EXPECT_EQ(record->parentNames()[1], nullptr);
            EXPECT_NE(Class::lookup(row.parent), nullptr) << "parent " << row.parent;
        }
        switch (row.factory) {
        case Factory::none:
            EXPECT_EQ(record->factory(), nullptr);
            break;
        case Factory::null: {
            EXPECT_EQ(record->factory(), &gwNullFactory);
            GwEventData data(window);
            EXPECT_EQ(record->createInstance(&data), nullptr);
            break;
        }
        case Factory::makes:
            EXPECT_NE(record->factory(), nullptr);
            EXPECT_NE(record->factory(), &gwNullFactory);
            break;
        }
    }
    DestroyWindow(window);
}

TEST(ClassRecord, IsaAndIsAAnswerTheRecordOfTheName) {
    GwItem item(1);
    GwTextItem text(2);
    GwUserData data;
    GwEventData eventData;
    GwTools tools;
    EXPECT_EQ(GwItem::isa(), Class::lookup("GwItem"));
    EXPECT_EQ(item.isA(), GwItem::isa());
    EXPECT_EQ(text.isA(), Class::lookup("GwTextItem"));
    EXPECT_EQ(static_cast<GwItem&>(text).isA(), GwTextItem::isa());
    EXPECT_EQ(data.isA(), Class::lookup("GwUserData"));
    EXPECT_EQ(eventData.isA(), Class::lookup("GwEventData"));
    EXPECT_EQ(tools.isA(), Class::lookup("GwTools"));
    EXPECT_EQ(GwObject::isa(), Class::lookup("GwObject"));
    EXPECT_EQ(GwStartup::isa(), Class::lookup("GwStartup"));
    EXPECT_EQ(GwEventHandler::isa(), Class::lookup("GwEventHandler"));
}

TEST(ClassRecord, KinshipReachesTheBaseLibrary) {
    EXPECT_TRUE(GwTextItem::isa()->isSubclassOf(GwItem::isa()));
    EXPECT_TRUE(GwTextItem::isa()->isSubclassOf(GwObject::isa()));
    EXPECT_TRUE(GwTextItem::isa()->isSubclassOf(Class::lookup("Object")));
    EXPECT_TRUE(GwEventData::isa()->isSubclassOf(Class::lookup("EventData")));
    EXPECT_TRUE(GwItem::isa()->isSubclassOf(GwItem::isa()));
    EXPECT_FALSE(GwItem::isa()->isSubclassOf(GwTextItem::isa()));
    EXPECT_FALSE(GwTools::isa()->isSubclassOf(GwObject::isa()));
}

TEST(ClassRecord, CreatingByNameUsesTheFactory) {
    Object* made = Class::createInstance(Class::lookup("GwTextItem"), nullptr);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), GwTextItem::isa());
    delete made;

    EXPECT_EQ(Class::createInstance(Class::lookup("GwObject"), nullptr), nullptr);
    EXPECT_EQ(Class::createInstance(Class::lookup("GwStartup"), nullptr), nullptr);
    EXPECT_EQ(GwStartup::newInstance(nullptr), nullptr);
}

TEST(ClassRecord, GwWindowCannotBeCreatedByName) {
    Class const* record = Class::lookup("GwWindow");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->factory(), nullptr);
    HWND window = CreateWindowExA(0, "Static", "", 0, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    GwEventData data(window);
    EXPECT_EQ(record->createInstance(&data), nullptr);
    EXPECT_EQ(GetWindowLongPtrA(window, GWLP_USERDATA), 0);
    DestroyWindow(window);
}

TEST(ClassRecord, WindowFactoriesBindOnlyToAHandle) {
    Class const* record = Class::lookup("GwControl");
    ASSERT_NE(record, nullptr);
    GwEventData none;
    EXPECT_EQ(record->createInstance(&none), nullptr);
    EXPECT_EQ(record->createInstance(nullptr), nullptr);
    GwItem item(1);
    GwEventData onlyItem(item);
    EXPECT_EQ(record->createInstance(&onlyItem), nullptr);

    HWND window = CreateWindowExA(0, "Static", "", 0, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    GwEventData data(window);
    Object* made = record->createInstance(&data);
    ASSERT_NE(made, nullptr);
    auto* control = dynamic_cast<GwWindow*>(made);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->window(), window);
    EXPECT_EQ(GetWindowLongPtrA(window, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(control));
    DestroyWindow(window); // the object deletes itself with its window
    EXPECT_FALSE(IsWindow(window));
}

TEST(ClassRecord, AssignmentFromAnotherClassThrowsBadCast) {
    GwItem item(3);
    GwUserData data;
    Object& asObject = item;
    EXPECT_THROW(asObject = data, std::bad_cast);
    GwItem other(8);
    asObject = other;
    EXPECT_EQ(item.id(), 8u);
}
