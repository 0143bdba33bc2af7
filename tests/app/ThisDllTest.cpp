#include <gtest/gtest.h>

#include <windows.h>

#include <GwEventData.h>
#include <GwItem.h>
#include <GwThisDll.h>

#include <typeinfo>

#include "BreakpointCounter.h"

namespace {

HMODULE libraryModule() {
    return GetModuleHandleA("VmGui.dll");
}

// Builds the instance the way the constructor that must not be used does.
class DefaultDll : public GwThisDll {
public:
    DefaultDll() = default;
};

// Each test starts and ends with the instance that the library's load made (or one made
// again for the same module by the attach step).
class ThisDll : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(libraryModule(), nullptr);
        ASSERT_NE(GwThisDll::mCurrent, nullptr);
    }
    void TearDown() override {
        if (GwThisDll::mCurrent == nullptr)
            GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_ATTACH);
        ASSERT_NE(GwThisDll::mCurrent, nullptr);
        EXPECT_EQ(GwThisDll::current().module(), libraryModule());
    }
};

} // namespace

TEST_F(ThisDll, TheLibraryLoadCreatesTheInstance) {
    EXPECT_EQ(&GwThisDll::current(), GwThisDll::mCurrent);
    EXPECT_EQ(GwThisDll::current().module(), libraryModule());
}

TEST_F(ThisDll, TheRecordMakesInstances) {
    Class const* record = Class::lookup("GwThisDll");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwThisDll::isa());
    EXPECT_NE(record->factory(), nullptr);
    EXPECT_STREQ(record->parentNames()[0], "GwObject");
    EXPECT_EQ(GwThisDll::current().isA(), GwThisDll::isa());
}

TEST_F(ThisDll, NewInstanceTwiceReturnsTheFirst) {
    GwThisDll* first = GwThisDll::mCurrent;
    GwEventData other(reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(GwThisDll::newInstance(&other), first);
    EXPECT_EQ(GwThisDll::mCurrent, first);
    EXPECT_EQ(first->module(), libraryModule());
}

TEST_F(ThisDll, CreationByNameAnswersTheInstance) {
    GwEventData other(reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(Class::lookup("GwThisDll")->createInstance(&other), GwThisDll::mCurrent);
}

TEST_F(ThisDll, DetachClearsTheInstance) {
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH));
    EXPECT_EQ(GwThisDll::mCurrent, nullptr);
}

TEST_F(ThisDll, DetachWithoutInstanceDoesNothing) {
    GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH);
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH));
    EXPECT_EQ(GwThisDll::mCurrent, nullptr);
}

TEST_F(ThisDll, AttachCreatesTheInstanceForTheModule) {
    GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH);
    ASSERT_EQ(GwThisDll::mCurrent, nullptr);
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_ATTACH));
    ASSERT_NE(GwThisDll::mCurrent, nullptr);
    EXPECT_EQ(GwThisDll::current().module(), libraryModule());
}

TEST_F(ThisDll, AttachKeepsAnExistingInstance) {
    GwThisDll* first = GwThisDll::mCurrent;
    EXPECT_TRUE(GwThisDll::moduleEntry(reinterpret_cast<void*>(0x1234), DLL_PROCESS_ATTACH));
    EXPECT_EQ(GwThisDll::mCurrent, first);
    EXPECT_EQ(first->module(), libraryModule());
}

TEST_F(ThisDll, ThreadReasonsChangeNothing) {
    GwThisDll* first = GwThisDll::mCurrent;
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_THREAD_ATTACH));
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_THREAD_DETACH));
    EXPECT_EQ(GwThisDll::mCurrent, first);
    GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH);
    EXPECT_TRUE(GwThisDll::moduleEntry(libraryModule(), DLL_THREAD_ATTACH));
    EXPECT_EQ(GwThisDll::mCurrent, nullptr);
}

TEST_F(ThisDll, WithoutInstanceNewInstanceNeedsAHandle) {
    GwThisDll::moduleEntry(libraryModule(), DLL_PROCESS_DETACH);
    GwEventData empty;
    EventData plain;
    EXPECT_EQ(GwThisDll::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwThisDll::newInstance(&empty), nullptr);
    EXPECT_EQ(GwThisDll::newInstance(&plain), nullptr);
    EXPECT_EQ(GwThisDll::mCurrent, nullptr);

    GwEventData carrying(libraryModule());
    GwThisDll* made = GwThisDll::newInstance(&carrying);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(GwThisDll::mCurrent, made);
    EXPECT_EQ(made->module(), libraryModule());
}

TEST_F(ThisDll, DefaultConstructorBreaksIntoTheDebugger) {
    GwThisDll* first = GwThisDll::mCurrent;
    BreakpointCounter breaks;
    {
        DefaultDll unusable;
        EXPECT_EQ(breaks.count(), 1);
        EXPECT_EQ(unusable.module(), nullptr);
    }
    EXPECT_EQ(GwThisDll::mCurrent, first) << "only the instance clears mCurrent";
}

TEST_F(ThisDll, ACopyHasTheModuleAndLeavesTheInstanceAlone) {
    GwThisDll* first = GwThisDll::mCurrent;
    {
        GwThisDll copy(GwThisDll::current());
        EXPECT_EQ(copy.module(), libraryModule());
    }
    EXPECT_EQ(GwThisDll::mCurrent, first);
}

TEST_F(ThisDll, AssigningAnObjectOfAnotherClassThrows) {
    GwThisDll copy(GwThisDll::current());
    GwItem item;
    EXPECT_THROW(copy = static_cast<Object const&>(item), std::bad_cast);
}

TEST_F(ThisDll, TheLibraryCursorIsAnArrowWithItsHotSpotAtTheTip) {
    auto module = static_cast<HINSTANCE>(GwThisDll::current().module());
    HCURSOR cursor = LoadCursorA(module, MAKEINTRESOURCEA(100));
    ASSERT_NE(cursor, nullptr);
    ICONINFO info = {};
    ASSERT_TRUE(GetIconInfo(cursor, &info));
    EXPECT_FALSE(info.fIcon);
    EXPECT_EQ(info.xHotspot, 0u);
    EXPECT_EQ(info.yHotspot, 0u);
    BITMAP mask = {};
    ASSERT_NE(GetObjectA(info.hbmMask, sizeof mask, &mask), 0);
    EXPECT_EQ(mask.bmWidth, 32);
    EXPECT_EQ(info.hbmColor, nullptr) << "monochrome: mask and image in one bitmap";
    EXPECT_EQ(mask.bmHeight, 64);
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        DeleteObject(info.hbmColor);
}
