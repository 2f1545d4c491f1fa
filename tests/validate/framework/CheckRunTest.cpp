// What a running check can use, and the events that it causes.
#include "importhost/validate/framework/CheckRun.h"

#include "importhost/validate/framework/Places.h"
#include "support/TempFolder.h"

#include <functional>

using namespace importhost::validate;

namespace {

// A check is a function without state.
std::function<void(CheckRun&)> body;

std::vector<Event> eventsOf(std::function<void(CheckRun&)> what, std::string_view id = "sample-check",
                            std::uint64_t seed = 1, int level = 5) {
    const TempFolder folder;
    body = std::move(what);
    const Check check = {id, 1, "", [](CheckRun& run) { body(run); }};
    RunOptions options;
    options.level = level;
    options.seed = seed;
    options.files = {"clip.avi"};
    EventList events;
    runCheck(options, check, folder.folder(), events);
    return events.events();
}

std::uint64_t firstRandom(std::string_view id, std::uint64_t seed) {
    std::uint64_t number = 0;
    eventsOf([&](CheckRun& run) { number = run.below(1000000007); }, id, seed);
    return number;
}

TEST(CheckRun, RandomNumbersDependOnSeedAndCheckAlone) {
    EXPECT_EQ(firstRandom("one-check", 7), firstRandom("one-check", 7));
    EXPECT_NE(firstRandom("one-check", 7), firstRandom("one-check", 8));
    EXPECT_NE(firstRandom("one-check", 7), firstRandom("another-check", 7));
}

TEST(CheckRun, ASeedGivesTheSameNumbersOnEverySystem) {
    std::mt19937_64 wanted(7 ^ 0xCBF29CE484222325U);        // the hash of an empty id
    EXPECT_EQ(firstRandom("", 7), wanted() % 1000000007);
}

TEST(CheckRun, EffortGrowsWithTheLevel) {
    const auto effortAt = [](int level) {
        int effort = 0;
        eventsOf([&](CheckRun& run) { effort = run.effort(2, 20); }, "sample-check", 1, level);
        return effort;
    };
    EXPECT_EQ(effortAt(1), 2);
    EXPECT_EQ(effortAt(5), 10);
    EXPECT_EQ(effortAt(10), 20);
}

std::chrono::seconds limitFor(std::size_t files, std::optional<std::chrono::seconds> asked = std::nullopt) {
    const Check check = {"sample-check", 1, "", nullptr, Company::Shared, std::chrono::seconds(20)};
    RunOptions options;
    options.files.resize(files);
    options.timeLimit = asked;
    return timeLimitOf(options, check);
}

TEST(CheckRun, TheTimeLimitGrowsWithTheUsersFiles) {
    EXPECT_EQ(limitFor(0).count(), 20);
    EXPECT_EQ(limitFor(4).count(), 20);
    EXPECT_EQ(limitFor(5).count(), 25);
    EXPECT_EQ(limitFor(40).count(), 200);
}

TEST(CheckRun, AGivenTimeLimitAppliesToAnyNumberOfFiles) {
    EXPECT_EQ(limitFor(40, std::chrono::seconds(3)).count(), 3);
}

bool hasTimeWithin(std::chrono::seconds limit) {
    const TempFolder folder;
    static bool hasTime = false;
    const Check check = {"sample-check", 1, "", [](CheckRun& run) { hasTime = run.hasTime(); }};
    RunOptions options;
    options.timeLimit = limit;
    EventList events;
    runCheck(options, check, folder.folder(), events);
    return hasTime;
}

TEST(CheckRun, ACheckHasTimeUnlessItsLimitIsUsedUp) {
    EXPECT_TRUE(hasTimeWithin(std::chrono::hours(1)));
    EXPECT_FALSE(hasTimeWithin(std::chrono::seconds(0)));
}

TEST(CheckRun, FailuresNameTheStep) {
    const std::vector<Event> events = eventsOf([](CheckRun& run) {
        run.step("plain.avi");
        run.expectEqual("the width", 3, 4);
        run.step("");
        run.fail("wrong");
    });
    EXPECT_EQ(events, (std::vector<Event>{{EventKind::Step, "plain.avi"},
                                          {EventKind::Failure, "plain.avi: the width: found 3, wanted 4"},
                                          {EventKind::Step, ""},
                                          {EventKind::Failure, "wrong"},
                                          {EventKind::End, ""}}));
}

TEST(CheckRun, CallsUpToTheFirstFailureAreShown) {
    const std::vector<Event> events = eventsOf([](CheckRun& run) {
        run.trace().add("imInit()");
        run.fail("wrong");
        run.trace().add("imShutdown()");
        run.fail("wrong again");
    });
    EXPECT_EQ(events, (std::vector<Event>{{EventKind::Call, "imInit()"},
                                          {EventKind::Failure, "wrong"},
                                          {EventKind::Failure, "wrong again"},
                                          {EventKind::End, ""}}));
}

TEST(CheckRun, ShowsALimitedNumberOfFailures) {
    const std::vector<Event> events = eventsOf([](CheckRun& run) {
        for (int i = 0; i < 1000; ++i) {
            run.fail("wrong");
        }
    });
    ASSERT_EQ(events.size(), 27u);
    EXPECT_EQ(events[25].text, "more failures are not shown");
}

TEST(CheckRun, FailuresCanBeTurnedIntoNotes) {
    const std::vector<Event> events = eventsOf([](CheckRun& run) {
        run.failNoMore();
        run.fail("wrong");
        EXPECT_FALSE(run.hasFailed());
    });
    EXPECT_EQ(events, (std::vector<Event>{{EventKind::Note, "wrong"}, {EventKind::End, ""}}));
}

TEST(CheckRun, ASkipLeavesTheCheck) {
    const std::vector<Event> events = eventsOf([](CheckRun& run) {
        run.skip("no sound");
        run.fail("not reached");
    });
    EXPECT_EQ(events, (std::vector<Event>{{EventKind::Skip, "no sound"}, {EventKind::End, ""}}));
}

TEST(CheckRun, AnExceptionIsAFailure) {
    const std::vector<Event> events = eventsOf([](CheckRun&) { throw std::runtime_error("no memory"); });
    EXPECT_EQ(events, (std::vector<Event>{{EventKind::Failure, "no memory"}, {EventKind::End, ""}}));
}

TEST(CheckRun, TheUsersFilesAreOfUnknownKind) {
    eventsOf([](CheckRun& run) {
        ASSERT_EQ(run.clips().size(), 1u);
        EXPECT_EQ(run.clips()[0].name, "clip.avi");
        EXPECT_EQ(run.clips()[0].kind, ClipKind::Unknown);
        EXPECT_FALSE(run.hasOwnSamples());
    });
}

}  // namespace
