#include "makeavi/Values.h"

#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <vector>

namespace makeavi {

namespace {

using aviwriter::IndexKind;
using aviwriter::SampleAudio;
using aviwriter::SampleFormat;
using aviwriter::WaveRecord;

constexpr std::uint32_t kLargestSide = 16384;       // the encoder's maximum
constexpr std::uint32_t kLongestSpan = 1000000;     // a typing error must not fill the memory
constexpr std::uint32_t kMostChannels = 32;         // the importer's maximum

[[noreturn]] void refuse(std::string_view text, const std::string& expected) {
    throw std::invalid_argument("'" + std::string(text) + "' is not " + expected);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0;;) {
        const std::size_t end = text.find(separator, begin);
        parts.push_back(text.substr(begin, end - begin));
        if (end == std::string_view::npos) {
            return parts;
        }
        begin = end + 1;
    }
}

// Parses a decimal number, or a hexadecimal one after "0x".
std::optional<std::uint32_t> number(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x");
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    std::uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, hexadecimal ? 16 : 10);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

SampleFormat parseSampleFormat(std::string_view text) {
    constexpr std::array<std::pair<std::string_view, SampleFormat>, 5> names = {{
        {"pcm8", SampleFormat::pcm8}, {"pcm16", SampleFormat::pcm16}, {"pcm24", SampleFormat::pcm24},
        {"pcm32", SampleFormat::pcm32}, {"float32", SampleFormat::float32}}};
    for (const auto& [name, format] : names) {
        if (name == text) {
            return format;
        }
    }
    refuse(text, "a sample format: pcm8, pcm16, pcm24, pcm32 or float32");
}

WaveRecord parseHeader(std::string_view text) {
    if (text == "16") {
        return WaveRecord::pcm16;
    }
    if (text == "18") {
        return WaveRecord::ex18;
    }
    if (text == "40") {
        return WaveRecord::extensible40;
    }
    refuse(text, "a sound header size: 16, 18 or 40");
}

void parseAudioExtra(std::string_view text, SampleAudio& audio) {
    const std::size_t equals = text.find('=');
    const std::string_view key = text.substr(0, equals);
    const std::string_view value = equals == std::string_view::npos ? "" : text.substr(equals + 1);
    if (key == "header") {
        audio.record = parseHeader(value);
        return;
    }
    const std::optional<std::uint32_t> count = number(value);
    if (key == "mask" && count) {
        audio.channelMask = *count;
        audio.record = WaveRecord::extensible40;
    } else if (key == "chunk" && count && *count > 0) {
        audio.chunkFrames = *count;
    } else {
        refuse(text, "mask=NUMBER, chunk=FRAMES or header=16|18|40");
    }
}

}  // namespace

std::pair<std::uint32_t, std::uint32_t> parseSize(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, 'x');
    const auto width = number(parts.front());
    const auto height = number(parts.back());
    if (parts.size() != 2 || !width || !height || *width == 0 || *height == 0 || *width > kLargestSide ||
        *height > kLargestSide) {
        refuse(text, "a size such as 320x180, at most 16384x16384");
    }
    return {*width, *height};
}

std::pair<std::uint32_t, std::uint32_t> parseRate(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, '/');
    const auto rate = number(parts.front());
    const auto scale = parts.size() == 1 ? 1 : number(parts.back());
    if (parts.size() > 2 || !rate || !scale || *rate == 0 || *scale == 0) {
        refuse(text, "a frame rate such as 25 or 30000/1001");
    }
    return {*rate, *scale};
}

IndexKind parseIndex(std::string_view text) {
    if (text == "idx1") {
        return IndexKind::idx1;
    }
    if (text == "opendml") {
        return IndexKind::openDml;
    }
    if (text == "both") {
        return IndexKind::both;
    }
    refuse(text, "an index: idx1, opendml or both");
}

std::uint32_t parseColor(std::string_view text) {
    if (text != "601" && text != "709") {
        refuse(text, "a colour matrix: 601 or 709");
    }
    return text == "601" ? 1 : 2;
}

std::uint32_t parseRange(std::string_view text) {
    if (text != "limited" && text != "full") {
        refuse(text, "a range: limited or full");
    }
    return text == "limited" ? 1 : 2;
}

std::uint64_t parseBytes(std::string_view text) {
    constexpr std::array<std::pair<std::string_view, int>, 3> units = {{{"KB", 10}, {"MB", 20}, {"GB", 30}}};
    std::string_view digits = text;
    int shift = 0;
    for (const auto& [unit, unitShift] : units) {
        if (text.ends_with(unit)) {
            digits.remove_suffix(unit.size());
            shift = unitShift;
        }
    }
    const auto count = number(digits);
    if (!count) {
        refuse(text, "a size such as 100000, 64KB, 1MB or 5GB");
    }
    return std::uint64_t{*count} << shift;
}

std::set<std::uint32_t> parseFrames(std::string_view text) {
    std::set<std::uint32_t> frames;
    for (const std::string_view part : split(text, ',')) {
        const std::vector<std::string_view> ends = split(part, '-');
        const auto first = number(ends.front());
        const auto last = number(ends.back());
        if (ends.size() > 2 || !first || !last || *last < *first || *last - *first > kLongestSpan) {
            refuse(part, "a frame number or a span such as 5-8");
        }
        for (std::uint64_t frame = *first; frame <= *last; ++frame) {
            frames.insert(static_cast<std::uint32_t>(frame));
        }
    }
    return frames;
}

SampleAudio parseAudio(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, ':');
    if (parts.size() < 3) {
        refuse(text, "FORMAT:CHANNELS:RATE, such as pcm16:2:48000");
    }
    SampleAudio audio;
    audio.format = parseSampleFormat(parts[0]);
    const auto channels = number(parts[1]);
    const auto rate = number(parts[2]);
    if (!channels || *channels == 0 || *channels > kMostChannels) {
        refuse(parts[1], "a number of channels from 1 to 32");
    }
    if (!rate || *rate == 0) {
        refuse(parts[2], "a sample rate");
    }
    audio.channels = static_cast<std::uint16_t>(*channels);
    audio.sampleRate = *rate;
    for (std::size_t i = 3; i < parts.size(); ++i) {
        parseAudioExtra(parts[i], audio);
    }
    return audio;
}

}  // namespace makeavi
