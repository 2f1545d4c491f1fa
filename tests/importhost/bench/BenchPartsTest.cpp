// Parts of a measurement: summaries of times, samples of long clips, tables.
#include "importhost/bench/Sampling.h"
#include "importhost/bench/Statistics.h"
#include "importhost/bench/TextTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>

using namespace importhost::bench;

namespace {

using Indexes = std::vector<std::int64_t>;

TEST(Summary, OfNothingIsZeros) {
    const Summary summary = summaryOf({});
    EXPECT_EQ(summary.count, 0u);
    EXPECT_EQ(summary.worst, 0.0);
    EXPECT_EQ(summary.perSecond(), 0.0);
}

TEST(Summary, OfOneTimeIsThatTime) {
    const Summary summary = summaryOf({4.0});
    EXPECT_EQ(summary.median, 4.0);
    EXPECT_EQ(summary.p95, 4.0);
    EXPECT_EQ(summary.worst, 4.0);
    EXPECT_EQ(summary.perSecond(), 250.0);
}

TEST(Summary, MedianOfAnEvenCountLiesBetweenTheMiddleTwo) {
    EXPECT_EQ(summaryOf({9.0, 1.0, 2.0, 4.0}).median, 3.0);
    EXPECT_EQ(summaryOf({9.0, 1.0, 2.0}).median, 2.0);
}

TEST(Summary, P95CoversNineteenOfTwenty) {
    std::vector<double> times(20);
    std::iota(times.rbegin(), times.rend(), 1.0);
    EXPECT_EQ(summaryOf(times).p95, 19.0);
    times.push_back(21.0);
    EXPECT_EQ(summaryOf(times).p95, 20.0);
}

TEST(Summary, TotalsAllTimes) { EXPECT_EQ(summaryOf({1.0, 2.0, 5.0}).total, 8.0); }

TEST(Sampling, TakesAllOfAShortClip) {
    EXPECT_EQ(spreadIndexes(4, 4), (Indexes{0, 1, 2, 3}));
    EXPECT_EQ(spreadIndexes(3, 200), (Indexes{0, 1, 2}));
}

TEST(Sampling, OfNothingIsEmpty) {
    EXPECT_EQ(spreadIndexes(0, 5), Indexes{});
    EXPECT_EQ(randomIndexes(0, 5, 1), Indexes{});
}

TEST(Sampling, TakesRunsOfALongClip) {
    EXPECT_EQ(spreadIndexes(100, 16), (Indexes{0, 1, 14, 15, 28, 29, 42, 43, 56, 57, 70, 71, 84, 85, 98, 99}));
}

TEST(Sampling, FewerThanEightAreTakenSingly) {
    EXPECT_EQ(spreadIndexes(100, 3), (Indexes{0, 49, 99}));
    EXPECT_EQ(spreadIndexes(100, 1), Indexes{0});
}

TEST(Sampling, NeverTakesOneTwice) {
    for (std::int64_t total = 1; total < 60; ++total) {
        for (std::int64_t most = 1; most < 60; ++most) {
            const Indexes indexes = spreadIndexes(total, most);
            ASSERT_FALSE(indexes.empty());
            ASSERT_TRUE(std::is_sorted(indexes.begin(), indexes.end(), std::less_equal<>())) << total << " " << most;
            ASSERT_LE(indexes.size(), static_cast<std::size_t>(most));
            ASSERT_EQ(indexes.front(), 0);
            ASSERT_LT(indexes.back(), total);
        }
    }
}

TEST(Sampling, OfTheLongestClipDoesNotOverflow) {
    const std::int64_t longest = std::int64_t{1} << 62;
    EXPECT_EQ(spreadIndexes(longest, 2), (Indexes{0, longest - 1}));
}

TEST(Sampling, AtRandomIsTheSameForTheSameSeed) {
    EXPECT_EQ(randomIndexes(1000, 5, 7), randomIndexes(1000, 5, 7));
    EXPECT_NE(randomIndexes(1000, 5, 7), randomIndexes(1000, 5, 8));
}

TEST(Sampling, AtRandomTakesEachOfAShortClipOnce) {
    const Indexes indexes = randomIndexes(20, 200, 3);
    EXPECT_EQ(indexes.size(), 20u);
    EXPECT_EQ(std::set<std::int64_t>(indexes.begin(), indexes.end()).size(), 20u);
    EXPECT_FALSE(std::is_sorted(indexes.begin(), indexes.end()));
}

TEST(TextTable, AlignsNumbers) {
    TextTable table;
    table.add({"row", "fps"});
    table.add({"linear", "12.5"});
    table.add({"a"});
    EXPECT_EQ(table.text(), "  row      fps\n"
                            "  linear  12.5\n"
                            "  a\n");
}

}  // namespace
