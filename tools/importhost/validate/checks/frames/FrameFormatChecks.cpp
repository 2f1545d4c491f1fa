// How pictures are asked for: format, size, rows; and whether all of them arrive.
#include "importhost/validate/checks/frames/FrameParts.h"
#include "importhost/validate/checks/stage/ErrorEvents.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

namespace importhost::validate {

// --- frame-every-pixel ------------------------------------------------------------------------------------------

namespace {

constexpr std::uint8_t kFill = 0xCD;
constexpr std::uint8_t kOtherFill = 0x32;

// Bytes of a row that belong to whole groups of pixels inside the picture.
int deliveredRowBytes(const hostkit::FrameView& view) {
    const hostkit::PixelFormatRow* row = hostkit::findPixelFormat(static_cast<csSDK_uint32>(view.format));
    return row && row->layout == hostkit::PixelLayout::Packed ? view.width() / row->groupPixels * row->groupBytes : 0;
}

struct Gaps {
    int undelivered = 0;
    int different = 0;
    int row = -1;               // of the first byte that is either
    int byte = -1;
};

// The same frame, once in a buffer that was filled with kFill and once with kOtherFill.
Gaps gapsBetween(const hostkit::FrameView& first, const hostkit::FrameView& second) {
    Gaps gaps;
    for (int y = 0; y < first.height(); ++y) {
        const std::uint8_t* a = first.pixels + std::ptrdiff_t{y} * first.rowBytes;
        const std::uint8_t* b = second.pixels + std::ptrdiff_t{y} * second.rowBytes;
        for (int x = 0; x < deliveredRowBytes(first); ++x) {
            if (a[x] == b[x]) {
                continue;
            }
            ++(a[x] == kFill && b[x] == kOtherFill ? gaps.undelivered : gaps.different);
            if (gaps.row < 0) {
                gaps.row = y;
                gaps.byte = x;
            }
        }
    }
    return gaps;
}

void expectEveryPixel(CheckRun& run, const Film& film, std::int64_t index, PrPixelFormat format) {
    hostkit::FrameStore& store = film.clip().plugin().host().frames();
    const auto frameWith = [&](std::uint8_t fill) {
        store.fillWith(fill);
        return film.clip().session().frame(film.middleOf(index), {film.clip().wanted(format)});
    };
    const hostkit::FrameAnswer first = frameWith(kFill);
    const hostkit::FrameAnswer second = frameWith(kOtherFill);
    store.fillWith(kFill);
    const auto a = first.frame.view();
    const auto b = second.frame.view();
    const imFrameFormat wanted = film.clip().wanted(format);
    const auto shapeOf = [](const hostkit::FrameAnswer& answer) {
        Seen shape = seen(answer);
        shape.digest = 0;
        return shape;
    };
    const Seen shape{imNoErr, wanted.inPixelFormat, wanted.inFrameWidth, wanted.inFrameHeight, 0};
    if (!expectDelivered(run, film, frameText(index, format), seen(first)) ||
        !run.expectEqual(frameText(index, format), shapeOf(first), shape) ||
        !run.expectEqual(frameText(index, format) + " once more", shapeOf(second), shape)) {
        return;
    }
    const Gaps gaps = gapsBetween(*a, *b);
    const std::string where = " (the first in row " + std::to_string(gaps.row) + " of memory, byte " +
                              std::to_string(gaps.byte) + ")";
    run.expect(gaps.undelivered == 0, frameText(index, format) + ": " + std::to_string(gaps.undelivered) +
                                          " bytes of pixels were not delivered" + where);
    run.expect(gaps.different == 0, frameText(index, format) + ": " + std::to_string(gaps.different) +
                                        " bytes of pixels depend on what the buffer held before" + where);
}

}  // namespace

void frameEveryPixel(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        for (const PrPixelFormat format : film.clip().formats()) {
            for (const std::int64_t index : spread(film.frames(), std::min(frameBudget(run, film, 1, 6), 6))) {
                expectEveryPixel(run, film, index, format);
            }
        }
    });
}

// --- frame-sizes ------------------------------------------------------------------------------------------------

namespace {

std::string sizeText(int width, int height) { return std::to_string(width) + " x " + std::to_string(height); }

Seen atSize(const Film& film, int width, int height) {
    const auto format = static_cast<csSDK_uint32>(film.firstFormat());
    return seen(film.clip().session().frame(film.middleOf(0), {{width, height, format}}));
}

}  // namespace

void frameSizes(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        const int width = film.clip().info().vidInfo.imageWidth;
        const int height = film.clip().info().vidInfo.imageHeight;
        const Seen exact = atSize(film, width, height);
        if (!expectDelivered(run, film, "frame 0, asked for at " + sizeText(width, height) + ",", exact)) {
            return;
        }
        for (const auto& [w, h] : {std::pair(0, 0), std::pair(width, 0), std::pair(0, height)}) {
            run.expectEqual("frame 0, asked for at " + sizeText(w, h), atSize(film, w, h), exact);
        }
        for (const auto& [w, h] : {std::pair(width + 1, height), std::pair(width, height + 1),
                                   std::pair(width - 1, height), std::pair(width, height - 1), std::pair(1, 100000),
                                   std::pair(2 * width, 2 * height), std::pair(height, width + 2),
                                   std::pair(-width, -height), std::pair(width, -1), std::pair(0, height + 2)}) {
            if ((w == 0 || w == width) && (h == 0 || h == height)) {
                continue;
            }
            run.expectEqual("frame 0, asked for at " + sizeText(w, h) + " of a clip of " + sizeText(width, height),
                            atSize(film, w, h), refusal(imOtherErr));
        }
        run.expectEqual("frame 0 after the wrong sizes", atSize(film, width, height), exact);
    });
}

// --- frame-format-choice ----------------------------------------------------------------------------------------

namespace {

constexpr csSDK_uint32 kUnknownFormats[] = {0, 0x78787878, PrPixelFormat_Invalid, PrPixelFormat_BGRA_4444_32f,
                                            0xFFFFFFFF};

Seen inFormats(const Film& film, const std::vector<csSDK_uint32>& codes) {
    std::vector<imFrameFormat> formats;
    for (const csSDK_uint32 code : codes) {
        formats.push_back(film.clip().wanted(static_cast<PrPixelFormat>(code)));
    }
    return seen(film.clip().session().frame(film.middleOf(0), formats));
}

void expectFirstOfTwo(CheckRun& run, const Film& film) {
    const std::vector<PrPixelFormat>& formats = film.clip().formats();
    for (std::size_t i = 0; i < formats.size(); ++i) {
        const PrPixelFormat other = formats[(i + 1) % formats.size()];
        const auto code = static_cast<csSDK_uint32>(formats[i]);
        const auto otherCode = static_cast<csSDK_uint32>(other);
        run.expectEqual("the answer to " + hostkit::codeText(code) + " before " + hostkit::codeText(otherCode),
                        inFormats(film, {code, otherCode, otherCode, 0}), film.frame(0, formats[i]));
    }
}

void expectNoUnknownFormat(CheckRun& run, const Film& film) {
    const auto offered = static_cast<csSDK_uint32>(film.firstFormat());
    for (const csSDK_uint32 unknown : kUnknownFormats) {
        const std::string what = "the answer to the unknown format " + hostkit::codeText(unknown);
        run.expectEqual(what, inFormats(film, {unknown}), refusal(kExceptionResult));
        run.expectEqual(what + " before one that is offered", inFormats(film, {unknown, offered}),
                        refusal(kExceptionResult));
    }
}

// One that is known but was not offered for this clip: its pixels, or none.
void expectHonestAnswers(CheckRun& run, const Film& film) {
    const std::vector<PrPixelFormat>& offered = film.clip().formats();
    for (const hostkit::PixelFormatRow& row : hostkit::pixelFormats()) {
        const bool isOffered = std::find(offered.begin(), offered.end(), row.format) != offered.end();
        if (isOffered || row.format == PrPixelFormat_Any) {
            continue;
        }
        const auto code = static_cast<csSDK_uint32>(row.format);
        const Seen found = inFormats(film, {code});
        run.expect(found.result != imNoErr || found.format == code,
                   "asked for " + hostkit::codeText(code) + ", got one in " + hostkit::codeText(found.format));
    }
}

}  // namespace

void frameFormatChoice(CheckRun& run) {
    forEachFilm(run, Films::Whole, [&](const Film& film) {
        const Seen first = film.frame(0);
        if (!expectDelivered(run, film, frameText(0, film.firstFormat()), first)) {
            return;
        }
        expectFirstOfTwo(run, film);
        run.expectEqual("the answer to no format at all", inFormats(film, {}), refusal(imOtherErr));
        expectNoUnknownFormat(run, film);
        expectHonestAnswers(run, film);
        run.expectEqual("frame 0 after the formats that are not offered", film.frame(0), first);
    });
}

// --- frame-format-switch ----------------------------------------------------------------------------------------

void frameFormatSwitch(CheckRun& run) {
    forEachFilm(run, Films::DamagedToo, [&](const Film& film) {
        const std::vector<PrPixelFormat>& formats = film.clip().formats();
        const std::vector<std::int64_t> frames = spread(film.frames(), std::min(frameBudget(run, film, 2, 6), 6));
        std::map<std::pair<PrPixelFormat, std::int64_t>, Seen> steady;
        for (const PrPixelFormat format : formats) {
            for (const std::int64_t index : frames) {
                steady[{format, index}] = film.frame(index, format);
            }
        }
        for (int turn = frameBudget(run, film, 8, 80); turn > 0; --turn) {
            const PrPixelFormat format = formats[run.below(formats.size())];
            const std::int64_t index = frames[run.below(frames.size())];
            run.expectEqual(frameText(index, format) + " after another format", film.frame(index, format),
                            steady[{format, index}]);
        }
    });
}

// --- frame-strides ----------------------------------------------------------------------------------------------

void frameStrides(CheckRun& run) {
    std::map<std::tuple<std::filesystem::path, PrPixelFormat, std::int64_t>, Seen> rounded;
    for (const std::string_view name : {"editor-11", "tight-rows", "odd-rows"}) {
        PlayedPlugin plugin(run, hostkit::hostProfile(name));
        forEachFilm(plugin, Films::DamagedToo, [&](const Film& film) {
            for (const PrPixelFormat format : film.clip().formats()) {
                for (const std::int64_t index : spread(film.frames(), std::min(frameBudget(run, film, 1, 4), 4))) {
                    const Seen found = film.frame(index, format);
                    const auto [first, isFirst] =
                        rounded.emplace(std::tuple(film.clip().clip().path, format, index), found);
                    run.expectEqual(frameText(index, format) + " with a host of " + std::string(name), found,
                                    first->second);
                }
            }
        });
    }
}

}  // namespace importhost::validate
