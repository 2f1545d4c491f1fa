// The order in which frames are announced and collected.
#include "importhost/clips/AsyncPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace importhost;

namespace {

// "+0 +1 -0 ! +1": announcements, collections and changes of focus.
std::string words(const std::vector<AsyncStep>& plan) {
    std::string text;
    for (const AsyncStep& step : plan) {
        text += text.empty() ? "" : " ";
        switch (step.kind) {
            case AsyncStep::Kind::Announce: text += "+" + std::to_string(step.position); break;
            case AsyncStep::Kind::Collect: text += "-" + std::to_string(step.position); break;
            case AsyncStep::Kind::Refocus: text += "!"; break;
        }
    }
    return text;
}

std::vector<std::size_t> collected(const std::vector<AsyncStep>& plan) {
    std::vector<std::size_t> positions;
    for (const AsyncStep& step : plan) {
        if (step.kind == AsyncStep::Kind::Collect) {
            positions.push_back(step.position);
        }
    }
    return positions;
}

TEST(AsyncPlan, KeepsTheAnnouncedCountAndCollectsInOrder) {
    EXPECT_EQ(words(asyncPlan(4, {.ahead = 2})), "+0 +1 -0 +2 -1 +3 -2 -3");
}

TEST(AsyncPlan, AnnouncesNoMoreFramesThanThereAre) { EXPECT_EQ(words(asyncPlan(2, {.ahead = 9})), "+0 +1 -0 -1"); }

TEST(AsyncPlan, OfNoFramesIsEmpty) { EXPECT_EQ(words(asyncPlan(0, {.ahead = 3})), ""); }

TEST(AsyncPlan, AnnouncesAgainAfterAChangeOfFocus) {
    EXPECT_EQ(words(asyncPlan(4, {.ahead = 3, .refocusEvery = 2})), "+0 +1 +2 -0 +3 -1 ! +2 +3 -2 -3");
}

TEST(AsyncPlan, ASeedShufflesEachGroup) {
    const auto plan = asyncPlan(40, {.ahead = 10, .shuffleSeed = 7});
    const std::vector<std::size_t> order = collected(plan);
    ASSERT_EQ(order.size(), 40u);
    EXPECT_FALSE(std::is_sorted(order.begin(), order.end()));
    for (std::size_t group = 0; group < 4; ++group) {
        const auto begin = order.begin() + static_cast<std::ptrdiff_t>(10 * group);
        const std::set<std::size_t> members(begin, begin + 10);
        EXPECT_EQ(members.size(), 10u);
        EXPECT_EQ(*members.begin(), 10 * group);
        EXPECT_EQ(*members.rbegin(), 10 * group + 9);
    }
}

TEST(AsyncPlan, DependsOnTheSeedAlone) {
    const AsyncOptions seven{.ahead = 10, .shuffleSeed = 7};
    EXPECT_EQ(asyncPlan(40, seven), asyncPlan(40, seven));
    EXPECT_NE(asyncPlan(40, seven), asyncPlan(40, {.ahead = 10, .shuffleSeed = 8}));
}

TEST(AsyncPlan, CollectsOnlyWhatIsAnnounced) {
    std::set<std::size_t> pending;
    std::size_t changes = 0;
    for (const AsyncStep& step : asyncPlan(50, {.ahead = 6, .shuffleSeed = 3, .refocusEvery = 4})) {
        switch (step.kind) {
            case AsyncStep::Kind::Announce: EXPECT_TRUE(pending.insert(step.position).second); break;
            case AsyncStep::Kind::Collect: EXPECT_EQ(pending.erase(step.position), 1u); break;
            case AsyncStep::Kind::Refocus: pending.clear(); ++changes; break;
        }
        EXPECT_LE(pending.size(), 6u);
    }
    EXPECT_EQ(changes, 12u);
}

}  // namespace
