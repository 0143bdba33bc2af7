// The count of live library objects that a debug build of the library keeps.
#include <gtest/gtest.h>

#include <utility>

#include <GwItem.h>
#include <GwObject.h>
#include <GwUserData.h>

TEST(LiveObjects, ConstructionsCountUpAndDestructionsDown) {
    if (GwObject::liveObjects() < 0)
        GTEST_SKIP() << "a release build of the library counts no objects";
    long const before = GwObject::liveObjects();
    EXPECT_GT(before, 0) << "the library's own static objects live";
    {
        GwItem item(7);
        EXPECT_EQ(GwObject::liveObjects(), before + 1);
        GwItem copy(item);
        GwItem moved(std::move(copy));
        EXPECT_EQ(GwObject::liveObjects(), before + 3) << "copies and moves are objects too";
        auto* data = new GwUserData;
        EXPECT_EQ(GwObject::liveObjects(), before + 4);
        delete data;
        EXPECT_EQ(GwObject::liveObjects(), before + 3);
    }
    EXPECT_EQ(GwObject::liveObjects(), before);
}

TEST(LiveObjects, AssignmentMakesNoObject) {
    if (GwObject::liveObjects() < 0)
        GTEST_SKIP() << "a release build of the library counts no objects";
    GwItem first(1);
    GwItem second(2);
    long const before = GwObject::liveObjects();
    first = second;
    first = std::move(second);
    EXPECT_EQ(GwObject::liveObjects(), before);
}
