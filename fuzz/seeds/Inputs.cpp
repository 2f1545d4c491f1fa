// Scripts appended to files, and the inputs of the fuzzers that read no files.
#include "seeds/Seeds.h"

#include "aviwriter/Blocks.h"
#include "aviwriter/TestPicture.h"
#include "standin/Encoder.h"
#include "targets/ImportRun.h"

#include <initializer_list>
#include <iterator>

namespace fuzz {

namespace {

// Faults in the form that FaultyDisk.cpp reads: the kinds, then the arguments of each.
const Bytes kReadScripts[] = {
    {}, {1, 3}, {2, 0x40, 0x00, 1}, {4, 0x00, 0x82, 4}, {8, 20}, {8, 0x85}, {16, 1, 0x80, 0x80}, {9, 6, 40},
};

std::uint8_t byteOf(Step step) { return static_cast<std::uint8_t>(step); }

Bytes script(std::uint8_t settings, std::initializer_list<std::uint8_t> steps) {
    Bytes bytes = {0, settings};
    bytes.insert(bytes.end(), steps);
    return bytes;
}

// Asks for the first frame in every format that may be offered.
Bytes everyFormat() {
    constexpr std::uint8_t kDecodeFormats = 17;
    Bytes bytes = script(0x03, {byteOf(Step::Info), 0});
    for (std::uint8_t format = 0; format < kDecodeFormats; ++format) {
        bytes.insert(bytes.end(), {byteOf(Step::Frame), 0, 0, format});
    }
    return bytes;
}

std::vector<Bytes> importScripts() {
    using enum Step;
    return {
        {},
        script(0x18, {}),
        script(0x1C, {byteOf(Info), 0, byteOf(Frame), 1, 0, 1, byteOf(Frame), 2, 4, 0, byteOf(Sound), 5, 2, 100, 0}),
        script(0x03, {byteOf(AllInfos), byteOf(Info), 1, byteOf(ChannelLayout), byteOf(NextSound), byteOf(Info), 0,
                      byteOf(Analysis), 200, byteOf(DataRate), byteOf(AsyncCreate), byteOf(Announce), 0, 0, 0,
                      byteOf(Announce), 2, 0, 1, byteOf(Collect), 2, 0, 1, byteOf(Flush), byteOf(AsyncClose)}),
        script(0x04, {byteOf(Info), 0, byteOf(CutFile), 100, byteOf(NextFrame), byteOf(NextSound), byteOf(Quiet),
                      byteOf(ReplaceFile), 255, 0, byteOf(Open), byteOf(Info), 0, byteOf(NextFrame)}),
        script(0x05, {byteOf(Info), 0, byteOf(FailCodecCall), 9, 1, 0, 0, byteOf(NextFrame), byteOf(NextFrame),
                      byteOf(FailHostCall), 1, 0, 0, byteOf(NextFrame), byteOf(NextFrame)}),
        everyFormat(),
    };
}

SeedList withScripts(const SeedList& files, const std::vector<Bytes>& scripts) {
    SeedList seeds;
    for (std::size_t i = 0; i < files.size(); ++i) {
        // Combines every file with three scripts, and every script with many files.
        const std::size_t others = scripts.size() - 2;
        for (const std::size_t which : {std::size_t{0}, scripts.size() - 1, 1 + i % others}) {
            seeds.push_back({files[i].name + "-" + std::to_string(which), joinInput(files[i].bytes, scripts[which])});
        }
    }
    return seeds;
}

}  // namespace

SeedList withReadScripts(const SeedList& files) {
    return withScripts(files, {std::begin(kReadScripts), std::end(kReadScripts)});
}

SeedList withImportScripts(const SeedList& files) {
    return withScripts(files, importScripts());
}

SeedList audioFormats() {
    using namespace aviwriter;
    const Bytes request = {200, 0, 0, 0, 0x00, 0x04, 100, 0, 3, 0, 0, 50, 0, 0xFF, 0, 60, 0, 1, 6, 70, 0};
    SeedList seeds;
    for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{8, 16, 24, 32}) {
        for (const std::uint16_t channels : std::initializer_list<std::uint16_t>{1, 2, 6, 32}) {
            const WaveFormat format = {.channels = channels, .bitsPerSample = bits, .channelMask = 0x603F};
            const std::string name = std::to_string(bits) + "x" + std::to_string(channels);
            seeds.push_back({name + "-pcm", joinInput(pcmWaveFormat(format), request)});
            seeds.push_back({name + "-ex", joinInput(waveFormatEx(format), request)});
            seeds.push_back({name + "-extensible", joinInput(waveFormatExtensible(format), request)});
            WaveFormat floats = format;
            floats.formatTag = kWaveFormatFloat;
            seeds.push_back({name + "-float", joinInput(waveFormatEx(floats), request)});
            seeds.push_back({name + "-extensible-float", joinInput(waveFormatExtensible(floats), request)});
        }
    }
    return seeds;
}

SeedList standinStreams() {
    SeedList seeds;
    std::uint8_t row = 0;
    for (std::uint32_t type = 101; type <= 118; ++type) {
        if (type == 116 || type == 117) {
            continue;
        }
        for (const std::uint32_t width : {16u, 7u, 1u}) {
            const std::uint32_t range = standin::typeLayout(type).rgb ? 2 : 1;
            const standin::StreamInfo info = {.type = type, .width = width, .height = width / 2 + 1,
                                              .colorSpace = 1 + type % 2, .range = range};
            Bytes stream = standin::encodeExtraData(info);
            const Bytes frame = standin::encodeFrame(info, aviwriter::TestPicture(info).frame(0));
            stream.insert(stream.end(), frame.begin(), frame.end());
            for (int targets = 0; targets < 2; ++targets, ++row) {
                const Bytes request = {0, row, static_cast<std::uint8_t>(row / 12 % 2), row, 0, 5, 0, 1, 0, 0, 0, 0, 4};
                seeds.push_back({std::to_string(type) + "-" + std::to_string(width) + "-" + std::to_string(row % 12),
                                 joinInput(stream, request)});
            }
        }
    }
    return seeds;
}

}  // namespace fuzz
