#include "base/Arith.h"
#include "base/Random.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;

TEST(Arith, Mul255IsTheRoundedQuotientForEveryPair)
{
    for (int a = 0; a < 256; a++)
        for (int b = 0; b < 256; b++)
            ASSERT_EQ(Mul255(a, b), static_cast<int>(std::floor(a * b / 255.0 + 0.5))) << a << " x " << b;
}

TEST(Arith, Lerp255KeepsItsEndsAndStaysBetween)
{
    for (int dst = 0; dst < 256; dst++)
        for (int src = 0; src < 256; src++) {
            ASSERT_EQ(Lerp255(dst, src, 0), dst);
            ASSERT_EQ(Lerp255(dst, src, 255), src);
            const int nMiddle = Lerp255(dst, src, 100);
            ASSERT_GE(nMiddle, std::min(dst, src));
            ASSERT_LE(nMiddle, std::max(dst, src));
        }
}

TEST(Random, TheSequenceOfASeedNeverChanges)
{
    Srand(1);
    const int expected[] = {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358};
    for (const int n : expected)
        EXPECT_EQ(Rand(), n);
    Srand(1);
    EXPECT_EQ(Rand(), 41);
}

TEST(Random, TheClockSeedCanBeFixed)
{
    SetClockSeed(77);
    EXPECT_EQ(ClockSeed(), 77u);
}
