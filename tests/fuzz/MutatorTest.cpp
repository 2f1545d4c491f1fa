#include "mutator/AviMutator.h"
#include "mutator/IndexRepair.h"
#include "mutator/RiffTree.h"
#include "mutator/StandinMutator.h"

#include "avi/AviParser.h"
#include "aviwriter/Sample.h"
#include "codec/QuorvaneApi.h"
#include "fileio/SystemFile.h"
#include "support/FaultyDisk.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using fuzz::Bytes;

// A picture and sound in two segments, with both kinds of index.
Bytes sample() {
    aviwriter::SampleOptions options;
    options.width = 16;
    options.height = 8;
    options.frames = 8;
    options.layout.segmentBytes = 1200;
    options.layout.superIndexRoom = 8;
    options.audio = {{.format = aviwriter::SampleFormat::pcm8, .channels = 1, .sampleRate = 1000}};
    return aviwriter::sampleBytes(options);
}

// The first four bytes of every chunk that the parser finds, by stream.
std::string chunksOf(const Bytes& bytes) {
    fuzz::FaultyDisk::instance().put("file", bytes);
    fileio::SystemFile file;
    EXPECT_TRUE(file.open("file", fileio::kOpenRead | fileio::kOpenShareRead));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    std::string text = parser.errorText();
    for (const auto& stream : parser.streams()) {
        text += stream->useOpenDmlIndex() ? "opendml" : "idx1";
        for (std::size_t i = 0; i < stream->chunkCount(); ++i) {
            const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(stream->chunk(i).offset);
            text += " " + std::string(at, at + 4) + ":" + std::to_string(stream->chunk(i).size);
        }
        text += "\n";
    }
    return text;
}

TEST(RiffTree, AFileIsReadAndWrittenUnchanged) {
    fuzz::RiffTree tree = fuzz::readTree(sample());
    EXPECT_GE(fuzz::placesOf(tree).size(), 40u);
    EXPECT_EQ(fuzz::writeTree(tree), sample());
}

TEST(RiffTree, AFileCutAnywhereIsWrittenUnchanged) {
    const Bytes whole = sample();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        fuzz::RiffTree tree = fuzz::readTree(cut);
        ASSERT_EQ(fuzz::writeTree(tree), cut) << size << " bytes";
    }
}

TEST(RiffTree, SizesFollowTheContents) {
    fuzz::RiffTree tree = fuzz::readTree(sample());
    tree.chunks.front().children.front().children.front().data.resize(80);   // "avih", from 56
    const Bytes written = fuzz::writeTree(tree);
    EXPECT_EQ(written.size(), sample().size() + 24);
    EXPECT_EQ(written[4], static_cast<std::uint8_t>(sample()[4] + 24));
}

TEST(IndexRepair, AValidFileStaysUnchanged) {
    fuzz::RiffTree tree = fuzz::readTree(sample());
    fuzz::repairIndexes(tree);
    EXPECT_EQ(chunksOf(fuzz::writeTree(tree)), chunksOf(sample()));
    EXPECT_NE(chunksOf(sample()).find("opendml QSF1:"), std::string::npos);
}

TEST(IndexRepair, IndexesFollowChunksThatHaveMoved) {
    fuzz::RiffTree tree = fuzz::readTree(sample());
    fuzz::Chunk junk;
    junk.id = fourCC("JUNK");
    junk.data.resize(100);
    std::vector<fuzz::Chunk>& top = tree.chunks.front().children;
    top.insert(top.begin() + 1, junk);   // before "movi"
    EXPECT_NE(chunksOf(fuzz::writeTree(tree)), chunksOf(sample()));
    fuzz::repairIndexes(tree);
    EXPECT_EQ(chunksOf(fuzz::writeTree(tree)), chunksOf(sample()));
}

// Replaces the engine's own mutation and changes nothing.
Bytes unchanged(Bytes bytes, std::size_t) { return bytes; }

TEST(AviMutator, MutationsDependOnlyOnTheSeed) {
    const Bytes input = fuzz::joinInput(sample(), Bytes{1, 2});
    std::size_t different = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        fuzz::Random one(seed);
        fuzz::Random two(seed);
        const Bytes mutated = fuzz::mutateAvi(input, 65536, one, unchanged);
        ASSERT_EQ(mutated, fuzz::mutateAvi(input, 65536, two, unchanged));
        different += mutated != input ? 1 : 0;
    }
    EXPECT_GT(different, 100u);
}

TEST(AviMutator, NothingGrowsBeyondItsLimit) {
    const Bytes input = fuzz::joinInput(sample(), Bytes{1, 2});
    for (unsigned seed = 0; seed < 1000; ++seed) {
        fuzz::Random random(seed);
        ASSERT_LE(fuzz::mutateAvi(input, input.size() + 10, random, unchanged).size(), input.size() + 10);
        ASSERT_LE(fuzz::crossAvi(input, input, input.size() + 10, random).size(), input.size() + 10);
    }
}

TEST(AviMutator, AnyBytesCanBeMutated) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        fuzz::Random random(seed);
        Bytes noise(random.below(60));
        for (std::uint8_t& byte : noise) {
            byte = static_cast<std::uint8_t>(random.next());
        }
        ASSERT_LE(fuzz::mutateAvi(noise, 4096, random, unchanged).size(), 4096u);
        ASSERT_LE(fuzz::crossAvi(noise, sample(), 4096, random).size(), 4096u);
    }
}

TEST(StandinMutator, OftenMakesValidStreams) {
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_open(&handle);
    Bytes stream;
    int described = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        fuzz::Random random(seed);
        stream = fuzz::mutateStream(stream, random);
        QuorvaneFormat format;
        format.word2 = 254;
        format.word3 = 1;
        if (stream.size() >= 28 && quorvane_decompress_query(handle, stream.data(), 28, nullptr, &format) == 0) {
            ++described;
        }
    }
    quorvane_close(handle);
    quorvane_library_close();
    EXPECT_GT(described, 100);
    EXPECT_LT(described, 400);
}

}  // namespace
