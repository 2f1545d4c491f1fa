// AVI files of every kind, as small as possible.
#include "seeds/Seeds.h"

#include "aviwriter/Blocks.h"
#include "aviwriter/Sample.h"
#include "aviwriter/Types.h"

namespace fuzz {

namespace {

using namespace aviwriter;

SampleOptions tiny(std::uint32_t type) {
    SampleOptions options;
    options.type = type;
    options.width = 16;
    options.height = 8;
    options.frames = 3;
    return options;
}

SampleAudio shortSound(SampleFormat format, std::uint16_t channels) {
    return {.format = format, .channels = channels, .sampleRate = 1000};
}

void addTypes(SeedList& seeds) {
    for (std::uint32_t type = 101; type <= 118; ++type) {
        if (type != 116 && type != 117) {
            SampleOptions options = tiny(type);
            options.frames = 1;
            options.layout.superIndexRoom = 1;
            seeds.push_back({"type-" + std::to_string(type), sampleBytes(options)});
        }
    }
}

void addSounds(SeedList& seeds) {
    const auto add = [&seeds](const std::string& name, std::vector<SampleAudio> audio) {
        SampleOptions options = tiny(107);
        options.audio = std::move(audio);
        options.layout.superIndexRoom = 2;
        seeds.push_back({"sound-" + name, sampleBytes(options)});
    };
    add("8", {shortSound(SampleFormat::pcm8, 1)});
    add("16", {shortSound(SampleFormat::pcm16, 2)});
    add("24", {shortSound(SampleFormat::pcm24, 1)});
    add("32", {shortSound(SampleFormat::pcm32, 2)});
    add("float", {shortSound(SampleFormat::float32, 6)});
    SampleAudio extensible = shortSound(SampleFormat::pcm16, 4);
    extensible.record = WaveRecord::extensible40;
    extensible.channelMask = 0x33;
    add("extensible", {extensible});
    SampleAudio bare = shortSound(SampleFormat::pcm16, 1);
    bare.record = WaveRecord::pcm16;
    add("three", {bare, shortSound(SampleFormat::pcm8, 2), shortSound(SampleFormat::float32, 1)});
    SampleAudio manyChunks = shortSound(SampleFormat::pcm16, 1);
    manyChunks.chunkFrames = 7;
    add("many-chunks", {manyChunks});
}

void addIndexes(SeedList& seeds) {
    const auto add = [&seeds](const std::string& name, const SampleOptions& options) {
        seeds.push_back({"index-" + name, sampleBytes(options)});
    };
    SampleOptions options = tiny(107);
    options.layout.superIndexRoom = 4;
    options.audio = {shortSound(SampleFormat::pcm8, 1)};
    options.layout.index = IndexKind::idx1;
    add("legacy", options);
    options.layout.index = IndexKind::openDml;
    add("opendml", options);
    options.layout.index = IndexKind::both;
    options.frames = 8;
    options.layout.segmentBytes = 700;
    options.layout.superIndexRoom = 20;
    add("segments", options);
    options.layout.segmentBytes = 1 << 20;
    options.dropped = {0, 1, 3, 4, 7};
    add("dropped", options);
    options.hole = 64;
    add("hole", options);
}

Bytes strl(const StreamHeader& header, const Bytes& format) { return list("strl", {strh(header), strf(format)}); }

// Files that no writer would produce.
void addDamaged(SeedList& seeds) {
    const Bytes video = strl({}, bytesOf(BitmapInfo{}));
    const Bytes audio = strl({.type = "auds"}, waveFormatEx({}));
    seeds.push_back({"no-codec-data", riff("AVI ", {list("hdrl", {avih({}), video}), list("movi", {}), idx1({{}})})});
    seeds.push_back({"sound-alone", riff("AVI ", {list("hdrl", {avih({}), audio}), list("movi", {})})});
    seeds.push_back({"no-index", riff("AVI ", {list("hdrl", {avih({.streams = 2}), video, audio, odml(3)}),
                                               listClaiming("LIST", "movi", 0, {chunk("00dc", filled(9))})})});
    seeds.push_back({"zeros-after", riff("AVI ", {list("hdrl", {avih({}), video})}) + filled(200)});
    seeds.push_back({"many-streams", riff("AVI ", {list("hdrl", std::vector<Bytes>(12, audio))})});
    Bytes nested = chunk("JUNK", {});
    for (int depth = 0; depth < 40; ++depth) {
        nested = list("strl", {nested});
    }
    seeds.push_back({"nested", riff("AVI ", {list("hdrl", {avih({}), nested})})});
    const Bytes whole = sampleBytes(tiny(107));
    seeds.push_back({"cut", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2))});
}

}  // namespace

SeedList sampleFiles() {
    SeedList seeds;
    addTypes(seeds);
    addSounds(seeds);
    addIndexes(seeds);
    addDamaged(seeds);
    return seeds;
}

}  // namespace fuzz
