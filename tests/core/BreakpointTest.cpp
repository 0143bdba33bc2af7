#include <gtest/gtest.h>

#include "BreakpointCounter.h"

TEST(Breakpoint, DebugBreakIsCountedAndExecutionGoesOn) {
    BreakpointCounter breaks;
    DebugBreak();
    DebugBreak();
    EXPECT_EQ(breaks.count(), 2);
}

TEST(Breakpoint, CounterStartsAtZero) {
    BreakpointCounter breaks;
    EXPECT_EQ(breaks.count(), 0);
}
