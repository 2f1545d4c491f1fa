// The same files read in every way that a disk has: whole, in pieces, cut short, and with an end that comes before the
// size says so. What delivers all bytes gives the golden text; what does not gives that, or a refusal that says why.
#include "damage/SmallFiles.h"

#include "avidump/Report.h"
#include "avi/LiteralParser.h"
#include "fileio/SystemFile.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "support/SparseFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>

namespace damage {

// For the name of a failed test.
static void PrintTo(const SmallFile& file, std::ostream* out) { *out << file.name; }

namespace {

constexpr std::uint32_t kOpenForReading = 9;

// A file whose bytes end earlier than its size says, as on a share that lost the rest. Reads stop there.
class LostEnd : public fileio::File {
public:
    LostEnd(const Bytes& bytes, std::size_t end) : m_bytes(bytes), m_end(end) {}

    void endAt(std::size_t end) { m_end = end; }

    bool open(const char*, std::uint32_t) override { return false; }
    void close() override {}
    std::int64_t size() override { return static_cast<std::int64_t>(m_bytes.size()); }
    std::int64_t tell() override { return m_position; }
    bool seek(std::int64_t pos) override {
        m_position = pos;
        return pos >= 0;
    }
    std::uint64_t read(void* buffer, std::uint64_t count) override {
        const auto begin = static_cast<std::size_t>(m_position);
        const std::size_t part = begin < m_end ? std::min<std::size_t>(count, m_end - begin) : 0;
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(begin < m_end ? begin : 0), part,
                    static_cast<std::uint8_t*>(buffer));
        m_position += static_cast<std::int64_t>(part);
        return part;
    }
    std::uint64_t write(const void*, std::uint64_t) override { return 0; }

private:
    const Bytes& m_bytes;
    std::size_t m_end;
    std::int64_t m_position = 0;
};

// What avidump says of the file, without its name; text for people, which is what the golden files hold.
std::string dumpOf(fileio::File& file) {
    AviParser parser;
    const bool usable = parser.parse(file);
    return avidump::textOf(avidump::makeReport("file.avi", file, parser, usable, true));
}

std::string goldenOf(const SmallFile& file) {
    std::ifstream golden(std::string(GOLDEN_FOLDER) + "/" + file.name + ".txt", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(golden), {}};
    std::erase(text, '\r');
    return text;
}

// Every position of a small file; of a larger one those of headers and indexes, and of the rest a few.
std::vector<std::size_t> endsOf(const Bytes& bytes) {
    std::vector<std::size_t> ends;
    for (std::size_t end = 0; end < bytes.size(); ++end) {
        if (bytes.size() < 4000 || end < 1000 || end + 700 > bytes.size() || end % 331 == 0) {
            ends.push_back(end);
        }
    }
    return ends;
}

// The last message of a file that is refused.
const std::set<std::string>& refusals() {
    static const std::set<std::string> texts = {"riff structure is empty\n", "AVI chunk missing\n", "hdrl missing\n",
                                                "avih missing\n", "avih data read error\n"};
    return texts;
}

std::string lastLineOf(const std::string& text) {
    const std::size_t end = text.empty() ? std::string::npos : text.rfind('\n', text.size() - 2);
    return end == std::string::npos ? text : text.substr(end + 1);
}

// Lists are sums of themselves, whatever they were made of.
void expectSound(const AviParser& parser, bool usable, std::size_t end) {
    ASSERT_TRUE(usable || refusals().contains(lastLineOf(parser.errorText())))
        << "ended at " << end << ": " << parser.errorText();
    ASSERT_TRUE(usable || parser.streams().empty()) << "ended at " << end;
    for (const auto& stream : parser.streams()) {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < stream->chunkCount(); ++i) {
            ASSERT_EQ(stream->chunk(i).startByte, sum) << "ended at " << end;
            sum += stream->chunk(i).size;
        }
        ASSERT_EQ(stream->totalBytes(), sum) << "ended at " << end;
    }
}

class ReadModes : public testing::TestWithParam<SmallFile> {
protected:
    ReadModes() : m_bytes(GetParam().make()), m_golden(goldenOf(GetParam())) {}

    Bytes m_bytes;
    std::string m_golden;
};

TEST_P(ReadModes, WholeGivesTheGoldenText) {
    fileio::MemoryFile file(m_bytes);
    EXPECT_EQ(dumpOf(file), m_golden);
}

TEST_P(ReadModes, WholeGivesWhatThePlainestParserGives) {
    fileio::MemoryFile file(m_bytes);
    AviParser parser;
    const bool usable = parser.parse(file);
    fileio::MemoryFile again(m_bytes);
    EXPECT_EQ(describe(parser, usable), parseLiterally(again));
}

TEST_P(ReadModes, FromDiskGivesTheGoldenText) {
    const TempFolder folder;
    const std::string path = folder.path("file.avi");
    std::ofstream(std::filesystem::path(std::u8string(path.begin(), path.end())), std::ios::binary)
        .write(reinterpret_cast<const char*>(m_bytes.data()), static_cast<std::streamsize>(m_bytes.size()));
    fileio::SystemFile file;
    ASSERT_TRUE(file.open(path.c_str(), kOpenForReading));
    EXPECT_EQ(dumpOf(file), m_golden);
}

TEST_P(ReadModes, BehindWhatWasReadBeforeGivesTheGoldenText) {
    fileio::MemoryFile file(m_bytes);
    AviParser parser;
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(file.seek(0));
        const bool usable = parser.parse(file);
        ASSERT_EQ(avidump::textOf(avidump::makeReport("file.avi", file, parser, usable, true)), m_golden);
    }
}

TEST_P(ReadModes, CutAtAnyByteGivesWhatThePlainestParserGives) {
    for (const std::size_t end : endsOf(m_bytes)) {
        fileio::SparseFile file(static_cast<std::int64_t>(end));
        const auto cut = m_bytes.begin() + static_cast<std::ptrdiff_t>(end);
        file.put(0, Bytes(m_bytes.begin(), cut));
        AviParser parser;
        const bool usable = parser.parse(file);
        expectSound(parser, usable, end);
        if (m_bytes.size() < 4000 || end % 5 == 0) {   // the plain parser is slow
            ASSERT_TRUE(file.seek(0));
            ASSERT_EQ(describe(parser, usable), parseLiterally(file)) << "cut at " << end;
        }
    }
}

TEST_P(ReadModes, AnEndThatComesTooEarlyIsReadToThereAndThenTheWholeFileAsEver) {
    LostEnd file(m_bytes, 0);
    AviParser parser;
    fileio::MemoryFile whole(m_bytes);
    AviParser expected;
    const bool expectedUsable = expected.parse(whole);
    for (const std::size_t end : endsOf(m_bytes)) {
        file.endAt(end);
        file.seek(0);
        const bool usable = parser.parse(file);
        expectSound(parser, usable, end);
        // The same object, with the share back.
        file.endAt(m_bytes.size());
        file.seek(0);
        ASSERT_EQ(parser.parse(file), expectedUsable) << "ended at " << end;
        ASSERT_EQ(parser.errorText(), expected.errorText()) << "ended at " << end;
        ASSERT_EQ(parser.streams().size(), expected.streams().size()) << "ended at " << end;
        for (std::size_t i = 0; i < parser.streams().size(); ++i) {
            ASSERT_EQ(parser.streams()[i]->totalBytes(), expected.streams()[i]->totalBytes()) << "ended at " << end;
        }
    }
}

TEST_P(ReadModes, InPiecesIsAsUsableAsWhole) {
    for (const std::uint64_t limit : {1, 2, 7, 8, 12, 100, 1000}) {
        fileio::MemoryFile memory(m_bytes);
        fileio::FaultFile file(memory);
        file.limitReads(limit);
        AviParser parser;
        const bool usable = parser.parse(file);
        expectSound(parser, usable, limit);
        // Headers come in whatever pieces the disk gives them.
        EXPECT_EQ(usable, m_golden.find("usable: true") != std::string::npos) << limit << " bytes at a time";
    }
}

std::string testNameOf(const testing::TestParamInfo<SmallFile>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, ReadModes, testing::ValuesIn(smallFiles().begin(), smallFiles().end()), testNameOf);

}  // namespace

}  // namespace damage
