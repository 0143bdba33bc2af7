#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

#include <GwGeometry.h>
#include <GwTools.h>

TEST(Geometry, LessThanHoldsOnlyWhenBothComponentsAreLess) {
    EXPECT_TRUE(GwPosition(1, 5) < GwPosition(2, 6));
    EXPECT_FALSE(GwPosition(1, 7) < GwPosition(2, 6));
    EXPECT_FALSE(GwPosition(2, 6) < GwPosition(1, 7));
    EXPECT_TRUE(GwDimension(1, 5) < GwDimension(2, 6));
    EXPECT_FALSE(GwDimension(1, 7) < GwDimension(2, 6));
    EXPECT_FALSE(GwDimension(2, 6) < GwDimension(1, 7));
}

TEST(Geometry, MaximumIsComponentwise) {
    EXPECT_EQ(GwPosition(1, 7).maximum(GwPosition(2, 6)), GwPosition(2, 7));
    EXPECT_EQ(GwDimension(1, 7).maximum(GwDimension(2, 6)), GwDimension(2, 7));
}

TEST(Geometry, RectangleArithmeticCoversAllFourFields) {
    EXPECT_EQ(GwRectangle(1, 2, 10, 20) + GwRectangle(1, 1, 1, 1), GwRectangle(2, 3, 11, 21));
    EXPECT_EQ(GwRectangle(1, 2, 10, 20) - GwRectangle(1, 1, 1, 1), GwRectangle(0, 1, 9, 19));
    GwRectangle r(1, 2, 10, 20);
    r += GwRectangle(1, 1, 1, 1);
    EXPECT_EQ(r, GwRectangle(2, 3, 11, 21));
    r -= GwRectangle(2, 3, 11, 21);
    EXPECT_EQ(r, GwRectangle());
}

TEST(Geometry, PositionAndDimensionArithmetic) {
    GwPosition p(3, 4);
    EXPECT_EQ(p + GwPosition(1, -1), GwPosition(4, 3));
    EXPECT_EQ(p - GwPosition(1, -1), GwPosition(2, 5));
    p += GwPosition(2, 2);
    EXPECT_EQ(p, GwPosition(5, 6));
    p -= GwPosition(5, 6);
    EXPECT_EQ(p, GwPosition());
    EXPECT_TRUE(GwPosition(1, 2) != GwPosition(1, 3));
    EXPECT_FALSE(GwPosition(1, 2) != GwPosition(1, 2));
    GwDimension d(10, 20);
    d += GwDimension(1, 2);
    EXPECT_EQ(d, GwDimension(11, 22));
    EXPECT_EQ(d - GwDimension(11, 22), GwDimension());
}

TEST(Geometry, RectangleAssignsHalves) {
    GwRectangle r(1, 2, 3, 4);
    r = GwPosition(7, 8);
    EXPECT_EQ(r, GwRectangle(7, 8, 3, 4));
    r = GwDimension(9, 10);
    EXPECT_EQ(r, GwRectangle(7, 8, 9, 10));
    EXPECT_EQ(r.position(), GwPosition(7, 8));
    EXPECT_EQ(r.dimension(), GwDimension(9, 10));
    EXPECT_EQ(GwRectangle(GwPosition(1, 2), GwDimension(3, 4)), GwRectangle(1, 2, 3, 4));
}

TEST(Geometry, ValuesAreSigned32Bit) {
    EXPECT_EQ(sizeof(long), 4u);
    EXPECT_EQ(GwPosition(-5, -6) + GwPosition(1, 1), GwPosition(-4, -5));
}

TEST(Tools, ConvertsBetweenConsoleAndWindowCodePagesInPlace) {
    // The same character in both code pages, as the system converts it.
    wchar_t const wide[] = L"\u00FC\u00DF x";
    char oem[16] = {}, ansi[16] = {};
    WideCharToMultiByte(CP_OEMCP, 0, wide, -1, oem, sizeof oem, nullptr, nullptr);
    WideCharToMultiByte(CP_ACP, 0, wide, -1, ansi, sizeof ansi, nullptr, nullptr);
    ASSERT_STRNE(oem, ansi) << "code pages " << GetOEMCP() << " and " << GetACP();

    char text[16];
    std::strcpy(text, oem);
    EXPECT_EQ(GwTools::charToAnsi(text), text);
    EXPECT_STREQ(text, ansi);
    EXPECT_EQ(GwTools::ansiToChar(text), text);
    EXPECT_STREQ(text, oem);
    EXPECT_EQ(GwTools::charToAnsi(nullptr), nullptr);
}
