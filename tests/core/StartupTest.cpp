#include <gtest/gtest.h>

#include <GwStartup.h>

#include <memory>
#include <vector>

#include "StartupHooks.h"

using namespace testing_startup;

namespace {

// Sets the library's own hooks aside, so that a test sees only the hooks it makes.
class StartupTable : public ::testing::Test {
protected:
    void SetUp() override {
        mSaved = GwStartup::allStartup;
        GwStartup::allStartup = nullptr;
        gVisits.clear();
    }
    void TearDown() override {
        EXPECT_EQ(GwStartup::allStartup, nullptr) << "every hook of the test has left";
        GwStartup::allStartup = mSaved;
    }

private:
    GwObjectTable<GwStartup>* mSaved = nullptr;
};

} // namespace

TEST_F(StartupTable, HooksRunInTheOrderTheyEnrolled) {
    Hook one(1), two(2), three(3);
    EXPECT_TRUE(GwStartup::run(true));
    EXPECT_TRUE(GwStartup::run(false));
    EXPECT_EQ(gVisits, (std::vector<int>{1, 2, 3, -1, -2, -3}));
}

TEST_F(StartupTable, AHoleEndsTheWalk) {
    auto one = std::make_unique<Hook>(1);
    auto two = std::make_unique<Hook>(2);
    auto three = std::make_unique<Hook>(3);
    two.reset();
    GwStartup::run(true);
    EXPECT_EQ(gVisits, std::vector<int>{1});
    EXPECT_EQ(GwStartup::allStartup->count(), 3);
}

TEST_F(StartupTable, TheTableIsMadeOnFirstEnrolmentWithRoomForTwenty) {
    EXPECT_EQ(GwStartup::allStartup, nullptr);
    Hook one(1);
    ASSERT_NE(GwStartup::allStartup, nullptr);
    EXPECT_EQ(GwStartup::allStartup->capacity(), 20);
    EXPECT_EQ(GwStartup::allStartup->at(0), &one);
}

TEST_F(StartupTable, TheTableIsFreedWhenTheLastHookLeavesAndMadeAfresh) {
    {
        Hook one(1);
        Hook two(2);
    }
    EXPECT_EQ(GwStartup::allStartup, nullptr);
    Hook again(4);
    ASSERT_NE(GwStartup::allStartup, nullptr);
    EXPECT_EQ(GwStartup::allStartup->count(), 1);
    GwStartup::run(true);
    EXPECT_EQ(gVisits, std::vector<int>{4});
}

TEST_F(StartupTable, AHoleIsFilledByTheNextHook) {
    auto one = std::make_unique<Hook>(1);
    auto two = std::make_unique<Hook>(2);
    auto three = std::make_unique<Hook>(3);
    two.reset();
    Hook four(4);
    GwStartup::run(true);
    EXPECT_EQ(gVisits, (std::vector<int>{1, 4, 3}));
}

TEST_F(StartupTable, RunWithoutHooksIsTrue) {
    EXPECT_TRUE(GwStartup::run(true));
    EXPECT_TRUE(gVisits.empty());
}

TEST_F(StartupTable, TheBaseHooksDoNothingAndAnswerTrue) {
    GwStartup plain;
    EXPECT_TRUE(plain.initInstance());
    EXPECT_TRUE(plain.exitInstance());
}
