// A check's events and the end of its process, as a verdict and as lines for a terminal.
#include "importhost/validate/run/Result.h"
#include "importhost/validate/run/ResultText.h"

#include <gtest/gtest.h>

using namespace importhost::validate;

namespace {

constexpr Check kCheck = {"sample-check", 3, "What it demands.", nullptr};
const Event kEnd = {EventKind::End, ""};

TEST(Verdict, ACheckWithoutEventsPasses) {
    EXPECT_EQ(resultOf(kCheck, {kEnd}, {}).verdict, Verdict::Pass);
}

TEST(Verdict, NotesDoNotPreventAPass) {
    const CheckResult result = resultOf(kCheck, {{EventKind::Note, "seen"}, kEnd}, {});
    EXPECT_EQ(result.verdict, Verdict::Pass);
    EXPECT_EQ(result.notes, std::vector<std::string>{"seen"});
}

TEST(Verdict, AFailureOutweighsTheRest) {
    const CheckResult result = resultOf(
        kCheck, {{EventKind::Failure, "wrong"}, {EventKind::Warning, "slow"}, {EventKind::Skip, "none"}, kEnd}, {});
    EXPECT_EQ(result.verdict, Verdict::Fail);
    EXPECT_EQ(result.failures, std::vector<std::string>{"wrong"});
    EXPECT_EQ(result.warnings, std::vector<std::string>{"slow"});
}

TEST(Verdict, AWarningWarns) {
    EXPECT_EQ(resultOf(kCheck, {{EventKind::Warning, "slow"}, kEnd}, {}).verdict, Verdict::Warn);
    EXPECT_FALSE(isBad(Verdict::Warn));
}

TEST(Verdict, ASkipHasItsReason) {
    const CheckResult result = resultOf(kCheck, {{EventKind::Skip, "no sound"}, kEnd}, {});
    EXPECT_EQ(result.verdict, Verdict::Skip);
    EXPECT_EQ(result.reason, "no sound");
}

TEST(Verdict, WithoutAnEndEventItCrashedAtTheLastStep) {
    const CheckResult result =
        resultOf(kCheck, {{EventKind::Step, "first.avi"}, {EventKind::Step, "second.avi"}}, {.exitCode = 5});
    EXPECT_EQ(result.verdict, Verdict::Crash);
    EXPECT_EQ(result.reason, "exit code 5 (at second.avi)");
}

TEST(Verdict, AProcessWithoutEventsCrashed) {
    EXPECT_EQ(resultOf(kCheck, {}, {.exitCode = 0}).verdict, Verdict::Crash);
}

TEST(Verdict, AFailedExitAfterTheCheckIsACrash) {
    const CheckResult result = resultOf(kCheck, {kEnd}, {.exitCode = 1});
    EXPECT_EQ(result.verdict, Verdict::Crash);
    EXPECT_EQ(result.reason, "after the check: exit code 1");
}

TEST(Verdict, AStoppedCheckTookTooLongDespiteFailures) {
    const CheckResult result =
        resultOf(kCheck, {{EventKind::Step, "slow.avi"}, {EventKind::Failure, "wrong"}},
                 {.limit = std::chrono::seconds(7)});
    EXPECT_EQ(result.verdict, Verdict::Timeout);
    EXPECT_EQ(result.reason, "ended after 7 seconds (at slow.avi)");
    EXPECT_EQ(result.failures, std::vector<std::string>{"wrong"});
}

TEST(Verdict, KeepsTheEndOfALongErrorOutput) {
    const CheckResult result = resultOf(kCheck, {}, {.errorOutput = std::string(10000, 'a') + "the point"});
    EXPECT_EQ(result.errorOutput.size(), 6003u);
    EXPECT_TRUE(result.errorOutput.ends_with("the point"));
}

#ifdef _WIN32
TEST(ExitText, NamesTheException) {
    EXPECT_EQ(exitText(static_cast<int>(0xC0000005)), "access violation (0xC0000005)");
    EXPECT_EQ(exitText(static_cast<int>(0xC0001234)), "exit code 0xC0001234");
    EXPECT_EQ(exitText(3), "exit code 3");
}
#else
TEST(ExitText, NamesTheSignal) {
    EXPECT_EQ(exitText(-11), "Segmentation fault (signal 11)");
    EXPECT_EQ(exitText(3), "exit code 3");
}
#endif

CheckResult badResult() {
    CheckResult result = resultOf(kCheck, {{EventKind::Failure, "wrong"}, {EventKind::Note, "seen"},
                                           {EventKind::Call, "imInit()"}, kEnd},
                                  {.seconds = 1.25});
    result.repeat = "importhost again";
    return result;
}

TEST(ResultText, AFailureEndsWithTheCommandThatRepeatsIt) {
    EXPECT_EQ(asText(badResult()), R"(FAIL     sample-check                                1.2 s
         wrong
         note: seen
         The latest calls:
           imInit()
         To repeat it: importhost again
)");
}

TEST(ResultText, APassIsOneLine) {
    EXPECT_EQ(asText(resultOf(kCheck, {{EventKind::Note, "seen"}, kEnd}, {})),
              "pass     sample-check                                0.0 s\n");
}

TEST(ResultText, TheSummaryCountsAndRepeatsBadChecks) {
    RunResult run;
    run.checks = {badResult(), resultOf(kCheck, {kEnd}, {}), resultOf(kCheck, {{EventKind::Skip, "none"}, kEnd}, {})};
    EXPECT_EQ(summaryText(run), "3 checks: 1 passed, 1 skipped, 1 FAILED.\n  FAIL  importhost again\n");
    EXPECT_FALSE(run.isGood());
}

TEST(ResultText, TheSummaryStartsWithFilesNotImported) {
    RunResult run;
    run.checks = {resultOf(kCheck, {{EventKind::Warning, "refused"}, {EventKind::NotImported, "text.avi"}, kEnd}, {})};
    EXPECT_EQ(summaryText(run), "The plug-in does not import 'text.avi'.\n1 check: 0 passed, 1 with a warning.\n");
    EXPECT_TRUE(run.isGood());
}

TEST(ResultText, NamesAtMostFiveFilesNotImported) {
    EXPECT_EQ(notImportedText({"a", "b"}), "The plug-in does not import 2 files: 'a', 'b'.");
    EXPECT_EQ(notImportedText({"a", "b", "c", "d", "e", "f"}),
              "The plug-in does not import 6 files: 'a', 'b', 'c', 'd', 'e' and others.");
    EXPECT_EQ(notImportedText({}), "");
}

}  // namespace
