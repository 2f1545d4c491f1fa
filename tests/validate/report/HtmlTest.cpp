// The small parts that a report is made of.
#include "importhost/validate/page/FactList.h"
#include "importhost/validate/page/Html.h"
#include "importhost/validate/report/Base64.h"
#include "importhost/validate/report/FileFacts.h"
#include "importhost/validate/report/RunTime.h"

#include <gtest/gtest.h>

using namespace importhost::validate;

namespace {

TEST(HtmlText, EscapesMarkup) {
    EXPECT_EQ(htmlText("<script>alert(\"1\" & '2')</script>"),
              "&lt;script&gt;alert(&quot;1&quot; &amp; &#39;2&#39;)&lt;/script&gt;");
}

TEST(HtmlText, KeepsTextOfAllLanguagesAndLineEnds) {
    EXPECT_EQ(htmlText("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC\n\t"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC\n\t");
}

TEST(HtmlText, ControlCharactersAreReplaced) {
    EXPECT_EQ(htmlText(std::string("a\0b\x1B[31m\x7F", 9)), "a\xEF\xBF\xBD" "b\xEF\xBF\xBD[31m\xEF\xBF\xBD");
    EXPECT_EQ(htmlText("\xC2\x85"), "\xEF\xBF\xBD");
}

TEST(HtmlText, InvalidUtf8IsReplaced) { EXPECT_EQ(htmlText("a\xFFz"), "a\xEF\xBF\xBDz"); }

// "gpj.exe" must not be shown as "exe.jpg".
TEST(HtmlText, DirectionCharactersAreReplaced) { EXPECT_EQ(htmlText("\xE2\x80\xAEgpj"), "\xEF\xBF\xBDgpj"); }

TEST(Base64, HasTheUsualDigitsAndPadding) {
    EXPECT_EQ(base64(""), "");
    EXPECT_EQ(base64("f"), "Zg==");
    EXPECT_EQ(base64("fo"), "Zm8=");
    EXPECT_EQ(base64("foo"), "Zm9v");
    EXPECT_EQ(base64(std::string("\xFB\xEF\xBE\x00", 4)), "++++AA==");
}

TEST(SizeText, HasARoundAndAnExactNumber) {
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(1), "1 byte");
    EXPECT_EQ(sizeText(1023), "1 023 bytes");
    EXPECT_EQ(sizeText(1468006), "1.4 MiB (1 468 006 bytes)");
    EXPECT_EQ(sizeText(5368709120.0), "5.0 GiB (5 368 709 120 bytes)");
}

TEST(DurationText, GetsCoarserAsItGrows) {
    EXPECT_EQ(durationText(0.314), "0.31 s");
    EXPECT_EQ(durationText(12.42), "12.4 s");
    EXPECT_EQ(durationText(185.2), "3 min 05 s");
    EXPECT_EQ(durationText(59.97), "1 min 00 s");
}

TEST(DateText, HasTheDayAndTheMinute) {
    EXPECT_EQ(dateText(RunClock::time_point(std::chrono::seconds(1714979339))), "2024-05-06 07:08");
}

TEST(LibraryVersion, IsReadFromTheResource) {
    const std::string resource("\xBD\x04\xEF\xFE\x00\x00\x01\x00\x02\x00\x01\x00\x04\x00\x03\x00", 16);
    EXPECT_EQ(versionInBytes("MZ....." + resource + "...."), "1.2.3.4");
}

TEST(LibraryVersion, IsEmptyWithoutAWholeResource) {
    const std::string cut("\xBD\x04\xEF\xFE\x00\x00\x01\x00\x02\x00\x01", 11);
    EXPECT_EQ(versionInBytes("MZ" + cut), "");
    EXPECT_EQ(versionInBytes(""), "");
    EXPECT_EQ(libraryVersion("no such file"), "");
}

TEST(FileFacts, AMissingFileHasNoSizeAndNoDate) {
    const FileFacts facts = factsOf("no such file");
    EXPECT_EQ(facts.bytes, 0u);
    EXPECT_EQ(facts.modified, "");
}

}  // namespace
