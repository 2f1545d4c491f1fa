#include "aviwriter/ToPicture.h"

#include <algorithm>

namespace aviwriter {

namespace {

constexpr std::int64_t kMax = 65535;             // maximum of a canvas component
constexpr std::int64_t kWeightUnit = 10000;
constexpr std::uint32_t kRec601 = 1;
constexpr std::uint32_t kLimited = 1;

struct LumaWeights {                             // in 1/10000
    std::int64_t r;
    std::int64_t b;
};

// How a component's 0 ... 1 (or, for chroma, -1/2 ... +1/2) is converted to code values of a bit depth.
struct Coding {
    std::int64_t lumaBase;
    std::int64_t lumaSpan;
    std::int64_t chromaBase;
    std::int64_t chromaSpan;
    std::int64_t top;
};

Coding codingFor(std::uint32_t bitDepth, std::uint32_t range) {
    const std::int64_t step = std::int64_t{1} << (bitDepth - 8);   // one 8-bit code step
    const std::int64_t top = 256 * step - 1;
    if (range == kLimited) {
        return {16 * step, 219 * step, 128 * step, 224 * step, top};
    }
    return {0, top, 128 * step, top, top};
}

LumaWeights weightsFor(std::uint32_t colorSpace) {
    return colorSpace == kRec601 ? LumaWeights{2990, 1140} : LumaWeights{2126, 722};
}

// numerator / denominator to the nearest whole number, halves up; denominator > 0.
std::int64_t divideRounded(std::int64_t numerator, std::int64_t denominator) {
    const std::int64_t twice = 2 * numerator + denominator;
    const std::int64_t divisor = 2 * denominator;
    return twice >= 0 ? twice / divisor : -((-twice + divisor - 1) / divisor);
}

std::uint16_t clamped(std::int64_t code, const Coding& coding) {
    return static_cast<std::uint16_t>(std::clamp<std::int64_t>(code, 0, coding.top));
}

std::int64_t weightedLuma(std::int64_t r, std::int64_t g, std::int64_t b, const LumaWeights& weights) {
    return weights.r * r + (kWeightUnit - weights.r - weights.b) * g + weights.b * b;
}

template <typename ValueAt>
void fillPlane(standin::Plane& plane, ValueAt valueAt) {
    std::size_t i = 0;
    for (std::uint32_t y = 0; y < plane.height; ++y) {
        for (std::uint32_t x = 0; x < plane.width; ++x) {
            plane.samples[i++] = valueAt(static_cast<int>(x), static_cast<int>(y));
        }
    }
}

void fillRgb(standin::Picture& picture, const Canvas& canvas, const Coding& coding) {
    const auto code = [&coding](std::uint16_t value) {
        return clamped(coding.lumaBase + divideRounded(value * coding.lumaSpan, kMax), coding);
    };
    fillPlane(picture.planes[0], [&](int x, int y) { return code(canvas.at(x, y).r); });
    fillPlane(picture.planes[1], [&](int x, int y) { return code(canvas.at(x, y).g); });
    fillPlane(picture.planes[2], [&](int x, int y) { return code(canvas.at(x, y).b); });
}

void fillLuma(standin::Plane& plane, const Canvas& canvas, const Coding& coding, const LumaWeights& weights) {
    fillPlane(plane, [&](int x, int y) {
        const Color& c = canvas.at(x, y);
        const std::int64_t luma = weightedLuma(c.r, c.g, c.b, weights);
        return clamped(coding.lumaBase + divideRounded(luma * coding.lumaSpan, kMax * kWeightUnit), coding);
    });
}

struct Sum {
    std::int64_t r = 0;
    std::int64_t g = 0;
    std::int64_t b = 0;
    std::int64_t count = 0;
};

Sum sumOfBlock(const Canvas& canvas, int x, int y, int width, int height) {
    Sum sum;
    for (int row = y; row < std::min(y + height, canvas.height()); ++row) {
        for (int column = x; column < std::min(x + width, canvas.width()); ++column) {
            const Color& c = canvas.at(column, row);
            sum.r += c.r;
            sum.g += c.g;
            sum.b += c.b;
            ++sum.count;
        }
    }
    return sum;
}

// `component` selects blue for plane U, red for plane V; `weight` is that colour's weight in luma.
void fillChroma(standin::Plane& plane, const Canvas& canvas, const Coding& coding, const LumaWeights& weights,
                const standin::TypeLayout& layout, std::int64_t Sum::*component, std::int64_t weight) {
    const int blockWidth = static_cast<int>(layout.xSubsampling);
    const int blockHeight = static_cast<int>(layout.ySubsampling);
    fillPlane(plane, [&](int x, int y) {
        const Sum sum = sumOfBlock(canvas, x * blockWidth, y * blockHeight, blockWidth, blockHeight);
        const std::int64_t difference = sum.*component * kWeightUnit - weightedLuma(sum.r, sum.g, sum.b, weights);
        const std::int64_t code = divideRounded(difference * coding.chromaSpan,
                                                2 * (kWeightUnit - weight) * kMax * sum.count);
        return clamped(coding.chromaBase + code, coding);
    });
}

void fillAlpha(standin::Plane& plane, const Canvas& canvas, const Coding& coding) {
    fillPlane(plane, [&](int x, int y) {
        return clamped(divideRounded(canvas.at(x, y).a * coding.top, kMax), coding);
    });
}

}  // namespace

standin::Picture toPicture(const Canvas& canvas, const standin::StreamInfo& info) {
    const standin::TypeLayout layout = standin::typeLayout(info.type);
    const Coding coding = codingFor(layout.bitDepth, info.range);
    const LumaWeights weights = weightsFor(info.colorSpace);
    standin::Picture picture = standin::makePicture(info);
    if (layout.rgb) {
        fillRgb(picture, canvas, coding);
    } else {
        fillLuma(picture.planes[0], canvas, coding, weights);
    }
    if (!layout.rgb && layout.planeCount >= 3) {
        fillChroma(picture.planes[1], canvas, coding, weights, layout, &Sum::b, weights.b);
        fillChroma(picture.planes[2], canvas, coding, weights, layout, &Sum::r, weights.r);
    }
    if (layout.alpha) {
        fillAlpha(picture.planes.back(), canvas, coding);
    }
    return picture;
}

}  // namespace aviwriter
