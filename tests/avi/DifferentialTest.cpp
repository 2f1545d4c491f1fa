// The parser and its plainest form have equal results and texts for whole, cut and damaged files.
#include "LiteralParser.h"
#include "SampleFiles.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace aviwriter;

// Several streams, both kinds of index, and a second segment.
Bytes richFile() {
    const Bytes second = riff("AVIX", {list("movi", {ix("ix00", {.baseOffset = 1000, .entries = {{8, 4}, {20, 0}}})})});
    SuperIndex super{.entries = {{0, 8 + 24 + 16}, {0, 8 + 24 + 16}, {0, 0}}};
    Bytes first = riff("AVI ", {list("hdrl", {avih({.streams = 4}),
                                              samples::videoStrl({indx(super)}),
                                              samples::audioStrl({chunk("strn", text("name"))}),
                                              list("strl", {strh({.type = "txts"}), strf({})}),
                                              samples::audioStrl(),
                                              odml(5)}),
                                list("INFO", {chunk("ISFT", text("odd"))}),
                                list("movi", {chunk("00dc", filled(4, 1)), chunk("01wb", filled(3, 2)),
                                              ix("ix00", {.entries = {{12, 4}, {24, 4 | kNotKeyFrame}}})}),
                                idx1({{.chunkId = "00dc", .offset = 4, .length = 4},
                                      {.chunkId = "01wb", .flags = 0, .offset = 16, .length = 3},
                                      {.chunkId = "03wb", .offset = 16, .length = 3}})});
    Bytes file = first + second;
    for (std::size_t i = 0; i < 2; ++i) {
        overwrite(file, samples::superIndexEntryAt(file, i), u64(positionOf(file, "ix00", i)));
    }
    return file;
}

std::string parsed(const Bytes& bytes) {
    fileio::MemoryFile file(bytes);
    AviParser parser;
    const bool usable = parser.parse(file);
    return describe(parser, usable);
}

std::string parsedLiterally(const Bytes& bytes) {
    fileio::MemoryFile file(bytes);
    return parseLiterally(file);
}

TEST(Differential, TheRichFileItselfIsReadWithoutAMessage) {
    const std::string text = parsed(richFile());
    EXPECT_EQ(text.substr(0, 7), "1\nmain ");
    EXPECT_NE(text.find("openDml 12:4@0k 24:4@4 1008:4@8k 1020:0@12k"), std::string::npos) << text;
    EXPECT_EQ(text, parsedLiterally(richFile()));
}

TEST(Differential, AFileCutAtAnyByteHasTheSameResult) {
    const Bytes whole = richFile();
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_EQ(parsed(cut), parsedLiterally(cut)) << "cut to " << length << " bytes";
    }
}

TEST(Differential, ADamagedFileHasTheSameResult) {
    static const std::vector<std::uint32_t> kEdges = {
        0,          1,          2,          3,          4,          7,          8,          15,
        16,         23,         24,         31,         32,         55,         56,         0x7FFFFFFF,
        0x80000000, 0x80000017, 0x80000018, 0xFFFFFFF0, 0xFFFFFFFC, 0xFFFFFFFE, 0xFFFFFFFF, fourCC("LIST"),
        fourCC("RIFF"), fourCC("movi"), fourCC("strl"), fourCC("idx1"), fourCC("indx"), fourCC("strf"), fourCC("hdrl")};
    const Bytes whole = richFile();
    std::mt19937 random(20240517);
    const auto below = [&random](std::size_t bound) { return static_cast<std::uint32_t>(random() % bound); };
    int tooCostly = 0;
    constexpr int kFiles = 2000;
    for (int i = 0; i < kFiles; ++i) {
        Bytes damaged = whole;
        for (std::size_t change = 0, changes = 1 + below(4); change < changes; ++change) {
            switch (below(4)) {
            case 0: damaged[below(damaged.size())] = static_cast<std::uint8_t>(random()); break;
            case 1: overwrite(damaged, below(damaged.size() / 4 - 1) * 4, u32(kEdges[below(kEdges.size())])); break;
            case 2: overwrite(damaged, below(damaged.size() / 2 - 2) * 2, u32(below(600))); break;
            default: damaged.resize(damaged.size() - below(40));
            }
        }
        try {
            const std::string expected = parsedLiterally(damaged);
            ASSERT_EQ(parsed(damaged), expected) << "damaged file " << i;
        } catch (const TooCostly&) {
            ++tooCostly;
        }
    }
    EXPECT_LT(tooCostly, kFiles / 100);
}

}  // namespace
