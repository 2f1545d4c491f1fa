// The plug-in's declarations before any file is opened: the import format and the list of subtypes.
#include "importer/support/ImporterTest.h"

#include "hostkit/system/Text.h"

#include <cstring>

using hostkit::Answer;
using hostkit::HostRecord;

namespace {

class FormatList : public ImporterTest {
protected:
    // Fills the record, which a host would zero, with `fill`, so that every written byte shows.
    Answer<imIndFormatRec> formatInto(std::uint8_t fill, csSDK_int32 index) {
        HostRecord<imIndFormatRec> record;
        std::memset(record.get(), fill, sizeof(imIndFormatRec));
        return session().exchange(imGetIndFormat, std::move(record), hostkit::asPointer(index));
    }
};

class FormatListBeforeInit : public ImporterTest {
protected:
    void SetUp() override { load(); }
};

}  // namespace

TEST_F(FormatList, DeclaresQuorvaneAvi) {
    const auto answer = session().format(0);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer->filetype, 0x41564956);
    EXPECT_EQ(answer->canWriteTimecode, 0);
    EXPECT_STREQ(answer->FormatName, "Quorvane AVI");
    EXPECT_STREQ(answer->FormatShortName, "Quorvane AVI");
    EXPECT_STREQ(answer->PlatformExtension, "avi");
}

TEST_F(FormatList, TerminatesTheExtensionsWithARecordsZero) {
    const auto answer = session().format(0);
    EXPECT_EQ(std::memcmp(answer->PlatformExtension, "avi\0", 5), 0);
}

TEST_F(FormatList, WritesTheFileTypeWithTheBytesVIVA) {
    const auto answer = session().format(0);
    EXPECT_EQ(std::memcmp(answer.record.data(), "VIVA", 4), 0);
}

TEST_F(FormatList, WritesOnlyItsFieldsOfTheRecord) {
    const auto answer = formatInto(0xCD, 0);
    // Type, timecode, and each text with its end.
    EXPECT_EQ(hostkit::describe(answer.written), "0-3 8-24 268-280 300-303");
}

TEST_F(FormatList, LogsTheOfferedFormat) {
    EXPECT_EQ(logOf([&] { session().format(0); }),
              (Lines{"----------------------", "[imGetIndFormat] (14)", "index 0: AVIV", "    [imNoErr] (0)"}));
}

TEST_F(FormatList, EndsAfterTheFirst) {
    EXPECT_EQ(logOf([&] { EXPECT_EQ(session().format(1).result, 301); }),
              (Lines{"----------------------", "[imGetIndFormat] (14)", "index 1: imBadFormatIndex",
                     "    [imBadFormatIndex] (301)"}));
}

TEST_F(FormatList, WritesNothingForAnIndexPastTheEnd) {
    EXPECT_EQ(hostkit::describe(formatInto(0xCD, 1).written), "nothing");
}

TEST_F(FormatList, TreatsANegativeIndexAsHuge) {
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(session().format(-1).result, 301); }),
              (Lines{"index 4294967295: imBadFormatIndex"}));
}

TEST_F(FormatList, NamesTheSixteenSubtypesInOrder) {
    const auto answer = session().subTypeNames(0x41564956);
    ASSERT_EQ(answer.result, 0);
    EXPECT_EQ(answer.blockBytes, 16 * 516);
    Lines listed;
    for (const imSubTypeDescriptionRec& record : answer.records) {
        listed.push_back(hostkit::codeText(static_cast<csSDK_uint32>(record.subType)) + " " +
                         hostkit::toUtf8(hostkit::fieldText(record.subTypeName, 256)));
    }
    EXPECT_EQ(listed, (Lines{
                          "AR8Q Quorvane 8-bit RGBA",
                          "GR8Q Quorvane 8-bit RGB",
                          "AY8Q Quorvane 8-bit YUVA 4:4:4:4",
                          "4Y8Q Quorvane 8-bit YUV 4:4:4",
                          "2Y8Q Quorvane 8-bit YUV 4:2:2",
                          "0Y8Q Quorvane 8-bit YUV 4:2:0",
                          "0G8Q Quorvane 8-bit YUV 4:0:0 greyscale",
                          "AR0Q Quorvane 10-bit RGBA",
                          "GR0Q Quorvane 10-bit RGB",
                          "4Y0Q Quorvane 10-bit YUV 4:4:4",
                          "2Y0Q Quorvane 10-bit YUV 4:2:2",
                          "0G0Q Quorvane 10-bit YUV 4:0:0 greyscale",
                          "AR2Q Quorvane 12-bit RGBA",
                          "GR2Q Quorvane 12-bit RGB",
                          "AR4Q Quorvane 14-bit RGBA",
                          "GR4Q Quorvane 14-bit RGB",
                      }));
}

TEST_F(FormatList, LogsSubtypesWithTheirHighestByteFirst) {
    const Lines lines = logOf([&] { session().subTypeNames(0x41564956); });
    ASSERT_EQ(lines.size(), 20u);
    EXPECT_EQ(lines[2], "filetype: AVIV");
    EXPECT_EQ(lines[3], "Adding subtype: 'Q8RA' : 'Quorvane 8-bit RGBA'");
    EXPECT_EQ(lines[18], "Adding subtype: 'Q4RG' : 'Quorvane 14-bit RGB'");
    EXPECT_EQ(lines[19], "    [imNoErr] (0)");
}

TEST_F(FormatList, ReturnsTheSameSubtypesForAnyFileType) {
    const Lines lines = handlerLogOf([&] { EXPECT_EQ(session().subTypeNames(0x41000000).records.size(), 16u); });
    EXPECT_EQ(lines.front(), "filetype: A[0][0][0]");
}

TEST_F(FormatList, ReturnsImMemErrIfTheHostHasNoMemory) {
    host().faults().fail(hostkit::HostCall::NewPtr, 0);
    void* list = &list;
    EXPECT_EQ(session().call(imGetSubTypeNames, hostkit::asPointer(0x41564956), &list), 4);
    EXPECT_EQ(list, nullptr);
}

TEST_F(FormatList, LogsThatTheHostHasNoMemory) {
    host().faults().fail(hostkit::HostCall::NewPtr, 0);
    EXPECT_EQ(logOf([&] { session().subTypeNames(0x41564956); }),
              (Lines{"----------------------", "[imGetSubTypeNames] (54)", "filetype: AVIV",
                     "ERROR: the host gave no memory", "    [imMemErr] (4)"}));
}

TEST_F(FormatListBeforeInit, ReturnsAnEmptyListOfSubtypes) {
    EXPECT_EQ(logOf([&] {
                  const auto answer = session().subTypeNames(0x41564956);
                  EXPECT_EQ(answer.result, 0);
                  EXPECT_TRUE(answer.records.empty());
              }),
              (Lines{"Log opened", "Application: <program>", "----------------------", "[imGetSubTypeNames] (54)",
                     "filetype: AVIV", "    [imNoErr] (0)"}));
}

TEST_F(FormatListBeforeInit, StillDeclaresTheFormat) {
    EXPECT_EQ(session().format(0).result, 0);
}
