// The format record of a sound stream: compares its description and the delivered samples with the plain reference.
#include "targets/Target.h"

#include "avi/AviParser.h"
#include "aviwriter/Blocks.h"
#include "fileio/SystemFile.h"
#include "hostkit/host/Host.h"
#include "hostkit/sessions/RecordStorage.h"
#include "importer/AudioInfo.h"
#include "sdk/SdkImporterCodes.h"
#include "support/Expect.h"
#include "support/FaultyDisk.h"
#include "targets/AudioReference.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <vector>

namespace {

using fuzz::expect;

constexpr char kName[] = "sound.avi";
constexpr std::size_t kMostFormatBytes = 4096;
constexpr std::uint32_t kMostFrames = 300;
constexpr csSDK_int32 kUntouchedLabel = -77;

// Bytes that all differ from their neighbours.
fuzz::Bytes streamOf(std::size_t size) {
    fuzz::Bytes stream(size);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : stream) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return stream;
}

// A file of one sound stream in three chunks, one of them empty.
fuzz::Bytes fileWith(fuzz::ByteView format, const fuzz::Bytes& stream, std::uint32_t length, std::size_t cut) {
    using namespace aviwriter;
    const auto split = stream.begin() + static_cast<std::ptrdiff_t>(std::min(cut, stream.size()));
    const Bytes first(stream.begin(), split);
    const Bytes rest(split, stream.end());
    const Bytes firstChunk = chunk("00wb", first);
    const auto offsetOfRest = static_cast<std::uint32_t>(4 + firstChunk.size() + 8);
    return riff("AVI ", {list("hdrl", {avih({}), list("strl", {strh({.type = "auds", .length = length}),
                                                               strf(Bytes(format.begin(), format.end()))})}),
                         list("movi", {firstChunk, chunk("00wb", {}), chunk("00wb", rest)}),
                         idx1({{.chunkId = "00wb", .offset = 4, .length = static_cast<std::uint32_t>(first.size())},
                               {.chunkId = "00wb", .offset = 4, .length = 0},
                               {.chunkId = "00wb", .offset = offsetOfRest,
                                .length = static_cast<std::uint32_t>(rest.size())}})});
}

void checkDescription(const AudioInfo& info, const fuzz::SoundFormat& expected, std::uint32_t length) {
    hostkit::HostRecord<imFileInfoRec8> record;
    info.dumpAndFill(record.get());
    const csSDK_int32 channels = hostkit::valueOf(record->audInfo.numChannels);
    const float rate = hostkit::valueOf(record->audInfo.sampleRate);
    const csSDK_int64 duration = hostkit::valueOf(record->audDuration);
    if (expected.valid) {
        expect(channels == static_cast<csSDK_int32>(expected.channels), "wrong channel count");
        expect(rate == static_cast<float>(expected.rate), "wrong rate");
        expect(duration == length, "wrong duration");
    } else {
        expect(channels >= 1 && channels <= 32, "an invalid description's channel count is out of bounds");
        expect(rate >= 1000.0f && rate <= 192000.0f, "an invalid description's rate is out of bounds");
        expect(duration == 0, "an invalid description has a duration");
    }
    expect(record.guardsAreIntact(), "the record was overrun");
    expect(info.summary().empty() == false && info.summary().back() == '\n', "the summary has no line");
}

void checkLayout(const AudioInfo& info, const fuzz::SoundFormat& expected) {
    std::vector<csSDK_int32> labels(kMaxAudioChannelCount, kUntouchedLabel);
    const csSDK_int32 result = info.getChannelLayout(labels.data());
    expect(result == (expected.valid ? imNoErr : imUnsupported), "wrong result of the channel layout");
    const std::size_t filled = expected.valid ? expected.labels.size() : 0;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        expect(labels[i] == (i < filled ? expected.labels[i] : kUntouchedLabel), "a wrong channel label");
    }
}

void checkSound(AudioInfo& info, const fuzz::SoundFormat& format, fuzz::ByteView stream, fuzz::Script& script) {
    std::int64_t next = 0;
    for (int requests = 1 + static_cast<int>(script.below(4)); requests > 0; --requests) {
        const std::int64_t position = (static_cast<std::int8_t>(script.next8()) * std::int64_t{1})
                                      << (script.next8() % 56);
        const std::uint32_t frames = script.next16() % kMostFrames;
        const std::uint32_t channels = format.valid ? format.channels : 32;
        std::vector<hostkit::GuardedBlock> blocks(channels, hostkit::GuardedBlock(frames * sizeof(float), 0xCD));
        std::vector<float*> buffers;
        for (hostkit::GuardedBlock& block : blocks) {
            buffers.push_back(reinterpret_cast<float*>(block.data()));
        }
        imImportAudioRec7 record = {};
        record.position = position;
        record.size = frames;
        record.buffer = buffers.data();
        expect(info.importAudio(record) == imNoErr, "sound is refused");
        const std::int64_t from = position < 0 ? next : position;
        next = static_cast<std::int64_t>(static_cast<std::uint64_t>(from) + frames);
        for (std::uint32_t channel = 0; channel < channels; ++channel) {
            expect(blocks[channel].guardsAreIntact(), "a sample buffer was overrun");
            for (std::uint32_t frame = 0; frame < frames; ++frame) {
                const std::uint32_t wanted =
                    format.valid ? fuzz::soundSample(format, stream, from, frames, frame, channel) : 0xCDCDCDCD;
                expect(std::bit_cast<std::uint32_t>(buffers[channel][frame]) == wanted, "a wrong sample");
            }
        }
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input = fuzz::splitInput({data, size});
    const fuzz::ByteView record = input.file.first(std::min(input.file.size(), kMostFormatBytes));
    fuzz::Script script(input.script);
    const std::uint32_t length = script.next32();
    const fuzz::Bytes stream = streamOf(script.next16() % 4096);
    const fuzz::Bytes file = fileWith(record, stream, length, script.next16());
    fuzz::FaultyDisk::instance().put(kName, file);

    hostkit::Host host;
    {
        fileio::SystemFile opened;
        expect(opened.open(kName, fileio::kOpenRead | fileio::kOpenShareRead), "the file does not open");
        AviParser parser;
        expect(parser.parse(opened) && parser.streams().size() == 1, "the stream is not found");
        LazyImporterSuites suites;
        suites.setBasicSuite(host.basicSuite());
        AudioInfo info(opened, suites);
        const fuzz::SoundFormat expected = fuzz::soundFormatOf(record);
        expect(info.parse(*parser.streams().front()) == (expected.valid ? imNoErr : imBadFile), "wrong result");
        expect(info.valid() == expected.valid, "validity and result differ");
        checkDescription(info, expected, length);
        checkLayout(info, expected);
        checkSound(info, expected, stream, script);
    }
    expect(host.problems().empty(), "something was not released");
    return 0;
}
