#include "pixels/SourcePictures.h"

#include <algorithm>
#include <array>
#include <functional>
#include <random>

namespace pixels {

namespace {

standin::Picture filledBy(const standin::StreamInfo& info, const std::function<std::uint32_t()>& next) {
    standin::Picture picture = standin::makePicture(info);
    for (standin::Plane& plane : picture.planes) {
        for (std::uint16_t& sample : plane.samples) {
            sample = static_cast<std::uint16_t>(next());
        }
    }
    return picture;
}

std::uint32_t largestCode(const standin::StreamInfo& info) {
    return (1U << standin::typeLayout(info.type).bitDepth) - 1;
}

}  // namespace

standin::Picture noise(const standin::StreamInfo& info, std::uint32_t seed) {
    std::mt19937 lot(seed);
    return filledBy(info, [&lot, mask = largestCode(info)] { return static_cast<std::uint32_t>(lot()) & mask; });
}

standin::Picture ramp(const standin::StreamInfo& info) {
    standin::Picture picture = standin::makePicture(info);
    const std::uint32_t top = largestCode(info);
    for (std::size_t p = 0; p < picture.planes.size(); ++p) {
        standin::Plane& plane = picture.planes[p];
        const std::uint32_t last = std::max(plane.width - 1, 1U);
        for (std::size_t i = 0; i < plane.samples.size(); ++i) {
            const auto x = static_cast<std::uint32_t>(i % plane.width);
            const auto y = static_cast<std::uint32_t>(i / plane.width);
            const std::uint32_t along = top * x / last;
            const std::uint32_t value = (p % 2 == 0 ? along : top - along) + static_cast<std::uint32_t>(p) * y;
            plane.samples[i] = static_cast<std::uint16_t>(value & top);
        }
    }
    return picture;
}

standin::Picture limits(const standin::StreamInfo& info, std::uint32_t seed) {
    const std::uint32_t top = largestCode(info);
    const std::uint32_t step = (top + 1) / 256;
    const std::array<std::uint32_t, 12> codes = {0,          1,          16 * step - 1, 16 * step,  128 * step - 1,
                                                 128 * step, 235 * step, 235 * step + 1, 240 * step, 240 * step + 1,
                                                 top - 1,    top};
    std::mt19937 lot(seed);
    return filledBy(info, [&] { return codes[lot() % codes.size()]; });
}

standin::Picture flat(const standin::StreamInfo& info, std::initializer_list<std::uint16_t> values) {
    standin::Picture picture = standin::makePicture(info);
    auto value = values.begin();
    for (standin::Plane& plane : picture.planes) {
        std::fill(plane.samples.begin(), plane.samples.end(), *value++);
    }
    return picture;
}

}  // namespace pixels
