// Own samples: the pictures that arrive are the pictures that were written.
#include "importhost/validate/checks/frames/FrameParts.h"

#include "aviwriter/TestPicture.h"
#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <array>

namespace importhost::validate {

namespace {

enum class Packing { Bytes, Words, Yuyv, V210, Rgb10 };

// How a compressed type's own components arrive in a format that keeps them.
enum class Change { None, Narrowed10To8, To32768 };

struct Reading {
    std::uint32_t type;
    PrPixelFormat format;
    Packing packing;
    Change change = Change::None;
};

constexpr Reading kReadings[] = {
    {101, PrPixelFormat_BGRX_4444_8u, Packing::Bytes},
    {102, PrPixelFormat_BGRA_4444_8u, Packing::Bytes},
    {103, PrPixelFormat_VUYX_4444_8u_709, Packing::Bytes},
    {104, PrPixelFormat_YUYV_422_8u_709, Packing::Yuyv},
    {105, PrPixelFormat_YUYV_422_8u_709, Packing::Yuyv},
    {106, PrPixelFormat_VUYA_4444_8u_709, Packing::Bytes},
    {107, PrPixelFormat_YUYV_422_8u_709, Packing::Yuyv},
    {108, PrPixelFormat_V210_422_10u_709, Packing::V210},
    {109, PrPixelFormat_RGB_444_10u, Packing::Rgb10},
    {110, PrPixelFormat_BGRA_4444_16u, Packing::Words, Change::To32768},
    {111, PrPixelFormat_BGRX_4444_16u, Packing::Words, Change::To32768},
    {112, PrPixelFormat_BGRA_4444_16u, Packing::Words, Change::To32768},
    {113, PrPixelFormat_BGRX_4444_16u, Packing::Words, Change::To32768},
    {114, PrPixelFormat_BGRA_4444_16u, Packing::Words, Change::To32768},
    {115, PrPixelFormat_V210_422_10u_709, Packing::V210},
    {118, PrPixelFormat_VUYX_4444_8u_709, Packing::Bytes, Change::Narrowed10To8},
};

const Reading* readingOf(std::uint32_t type) {
    const auto* found = std::find_if(std::begin(kReadings), std::end(kReadings),
                                     [type](const Reading& reading) { return reading.type == type; });
    return found == std::end(kReadings) ? nullptr : found;
}

using Components = std::array<std::uint32_t, 4>;        // R G B A or Y U V A

std::uint32_t word16(const std::uint8_t* at) { return at[0] + 256U * at[1]; }
std::uint32_t word32(const std::uint8_t* at) { return word16(at) + (word16(at + 2) << 16); }

// A group of six pixels is twelve components of ten bits, three in each word: U Y V Y U Y V Y U Y V Y.
std::uint32_t v210Component(const std::uint8_t* group, int number) {
    return word32(group + number / 3 * 4) >> (number % 3 * 10) & 0x3FFU;
}

Components delivered(Packing packing, const std::uint8_t* row, int x) {
    switch (packing) {
        case Packing::Bytes: return {row[4 * x + 2], row[4 * x + 1], row[4 * x], row[4 * x + 3]};
        case Packing::Words:
            return {word16(row + 8 * x + 4), word16(row + 8 * x + 2), word16(row + 8 * x), word16(row + 8 * x + 6)};
        case Packing::Yuyv: {
            const std::uint8_t* pair = row + x / 2 * 4;
            return {pair[x % 2 * 2], pair[1], pair[3], 0};
        }
        case Packing::V210: {
            const std::uint8_t* group = row + x / 6 * 16;
            const int pair = x % 6 / 2 * 4;
            return {v210Component(group, pair + 1 + x % 2 * 2), v210Component(group, pair),
                    v210Component(group, pair + 2), 0};
        }
        case Packing::Rgb10: {
            const std::uint32_t word = word32(row + 4 * x);
            return {word >> 22, word >> 12 & 0x3FFU, word >> 2 & 0x3FFU, 0};
        }
    }
    return {};
}

std::uint32_t changed(Change change, std::uint32_t sample, std::uint32_t bits) {
    const std::uint32_t full = (1U << bits) - 1;
    switch (change) {
        case Change::Narrowed10To8: return std::min((sample + 2) >> 2, 255U);
        case Change::To32768: return (sample * 65536U + full) / (2 * full);
        case Change::None: break;
    }
    return sample;
}

// What was written at a pixel; grey has the chroma of grey.
Components written(const standin::Picture& picture, const standin::TypeLayout& layout, Change change, int x, int y) {
    Components components = {0, 1U << (layout.bitDepth - 1), 1U << (layout.bitDepth - 1), 0};
    for (std::size_t plane = 0; plane < picture.planes.size(); ++plane) {
        const bool isChroma = !layout.rgb && (plane == 1 || plane == 2);
        const std::uint32_t column = static_cast<std::uint32_t>(x) / (isChroma ? layout.xSubsampling : 1);
        const std::uint32_t row = static_cast<std::uint32_t>(y) / (isChroma ? layout.ySubsampling : 1);
        const standin::Plane& samples = picture.planes[plane];
        components[plane] = samples.samples[std::size_t{row} * samples.width + column];
    }
    for (std::uint32_t& component : components) {
        component = changed(change, component, layout.bitDepth);
    }
    return components;
}

std::string text(const Components& components, std::size_t count) {
    std::string words;
    for (std::size_t i = 0; i < count; ++i) {
        words.append(i == 0 ? "" : " ").append(std::to_string(components[i]));
    }
    return words;
}

void expectPicture(CheckRun& run, const std::string& what, const hostkit::FrameView& view, const Reading& reading,
                   const standin::Picture& picture) {
    const standin::TypeLayout layout = standin::typeLayout(reading.type);
    const std::size_t count = layout.alpha ? 4 : 3;
    const hostkit::PixelFormatRow* facts = hostkit::findPixelFormat(static_cast<csSDK_uint32>(view.format));
    for (int y = 0; y < view.height(); ++y) {
        const int memoryRow = facts->isTopLeft ? y : view.height() - 1 - y;
        const std::uint8_t* row = view.pixels + std::ptrdiff_t{memoryRow} * view.rowBytes;
        for (int x = 0; x < view.width(); ++x) {
            const std::string found = text(delivered(reading.packing, row, x), count);
            const std::string wanted = text(written(picture, layout, reading.change, x, y), count);
            if (found != wanted) {
                run.fail(what + ", pixel " + std::to_string(x) + " from the left, " + std::to_string(y) +
                         " from the top: found components " + found + ", wanted " + wanted);
                return;
            }
        }
    }
}

standin::StreamInfo streamOf(const aviwriter::SampleOptions& options) {
    const std::uint32_t usualRange = standin::typeLayout(options.type).rgb ? 2 : 1;
    return {options.type, options.width, options.height, options.colorSpace, options.range.value_or(usualRange)};
}

void expectOwnPictures(CheckRun& run, const Film& film, const aviwriter::SampleOptions& made) {
    const Reading* reading = readingOf(made.type);
    if (!reading) {
        return;
    }
    const aviwriter::TestPicture pictures(streamOf(made));
    for (const std::int64_t index : spread(film.frames(), run.effort(3, 12))) {
        if (made.dropped.contains(static_cast<std::uint32_t>(index))) {
            continue;
        }
        const hostkit::FrameAnswer answer = film.clip().frame(index, reading->format);
        const std::string what = frameText(index, reading->format);
        const Seen found = seen(answer);
        const Seen wanted{imNoErr, static_cast<std::uint32_t>(reading->format), static_cast<int>(made.width),
                          static_cast<int>(made.height), found.digest};
        if (run.expectEqual(what, found, wanted)) {
            expectPicture(run, what, *answer.frame.view(), *reading, pictures.frame(static_cast<std::uint32_t>(index)));
        }
    }
}

// Sizes that fill no whole group of pixels, and the smallest one.
void lookAtOddSizes(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const auto& [width, height] : {std::pair(1U, 1U), std::pair(7U, 5U), std::pair(13U, 4U)}) {
        for (const Reading& reading : kReadings) {
            aviwriter::SampleOptions options = ownSample();
            options.type = reading.type;
            options.width = width;
            options.height = height;
            const std::string name = "size-" + std::to_string(width) + "x" + std::to_string(height) + "-type-" +
                                     std::to_string(reading.type) + ".avi";
            const auto clip = openOwn(plugin, writeOwn(run, name, options));
            const auto film = clip ? Film::of(*clip) : std::nullopt;
            if (film) {
                expectOwnPictures(run, *film, options);
            }
        }
    }
}

}  // namespace

// --- frame-true-picture -----------------------------------------------------------------------------------------

void frameTruePicture(CheckRun& run) {
    if (run.hasOwnSamples()) {
        forEachFilm(run, Films::Whole, [&](const Film& film) {
            if (const auto& made = film.clip().clip().made) {
                expectOwnPictures(run, film, *made);
            }
        });
    }
    if (run.level() >= 4 || !run.hasOwnSamples()) {
        lookAtOddSizes(run);
    }
}

}  // namespace importhost::validate
