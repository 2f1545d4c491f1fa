// Imports sound and compares it, bit for bit, with 32-bit float samples that another program decoded.
//   compare_sound FILE STREAM SAMPLES [FILE STREAM SAMPLES ...]
// SAMPLES is a file of little-endian floats, channels interleaved. Exits with 0 if all sounds are equal.
#include "hostkit/sessions/ClipSession.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr csSDK_uint32 kRequestFrames = 997;     // a prime, so that requests begin anywhere within chunks

std::vector<std::uint32_t> readSamples(const std::string& path) {
    std::ifstream in(hostkit::pathFromUtf8(path), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    if (bytes.size() < 4) {
        throw std::runtime_error(path + " holds no samples");
    }
    std::vector<std::uint32_t> samples(bytes.size() / 4);
    for (std::size_t i = 0; i < samples.size() * 4; ++i) {
        samples[i / 4] |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * (i % 4));
    }
    return samples;
}

// Every frame of the clip's stated duration, channels interleaved again.
std::vector<std::uint32_t> import(hostkit::ClipSession& clip, const imFileInfoRec8& info) {
    std::vector<std::uint32_t> samples;
    const PrAudioSample duration = info.audDuration;
    auto left = static_cast<std::uint64_t>(std::max<PrAudioSample>(duration, 0));
    while (left != 0) {
        const auto frames = static_cast<csSDK_uint32>(std::min<std::uint64_t>(left, kRequestFrames));
        const hostkit::AudioAnswer answer = clip.audio(-1, frames, info.audInfo.numChannels);
        if (answer.result != imNoErr) {
            throw std::runtime_error("a request failed with " + std::to_string(answer.result));
        }
        for (csSDK_uint32 frame = 0; frame < frames; ++frame) {
            for (const std::vector<float>& channel : answer.channels) {
                samples.push_back(std::bit_cast<std::uint32_t>(channel[frame]));
            }
        }
        left -= frames;
    }
    return samples;
}

bool isSame(hostkit::ImporterSession& session, const std::string& file, int stream, const std::string& reference) {
    const std::vector<std::uint32_t> wanted = readSamples(reference);
    hostkit::ClipSession clip(session, hostkit::pathFromUtf8(file));
    if (clip.open().result != imNoErr) {
        throw std::runtime_error(file + " does not open");
    }
    const auto info = clip.info(stream);
    if (info->hasAudio == 0 || info->audInfo.numChannels < 1) {
        throw std::runtime_error(file + " has no sound in stream " + std::to_string(stream));
    }
    const std::vector<std::uint32_t> found = import(clip, *info.record);
    const auto [here, there] = std::mismatch(found.begin(), found.end(), wanted.begin(), wanted.end());
    const bool same = here == found.end() && there == wanted.end();
    std::printf("%s %s, stream %d, sample type %d: ", same ? "ok  " : "FAIL", file.c_str(), stream,
                static_cast<int>(info->audInfo.sampleType));
    if (same) {
        std::printf("%zu samples in %d channels\n", found.size(), static_cast<int>(info->audInfo.numChannels));
    } else {
        std::printf("differs from sample %td of %zu on, %zu wanted\n", here - found.begin(), found.size(),
                    wanted.size());
    }
    return same;
}

int compareAll(const std::vector<std::string>& arguments) {
    hostkit::Host host;
    hostkit::PluginLibrary plugin(hostkit::PluginLibrary::programFolder() / hostkit::PluginLibrary::usualFileName());
    hostkit::ImporterSession session(host, plugin.entry());
    session.start();
    int failures = 0;
    for (std::size_t i = 0; i < arguments.size(); i += 3) {
        failures += !isSame(session, arguments[i], std::stoi(arguments[i + 1]), arguments[i + 2]);
    }
    session.shutdown();
    for (const std::string& problem : host.problems()) {
        std::printf("FAIL %s\n", problem.c_str());
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty() || arguments.size() % 3 != 0) {
        std::fprintf(stderr, "usage: compare_sound FILE STREAM SAMPLES [FILE STREAM SAMPLES ...]\n");
        return 2;
    }
    try {
        return compareAll(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "compare_sound: %s\n", error.what());
        return 2;
    }
}
