// The document of a run and its page, from made-up results.
#include "importhost/validate/page/ReportPage.h"
#include "importhost/validate/report/JsonAccess.h"
#include "importhost/validate/report/ReportDocument.h"
#include "importhost/validate/run/CheckGroups.h"

#include <gtest/gtest.h>

using namespace importhost::validate;

namespace {

constexpr Check kFirst = {"first-check", 1, "What the first demands.", nullptr};
constexpr Check kSecond = {"second-check", 4, "What the second demands.", nullptr};
constexpr Check kThird = {"third-check", 4, "What the third demands.", nullptr};

CheckResult resultWith(const Check& check, Verdict verdict) {
    CheckResult result;
    result.check = &check;
    result.verdict = verdict;
    result.repeat = "importhost again " + std::string(check.id);
    return result;
}

RunFacts someFacts() {
    RunFacts facts;
    facts.options.plugin = "Some.prm";
    facts.options.level = 7;
    facts.options.seed = 18446744073709551615U;
    facts.profile = "editor-11";
    facts.command = "importhost validate";
    facts.started = RunClock::time_point(std::chrono::seconds(1714979339));
    facts.seconds = 12.4;
    return facts;
}

FileDescriptions noFiles() { return {nullptr, Json::array()}; }

Json documentOf(std::vector<CheckResult> checks, const FileDescriptions& files = noFiles()) {
    RunResult result;
    result.checks = std::move(checks);
    return reportDocument(someFacts(), result, files);
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string sentenceFor(std::vector<Verdict> verdicts) {
    std::vector<CheckResult> checks;
    for (const Verdict verdict : verdicts) {
        checks.push_back(resultWith(kFirst, verdict));
    }
    return verdictSentence(documentOf(checks));
}

// --- The document -----------------------------------------------------------------------------------------------

TEST(ReportDocument, HasTheRunInNumbers) {
    const Json document = Json::parse(documentText(
        documentOf({resultWith(kFirst, Verdict::Pass), resultWith(kSecond, Verdict::Crash)})));
    EXPECT_EQ(document["schema"], 1);
    EXPECT_EQ(document["isGood"], false);
    EXPECT_EQ(document["counts"], (Json{{"checks", 2}, {"pass", 1}, {"warn", 0}, {"skip", 0}, {"fail", 0},
                                        {"crash", 1}, {"timeout", 0}}));
    EXPECT_EQ(document["run"]["seed"], "18446744073709551615");
    EXPECT_EQ(document["run"]["level"], 7);
    EXPECT_EQ(document["run"]["started"], "2024-05-06 07:08");
    EXPECT_EQ(document["run"]["ownSamples"], true);
}

TEST(ReportDocument, HasACheckWithAllItsEvidence) {
    CheckResult result = resultWith(kSecond, Verdict::Fail);
    result.failures = {"wrong"};
    result.warnings = {"slow"};
    result.notes = {"seen"};
    result.calls = {"imInit()"};
    result.errorOutput = "gone";
    result.seconds = 1.5;
    EXPECT_EQ(documentOf({result})["checks"][0], (Json{{"id", "second-check"},
                                                       {"group", ""},
                                                       {"level", 4},
                                                       {"verdict", "fail"},
                                                       {"isBad", true},
                                                       {"reason", ""},
                                                       {"seconds", 1.5},
                                                       {"description", "What the second demands."},
                                                       {"failures", {"wrong"}},
                                                       {"warnings", {"slow"}},
                                                       {"notes", {"seen"}},
                                                       {"calls", {"imInit()"}},
                                                       {"errorOutput", "gone"},
                                                       {"repeat", "importhost again second-check"}}));
}

TEST(ReportDocument, KnowsTheGroupOfACheck) {
    const Check* check = findCheck("formats-end");
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(documentOf({resultWith(*check, Verdict::Pass)})["checks"][0]["group"], "protocol");
}

TEST(ReportDocument, TextHasNoPictures) {
    FileDescriptions files = noFiles();
    files.files.push_back(Json{{"sheet", {{"width", 3}, {"png", "AAAA"}}},
                               {"waveforms", {{{"channels", {{{"peak", "-1.2 dB"}, {"low", {0}}, {"high", {1}}}}}}}}});
    const Json document = Json::parse(documentText(documentOf({}, files)));
    EXPECT_EQ(document["files"][0]["sheet"], (Json{{"width", 3}}));
}

TEST(ReportDocument, TextHasTheNumbersOfWaveforms) {
    FileDescriptions files = noFiles();
    files.files.push_back(Json{{"waveforms", {{{"channels", {{{"low", {-0.5}}, {"high", {1}}}}}}}}});
    const Json document = Json::parse(documentText(documentOf({}, files)));
    EXPECT_EQ(document["files"][0]["waveforms"][0]["channels"][0]["low"], Json{-0.5});
    EXPECT_EQ(document["files"][0]["waveforms"][0]["channels"][0]["high"], Json{1});
}

TEST(ReportDocument, InvalidUtf8IsReplaced) {
    CheckResult result = resultWith(kFirst, Verdict::Fail);
    result.failures = {"a\xFFz"};
    EXPECT_EQ(Json::parse(documentText(documentOf({result})))["checks"][0]["failures"][0], "a\xEF\xBF\xBDz");
}

// --- The verdict ------------------------------------------------------------------------------------------------

TEST(VerdictSentence, CountsEveryKindOfFailure) {
    EXPECT_EQ(sentenceFor({Verdict::Fail, Verdict::Crash, Verdict::Timeout, Verdict::Pass}),
              "The plug-in failed 3 of 4 checks.");
    EXPECT_EQ(sentenceFor({Verdict::Fail}), "The plug-in failed 1 of 1 check.");
}

TEST(VerdictSentence, AWarningIsAPass) {
    EXPECT_EQ(sentenceFor({Verdict::Warn, Verdict::Pass}), "The plug-in passed all 2 checks.");
    EXPECT_EQ(sentenceFor({Verdict::Pass}), "The plug-in passed 1 check.");
}

TEST(VerdictSentence, SkippedIsNotPassed) {
    EXPECT_EQ(sentenceFor({Verdict::Pass, Verdict::Skip}), "The plug-in passed 1 check and skipped 1.");
    EXPECT_EQ(sentenceFor({Verdict::Skip, Verdict::Skip}), "No check found anything to look at.");
}

TEST(VerdictSentence, StartsWithFilesNotImported) {
    CheckResult result = resultWith(kFirst, Verdict::Warn);
    result.notImported = {"text.avi"};
    EXPECT_EQ(verdictSentence(documentOf({result})),
              "The plug-in does not import 'text.avi'. The plug-in passed 1 check.");
}

// The sentence for a file of the user's with these facts.
std::string sentenceForFile(const Json& facts) {
    RunResult result;
    result.checks = {resultWith(kFirst, Verdict::Pass)};
    RunFacts run = someFacts();
    run.options.files = {"film.avi"};
    FileDescriptions files = noFiles();
    files.files.push_back(Json{{"name", "film.avi"}, {"facts", facts}});
    return verdictSentence(reportDocument(run, result, files));
}

TEST(VerdictSentence, KnowsWhatThePluginSaidOfTheFile) {
    const std::string isNot = "The plug-in does not import 'film.avi'. The plug-in passed 1 check.";
    const std::string is = "The plug-in passed 1 check.";
    const Json some = Json::object();
    EXPECT_EQ(sentenceForFile(Json{{"streams", Json::array()}}), isNot);
    EXPECT_EQ(sentenceForFile(Json{{"streams", {{{"result", some}}}}}), isNot);
    EXPECT_EQ(sentenceForFile(Json{{"streams", {{{"video", some}, {"sound", nullptr}}}}}), isNot);
    EXPECT_EQ(sentenceForFile(Json{{"streams", {{{"video", some}}}}, {"pixelFormats", {"yuy2"}}}), is);
    EXPECT_EQ(sentenceForFile(Json{{"streams", {{{"video", nullptr}, {"sound", some}}}}}), is);
    EXPECT_EQ(sentenceForFile(nullptr), is);        // unknown
}

// --- The page ---------------------------------------------------------------------------------------------------

TEST(ReportPage, ShowsBadChecksFirstAndOpen) {
    const std::string page = reportPage(documentOf({resultWith(kFirst, Verdict::Pass),
                                                    resultWith(kSecond, Verdict::Skip),
                                                    resultWith(kThird, Verdict::Timeout)}));
    const std::size_t third = page.find("<details id=\"check-third-check\" class=\"check\" open>");
    const std::size_t second = page.find("<details id=\"check-second-check\" class=\"check\">");
    const std::size_t first = page.find("<details id=\"check-first-check\" class=\"check\">");
    ASSERT_NE(first, std::string::npos) << page;
    EXPECT_LT(third, second);
    EXPECT_LT(second, first);
}

TEST(ReportPage, LinksBadChecksFromTheTop) {
    const std::string page = reportPage(documentOf({resultWith(kFirst, Verdict::Crash)}));
    EXPECT_LT(page.find("<a href=\"#check-first-check\">"), page.find("<h2>"));
}

TEST(ReportPage, ShowsCallsAndCommandOfBadChecksOnly) {
    CheckResult bad = resultWith(kFirst, Verdict::Fail);
    bad.calls = {"imInit()"};
    CheckResult good = resultWith(kSecond, Verdict::Pass);
    good.calls = {"imShutdown()"};
    const std::string page = reportPage(documentOf({bad, good}));
    EXPECT_TRUE(contains(page, "imInit()"));
    EXPECT_TRUE(contains(page, "importhost again first-check"));
    EXPECT_FALSE(contains(page, "imShutdown()"));
    EXPECT_FALSE(contains(page, "importhost again second-check"));
}

TEST(ReportPage, ShowsTheEvidenceOfAPassToo) {
    CheckResult good = resultWith(kFirst, Verdict::Pass);
    good.notes = {"seven frames a second"};
    EXPECT_TRUE(contains(reportPage(documentOf({good})), "seven frames a second"));
}

TEST(ReportPage, IsNotGreenWhenAFileIsNotImported) {
    CheckResult result = resultWith(kFirst, Verdict::Warn);
    EXPECT_TRUE(contains(reportPage(documentOf({result})), "<header class=\"good\">"));
    result.notImported = {"<text>.avi"};
    const std::string page = reportPage(documentOf({result}));
    EXPECT_TRUE(contains(page, "<header class=\"bad\">")) << page;
    EXPECT_TRUE(contains(page, "<h1>The plug-in does not import &#39;&lt;text&gt;.avi&#39;.")) << page;
}

// Text from files, plug-ins and paths, wherever it may occur.
constexpr char kHostile[] = "</pre></script><script>alert('x')</script>\"><img src=x onerror=\"y\">\x1B[31m\xFF";

TEST(ReportPage, EscapesMarkup) {
    const Json text = kHostile;
    CheckResult result = resultWith(kFirst, Verdict::Crash);
    result.reason = result.errorOutput = result.repeat = kHostile;
    result.failures = result.warnings = result.notes = result.calls = {kHostile};
    const Json answer = {{"code", 0}, {"name", text}};
    const Json video = {{"alpha", text}, {"fields", text}, {"subType", text}, {"subTypeName", text},
                        {"pixelAspect", {text, text}}};
    const Json sound = {{"sampleType", text}, {"layoutResult", answer}, {"layout", {text}}};
    FileDescriptions files{{{"formats", {{{"name", text}, {"fileType", text}, {"extension", text}}}}}, Json::array()};
    files.files.push_back(Json{
        {"path", text}, {"name", text}, {"modified", text}, {"problem", text}, {"errorOutput", text},
        {"leftUneven", {text}},
        {"facts", {{"open", {{"code", 2}, {"name", text}}},
                   {"streams", {{{"result", {{"code", 3}, {"name", text}}}, {"video", video}, {"sound", sound}}}},
                   {"pixelFormats", {{{"code", text}, {"name", text}}}},
                   {"dataRate", {{"result", answer}}},
                   {"analysis", {{"result", answer}, {"text", text}}}}},
        {"sheet", {{"png", text}, {"frames", {{{"frame", text}, {"result", text}, {"delivered", false}}}}}},
        {"waveforms", {{{"error", text}, {"channels", {{{"name", text}, {"peak", text}}}}}}}});
    RunResult run;
    run.checks = {result};
    RunFacts facts = someFacts();
    facts.pattern = facts.profile = facts.command = kHostile;
    facts.options.plugin = std::filesystem::path(u8"</pre></script><script>alert('x')</script>");
    const std::string page = reportPage(reportDocument(facts, run, files));
    EXPECT_FALSE(contains(page, "<script")) << page;
    EXPECT_FALSE(contains(page, "<img src=x")) << page;
    EXPECT_FALSE(contains(page, "data:image")) << page;
    EXPECT_FALSE(contains(page, "\x1B"));
    EXPECT_FALSE(contains(page, "\xFF"));
    const std::string escaped = "&lt;script&gt;";
    std::size_t shown = 0;
    for (std::size_t at = page.find(escaped); at != std::string::npos; at = page.find(escaped, at + 1)) {
        ++shown;
    }
    EXPECT_GE(shown, 30u) << page;
}

// A process that a plug-in crashed may have written anything.
TEST(ReportPage, SurvivesAnInvalidDocument) {
    const Json nonsense[] = {nullptr, 7, "text", Json::array({1, "x", nullptr}), {{"checks", 7}, {"files", "x"}}};
    for (const Json& json : nonsense) {
        EXPECT_TRUE(contains(reportPage(json), "</html>")) << json;
    }
    Json document = documentOf({resultWith(kFirst, Verdict::Pass)});
    for (const Json& json : nonsense) {
        for (const char* key : {"facts", "sheet", "waveforms", "leftUneven"}) {
            document["files"] = {{{"name", "clip.avi"}, {key, json}}};
            EXPECT_TRUE(contains(reportPage(document), "clip.avi")) << key << json;
        }
        document["files"] = {{{"facts", {{"streams", {json, {{"video", json}, {"sound", json}}}},
                                         {"pixelFormats", json}, {"analysis", json}, {"dataRate", json}}},
                              {"waveforms", {json, {{"channels", {json, {{"low", json}, {"high", json}}}}}}}}};
        EXPECT_TRUE(contains(reportPage(document), "</html>")) << json;
    }
}

TEST(ReportPage, LoadsNothingAndRunsNothing) {
    const std::string page = reportPage(documentOf({resultWith(kFirst, Verdict::Fail)}));
    for (const char* part : {"<script", "<link", "@import", "url(", "http:", "https:", "javascript:"}) {
        EXPECT_FALSE(contains(page, part)) << part;
    }
}

TEST(ReportPage, DrawsWaveformsFromLowestToHighestSample) {
    FileDescriptions files = noFiles();
    files.files.push_back(Json{{"waveforms", {{{"stream", 0},
                                               {"channels", {{{"name", "FrontLeft"},
                                                              {"low", {-0.5, 0, -2}},
                                                              {"high", {0.5, 0, 7}}}}}}}}});
    EXPECT_TRUE(contains(reportPage(documentOf({}, files)),
                         "<svg viewBox=\"0 0 2 100\" preserveAspectRatio=\"none\" role=\"img\" "
                         "aria-label=\"Waveform\"><path d=\"M0 25.0L1 50.0L2 0.0L2 100.0L1 50.0L0 75.0Z\"/></svg>"));
}

TEST(ReportPage, OwnSamplesExceptTheFirstAreClosed) {
    FileDescriptions files = noFiles();
    files.files = {{{"name", "one.avi"}}, {{"name", "two.avi"}}};
    const std::string page = reportPage(documentOf({}, files));
    EXPECT_TRUE(contains(page, "<details class=\"card\" open><summary><b>one.avi")) << page;
    EXPECT_TRUE(contains(page, "<details class=\"card\"><summary><b>two.avi")) << page;
}

}  // namespace
