// Reads every sample in every way that a disk can behave: whole, from disk, with a parser that has read others before,
// in pieces, truncated, and with an end before the stated size. The results are compared with those of the plainest
// parser on the same disk. If all bytes are delivered, the result is that of the whole file; otherwise it is that
// parser's text, or, for the few files that it cannot read, a refusal with a reason.
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/parser/ReadSamples.h"
#include "damage/parser/SmallFiles.h"

#include "avi/LiteralParser.h"
#include "fileio/SystemFile.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

namespace damage {

namespace {

// Bytes per read: fewer than a chunk header, one header, one with a list's type; fewer than some formats and indexes,
// and more. The records in "avih" and "strh", 56 bytes, are between 12 and 100.
constexpr std::uint64_t kPieces[] = {1, 2, 7, 8, 12, 100, 1000};

// The plainest parser's text, unless the file is too costly for it.
std::optional<std::string> plainTextOf(fileio::File& file, bool mayBeTooCostly,
                                       ShortHeaders shortHeaders = ShortHeaders::missing) {
    try {
        file.seek(0);
        return parseLiterally(file, shortHeaders);
    } catch (const TooCostly&) {
        if (!mayBeTooCostly) {
            throw;
        }
        return std::nullopt;
    }
}

// A hash of all nodes of the tree (FNV-1a).
std::uint64_t treeHash(const ChunkTree& tree) {
    std::uint64_t hash = 14695981039346656037u;
    for (std::size_t i = 0; i < tree.size(); ++i) {
        const ChunkNode& node = tree[static_cast<std::uint32_t>(i)];
        for (const std::uint64_t value : {node.position, std::uint64_t{node.id}, std::uint64_t{node.size},
                                          std::uint64_t{node.listType}, std::uint64_t{node.firstChild},
                                          std::uint64_t{node.nextSibling}}) {
            hash = (hash ^ value) * 1099511628211u;
        }
    }
    return hash;
}

// Everything that a parser stores, as text, beginning with the text that the plainest parser returns too.
std::string allOf(const AviParser& parser, bool usable) {
    std::string text = describe(parser, usable);
    text.append(std::to_string(parser.chunkTree().size())).append(" nodes: ");
    text.append(std::to_string(treeHash(parser.chunkTree()))).append("\n");
    text.append(std::to_string(parser.idx1EntryCount())).append(" entries of idx1\n");
    for (const auto& stream : parser.streams()) {
        text.append("indexes of stream ").append(std::to_string(stream->streamNumber()));
        for (std::size_t i = 0; i < stream->superIndexEntries().size(); ++i) {
            const avi::SuperIndexEntry entry = stream->superIndexEntries()[i];
            const avi::StdIndexHeader index = stream->stdIndexes()[i];
            text.append(" ").append(std::to_string(entry.qwOffset)).append(":").append(std::to_string(entry.dwSize));
            text.append("@").append(std::to_string(index.qwBaseOffset));
            text.append("*").append(std::to_string(index.nEntriesInUse));
        }
        text.append("\n");
    }
    return text;
}

std::string allOf(fileio::File& file, AviParser& parser) {
    file.seek(0);
    const bool usable = parser.parse(file);
    return allOf(parser, usable);
}

// Whether the last message is one for a refused file.
bool isRefusal(const std::string& messages) {
    static const std::set<std::string> lines = {"riff structure is empty\n", "AVI chunk missing\n", "hdrl missing\n",
                                                "avih missing\n", "avih data read error\n"};
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return messages.ends_with(line); });
}

// Expects the chunk lists to be consistent.
void expectSound(const AviParser& parser, bool usable) {
    ASSERT_TRUE(usable || isRefusal(parser.errorText())) << parser.errorText();
    ASSERT_TRUE(usable || parser.streams().empty());
    for (const auto& stream : parser.streams()) {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < stream->chunkCount(); ++i) {
            ASSERT_EQ(stream->chunk(i).startByte, sum);
            sum += stream->chunk(i).size;
        }
        ASSERT_EQ(stream->totalBytes(), sum);
    }
}

class ReadModes : public testing::TestWithParam<ReadSample> {
protected:
    ReadModes() : m_bytes(GetParam().make()) {
        fileio::MemoryFile file = whole();
        m_usable = m_parser.parse(file);
        m_expected = allOf(m_parser, m_usable);
    }

    fileio::MemoryFile whole() const { return withZeros(GetParam().zerosAfter); }

    // A hole of a megabyte has the same effect as one of 64, in less than 64 million reads.
    fileio::MemoryFile withShortHole() const {
        return withZeros(std::min<std::uint64_t>(GetParam().zerosAfter, 1 << 20));
    }

    fileio::MemoryFile withZeros(std::uint64_t zeros) const {
        fileio::MemoryFile file(static_cast<std::int64_t>(m_bytes.size() + zeros));
        file.put(0, m_bytes);
        return file;
    }

    // Expects this parser to have the same result as the plainest one for the file in its current state.
    void expectPlainText(fileio::File& file, AviParser& parser,
                         ShortHeaders shortHeaders = ShortHeaders::missing) const {
        file.seek(0);
        const bool usable = parser.parse(file);
        ASSERT_NO_FATAL_FAILURE(expectSound(parser, usable));
        if (const auto plain = plainTextOf(file, GetParam().isCostly, shortHeaders)) {
            ASSERT_EQ(describe(parser, usable), *plain);
        }
    }

    Bytes m_bytes;
    AviParser m_parser;     // of the whole file
    bool m_usable = false;
    std::string m_expected;
};

TEST_P(ReadModes, WholeMatchesThePlainestParser) {
    ASSERT_NO_FATAL_FAILURE(expectSound(m_parser, m_usable));
    fileio::MemoryFile file = whole();
    const auto plain = plainTextOf(file, true);
    ASSERT_EQ(plain.has_value(), !GetParam().isCostly);
    if (plain) {
        EXPECT_EQ(describe(m_parser, m_usable), *plain);
    }
}

TEST_P(ReadModes, FromDiskHasTheSameResult) {
    const TempFolder folder;
    const std::filesystem::path path = writeBytes(folder.folder() / "file.avi", m_bytes);
    if (GetParam().zerosAfter > 0) {
        std::filesystem::resize_file(path, m_bytes.size() + GetParam().zerosAfter);
    }
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(folder.path("file.avi").c_str(), fileio::kOpenRead | fileio::kOpenShareRead));
    AviParser parser;
    EXPECT_EQ(allOf(file, parser), m_expected);
}

TEST_P(ReadModes, ByTheSameObjectAgainHasTheSameResult) {
    fileio::MemoryFile file = whole();
    EXPECT_EQ(allOf(file, m_parser), m_expected);
}

TEST_P(ReadModes, ByAUsedObjectHasTheSameResult) {
    // A file that contains everything.
    const auto rich = std::find_if(smallFiles().begin(), smallFiles().end(), [](const SmallFile& file) {
        return std::string_view(file.name) == "opendml-beside-idx1";
    });
    ASSERT_NE(rich, smallFiles().end());
    const Bytes others = rich->make();
    fileio::MemoryFile other(others);
    AviParser parser;
    ASSERT_TRUE(parser.parse(other));
    fileio::MemoryFile file = whole();
    EXPECT_EQ(allOf(file, parser), m_expected);
}

// All bytes can be read, but not with one read. Chunk headers and the records in "avih", "strh" and "dmlh" are read
// until they are complete, because they come from read-ahead blocks, which may end within a record. Formats and indexes
// are one read each and end where that ends, as at an end of the file. The plainest parser does both when it continues
// to read headers.
TEST_P(ReadModes, InPiecesOnlyHeadersAreReadCompletely) {
    fileio::MemoryFile inOnePiece = withShortHole();
    AviParser expected;
    expected.parse(inOnePiece);
    for (const std::uint64_t limit : kPieces) {
        SCOPED_TRACE(testing::Message() << limit << " bytes at a time");
        fileio::MemoryFile memory = withShortHole();
        fileio::FaultFile file(memory);
        file.limitReads(limit);
        AviParser parser;
        ASSERT_NO_FATAL_FAILURE(expectPlainText(file, parser, ShortHeaders::readOn));
        EXPECT_EQ(treeHash(parser.chunkTree()), treeHash(expected.chunkTree()));
    }
}

// From 248 bytes on no header is longer than a piece, and there is no difference.
TEST_P(ReadModes, InPiecesOfWholeHeadersBothPlainModesMatch) {
    for (const std::uint64_t limit : {248, 1000}) {
        SCOPED_TRACE(testing::Message() << limit << " bytes at a time");
        fileio::MemoryFile memory = withShortHole();
        fileio::FaultFile file(memory);
        file.limitReads(limit);
        AviParser parser;
        ASSERT_NO_FATAL_FAILURE(expectPlainText(file, parser));
    }
}

TEST_P(ReadModes, CutAtAnyByteMatchesThePlainestParser) {
    fileio::MemoryFile memory(m_bytes);
    for (const std::size_t end : endsOf(GetParam(), m_bytes, m_parser)) {
        SCOPED_TRACE(testing::Message() << "cut at " << end);
        fileio::FaultFile file(memory);
        file.cutAt(end);
        AviParser parser;
        ASSERT_NO_FATAL_FAILURE(expectPlainText(file, parser));
    }
}

TEST_P(ReadModes, AnEarlyEndMatchesThePlainestParserAndRecovers) {
    fileio::MemoryFile memory = whole();
    AviParser parser;
    std::size_t count = 0;
    for (const std::size_t end : endsOf(GetParam(), m_bytes, m_parser)) {
        SCOPED_TRACE(testing::Message() << "ended at " << end);
        fileio::FaultFile file(memory);
        file.endReadsAt(end);
        ASSERT_NO_FATAL_FAILURE(expectPlainText(file, parser));
        // The same object with the whole file again; only after every third end, which still covers every state.
        if (count++ % 3 == 0) {
            ASSERT_EQ(allOf(memory, parser), m_expected);
        }
    }
}

std::string sampleNameOf(const testing::TestParamInfo<ReadSample>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, ReadModes, testing::ValuesIn(readSamples()), sampleNameOf);

}  // namespace

}  // namespace damage
