#include "importhost/validate/framework/Wildcard.h"

#include <gtest/gtest.h>

using importhost::validate::fitsWildcard;

namespace {

TEST(Wildcard, WithoutAStarMatchesTheNameItself) {
    EXPECT_TRUE(fitsWildcard("formats-end", "formats-end"));
    EXPECT_FALSE(fitsWildcard("formats-end", "formats"));
    EXPECT_FALSE(fitsWildcard("formats", "formats-end"));
}

TEST(Wildcard, AStarMatchesAnyText) {
    EXPECT_TRUE(fitsWildcard("formats-end", "*"));
    EXPECT_TRUE(fitsWildcard("formats-end", "formats*"));
    EXPECT_TRUE(fitsWildcard("formats-end", "*end"));
    EXPECT_TRUE(fitsWildcard("formats-end", "f*-*d"));
    EXPECT_TRUE(fitsWildcard("formats-end", "formats*-end"));
    EXPECT_FALSE(fitsWildcard("formats-end", "*ends"));
    EXPECT_FALSE(fitsWildcard("formats-end", "x*"));
    EXPECT_FALSE(fitsWildcard("formats-end", "f*x*d"));
}

TEST(Wildcard, TheTextAfterAStarMayOccurTwice) { EXPECT_TRUE(fitsWildcard("end-of-end", "*end")); }

TEST(Wildcard, PartsDoNotOverlap) { EXPECT_FALSE(fitsWildcard("aba", "ab*ba")); }

TEST(Wildcard, AnEmptyPatternMatchesOnlyAnEmptyName) {
    EXPECT_TRUE(fitsWildcard("", ""));
    EXPECT_FALSE(fitsWildcard("a", ""));
}

}  // namespace
