// Every name table of the log: each row, and values that have none.
#include "HostFixture.h"
#include "VocabularyTables.h"

#include "host/Vocabulary.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <span>
#include <string>

namespace {

using NameFunction = const char* (*)(csSDK_int32);

struct Table {
    const char* title;
    NameFunction function;
    std::span<const CodeName> rows;
    const char* unknown;
};

const Table kTables[] = {
    {"Selector", SelectorName, kSelectors, "????"},
    {"Result", ErrorName, kResults, "????"},
    {"AsyncSelector", AsyncSelectorName, kAsyncSelectors, "????"},
    {"AsyncResult", AsyncErrorName, kAsyncResults, "????"},
    {"ChannelLabel", ChannelLabelName, kChannelLabels, "Unknown_Channel_Label"},
};

class NameTable : public testing::TestWithParam<Table> {};

TEST_P(NameTable, EveryListedCodeHasItsName) {
    for (const CodeName& row : GetParam().rows) {
        EXPECT_STREQ(GetParam().function(row.code), row.name) << row.code;
    }
}

TEST_P(NameTable, EveryOtherCodeIsUnknown) {
    std::set<csSDK_int32> listed;
    for (const CodeName& row : GetParam().rows) {
        listed.insert(row.code);
    }
    for (csSDK_int32 code = -500; code <= 1000; ++code) {
        if (!listed.contains(code)) {
            EXPECT_STREQ(GetParam().function(code), GetParam().unknown) << code;
        }
    }
}

TEST_P(NameTable, CodesEqualOnlyInTheirLowBitsAreUnknown) {
    for (const CodeName& row : GetParam().rows) {
        EXPECT_STREQ(GetParam().function(row.code + 0x100 * 1024), GetParam().unknown) << row.code;
        EXPECT_STREQ(GetParam().function(row.code + 0x10000), GetParam().unknown) << row.code;
    }
}

TEST_P(NameTable, TheExtremesAreUnknown) {
    EXPECT_STREQ(GetParam().function(std::numeric_limits<csSDK_int32>::min()), GetParam().unknown);
    EXPECT_STREQ(GetParam().function(std::numeric_limits<csSDK_int32>::max()), GetParam().unknown);
}

INSTANTIATE_TEST_SUITE_P(Vocabulary, NameTable, testing::ValuesIn(kTables),
                         [](const testing::TestParamInfo<Table>& table) { return table.param.title; });

TEST(Vocabulary, TheTablesHaveAsManyRowsAsTheHostHasNames) {
    EXPECT_EQ(std::size(kSelectors), 48u);
    EXPECT_EQ(std::size(kResults), 46u);
    EXPECT_EQ(std::size(kAsyncSelectors), 7u);
    EXPECT_EQ(std::size(kAsyncResults), 4u);
    EXPECT_EQ(std::size(kChannelLabels), 32u);
}

TEST(Vocabulary, SelectorsEndAt66) {
    EXPECT_STREQ(SelectorName(66), "imPerformSourceSettingsCommand");
    EXPECT_STREQ(SelectorName(67), "????");
}

TEST(Vocabulary, SelectorGapsAndNegativesAreUnknown) {
    EXPECT_STREQ(SelectorName(2), "????");
    EXPECT_STREQ(SelectorName(-1), "????");
}

TEST(Vocabulary, Result38KeepsItsMisspelling) { EXPECT_STREQ(ErrorName(38), "inFileNotAvailable"); }

TEST(Vocabulary, Result101HasTheNameOfTheSharedList) { EXPECT_STREQ(ErrorName(101), "malSupports8"); }

TEST(Vocabulary, ResultsWithoutANameAreUnknown) {
    EXPECT_STREQ(ErrorName(41), "????");
    EXPECT_STREQ(ErrorName(99), "????");
    EXPECT_STREQ(ErrorName(100), "????");
    EXPECT_STREQ(ErrorName(-1), "????");
}

TEST(Vocabulary, AsyncResultsEndAt3) {
    EXPECT_STREQ(AsyncErrorName(3), "aiFrameNotFound");
    EXPECT_STREQ(AsyncErrorName(4), "????");
}

TEST(Vocabulary, UnknownChannelLabelsHaveATextOfTheirOwn) {
    EXPECT_STREQ(ChannelLabelName(120), "Unknown_Channel_Label");
}

// ---- pixel formats -------------------------------------------------------------------------------------------

// Code and name of each format of the log's list ("[bgra] :   1   -  PrPixelFormat_BGRA_4444_8u (err: ..."), and of the
// one that is not listed.
std::map<csSDK_uint32, std::string> listedFormats() {
    std::map<csSDK_uint32, std::string> listed = {{0, "PrPixelFormat_Any"}};
    for (const std::string& line : goldenLines("imInit.txt")) {
        const std::size_t name = line.find("PrPixelFormat_");
        const std::size_t end = line.find(" (err: ");
        if (line.starts_with('[') && name < end && end != std::string::npos) {
            const csSDK_uint32 code = codeOf(line.substr(1, 4).c_str());
            EXPECT_TRUE(listed.emplace(code, line.substr(name, end - name)).second) << "twice: " << line;
        }
    }
    return listed;
}

TEST(PixelFormatNames, EveryListedCodeHasItsName) {
    for (const auto& [code, name] : listedFormats()) {
        EXPECT_EQ(PixelFormatName(code), name) << std::hex << code;
    }
}

TEST(PixelFormatNames, NoCodeIsListedTwice) { EXPECT_GE(listedFormats().size(), 73u); }

TEST(PixelFormatNames, NeighboursOfListedCodesAreUnknown) {
    const std::map<csSDK_uint32, std::string> listed = listedFormats();
    for (const auto& [code, name] : listed) {
        for (const csSDK_uint32 neighbour : {code - 1, code + 1, code ^ 0x80000000u, code ^ 0x80u}) {
            if (!listed.contains(neighbour)) {
                EXPECT_STREQ(PixelFormatName(neighbour), "????") << std::hex << neighbour;
            }
        }
    }
}

TEST(PixelFormatNames, CodesInOtherLetterCaseAreUnknown) {
    const std::map<csSDK_uint32, std::string> listed = listedFormats();
    int checked = 0;
    for (const auto& [code, name] : listed) {
        for (csSDK_uint32 cases = 0; cases < 16; ++cases) {
            csSDK_uint32 other = code;
            for (int byte = 0; byte < 4; ++byte) {
                const csSDK_uint32 character = code >> (8 * byte) & 0xFF;
                const bool isLetter = (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
                if (isLetter && (cases >> byte & 1) != 0) {
                    other ^= 0x20u << (8 * byte);
                }
            }
            if (!listed.contains(other)) {
                EXPECT_STREQ(PixelFormatName(other), "????") << std::hex << other;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 500);
}

TEST(PixelFormatNames, TheFirstCharacterIsTheLowestByte) {
    EXPECT_STREQ(PixelFormatName(0x61726762), "PrPixelFormat_BGRA_4444_8u");
    EXPECT_STREQ(PixelFormatName(0x62677261), "PrPixelFormat_ARGB_4444_8u");
    EXPECT_STREQ(PixelFormatName(codeOf("v210")), "PrPixelFormat_V210_422_10u_601");
    EXPECT_STREQ(PixelFormatName(codeOf("012v")), "????");
}

TEST(PixelFormatNames, TellingValues) {
    EXPECT_STREQ(PixelFormatName(0), "PrPixelFormat_Any");
    EXPECT_STREQ(PixelFormatName(0x66646162), "PrPixelFormat_Invalid");
    EXPECT_STREQ(PixelFormatName(0x77776172), "PrPixelFormat_Raw");
    EXPECT_STREQ(PixelFormatName(0x41595556), "PrPixelFormat_VUYA_4444_8u_709");
    EXPECT_STREQ(PixelFormatName(0xFFFFFFFF), "????");
}

TEST(PixelFormatNames, TheCaseOfBgraDistinguishesTheDepths) {
    EXPECT_STREQ(PixelFormatName(codeOf("BGRA")), "????");
    EXPECT_STREQ(PixelFormatName(codeOf("BGra")), "PrPixelFormat_BGRA_4444_32f");
    EXPECT_STREQ(PixelFormatName(codeOf("Bgra")), "PrPixelFormat_BGRA_4444_16u");
    EXPECT_STREQ(PixelFormatName(codeOf("bgra")), "PrPixelFormat_BGRA_4444_8u");
}

}  // namespace
