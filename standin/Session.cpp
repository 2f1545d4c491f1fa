#include "standin/Session.h"

#include "standin/CompressedTypes.h"
#include "standin/Result.h"

#include <algorithm>

namespace standin {
namespace {

std::uint32_t maxCode(std::uint32_t bitDepth) {
    return (1u << bitDepth) - 1;
}

CodeSpace sourceCodes(const StreamInfo& info, const TypeLayout& layout) {
    return {.rgb = layout.rgb, .colorSpace = info.colorSpace, .range = info.range, .bitDepth = layout.bitDepth,
            .maxCode = maxCode(layout.bitDepth)};
}

CodeSpace targetCodes(const Target& target, std::uint32_t targetMax) {
    return {.rgb = target.type->rgb, .colorSpace = target.colorSpace, .range = target.range,
            .bitDepth = target.type->bitDepth, .maxCode = targetMax};
}

bool isZero(const QuorvanePlane& plane) {
    return plane.address == 0 && plane.rowBytes == 0 && plane.size == 0;
}

// Copies one row of a plane, repeating each sample for the pixels that share it.
void repeatSamples(const Plane& plane, std::uint32_t y, std::uint32_t xSubsampling, std::uint32_t width,
                   std::uint16_t* out) {
    const std::uint16_t* samples = plane.samples.data() + std::size_t{y} * plane.width;
    if (xSubsampling == 1) {
        std::copy_n(samples, width, out);
        return;
    }
    for (std::uint32_t x = 0; x < width; ++x)
        out[x] = samples[x / 2];
}

}  // namespace

Session::Session(const StreamInfo& info, const Target& target)
    : m_info(info),
      m_layout(typeLayout(info.type)),
      m_target(target),
      m_targetMax(target.to32768 ? 32768 : maxCode(target.type->bitDepth)),
      m_transform(sourceCodes(info, m_layout), targetCodes(target, m_targetMax)),
      m_decoder(info),
      m_rowPixels((std::size_t{info.width} + target.type->groupPixels - 1) / target.type->groupPixels *
                  target.type->groupPixels) {
    for (std::vector<std::uint16_t>& component : m_row)
        component.resize(m_rowPixels);
}

void Session::decode(std::span<const std::uint8_t> frame, const QuorvanePlane* planes) {
    checkPlanes(planes);
    writePicture(m_decoder.decode(frame), planes[0]);
}

void Session::checkPlanes(const QuorvanePlane* planes) const {
    require(planes[0].address != 0, Result::kPlaneAddress);
    require(planes[0].rowBytes >= packedRowBytes(*m_target.type, m_info.width), Result::kPlaneRowBytes);
    require(planes[0].size >= std::uint64_t{planes[0].rowBytes} * m_info.height, Result::kPlaneSize);
    require(isZero(planes[1]) && isZero(planes[2]) && isZero(planes[3]), Result::kPlaneUnused);
}

void Session::writePicture(const Picture& picture, const QuorvanePlane& plane) {
    auto* const base = reinterpret_cast<std::uint8_t*>(static_cast<std::uintptr_t>(plane.address));
    const PixelRow row = {.color = {m_row[0].data(), m_row[1].data(), m_row[2].data()}, .alpha = m_row[3].data(),
                          .count = m_rowPixels};
    for (std::uint32_t y = 0; y < m_info.height; ++y) {
        fetchRow(picture, y);
        m_transform.apply({m_row[0].data(), m_row[1].data(), m_row[2].data()}, m_info.width);
        fetchAlpha(picture, y);
        extendRow();
        const std::uint32_t outY = m_target.flip ? m_info.height - 1 - y : y;
        m_target.type->pack(row, base + std::size_t{outY} * plane.rowBytes);
    }
}

void Session::fetchRow(const Picture& picture, std::uint32_t y) {
    repeatSamples(picture.planes[0], y, 1, m_info.width, m_row[0].data());
    for (std::size_t i = 1; i < 3; ++i) {
        if (m_layout.planeCount == 1)   // grey: chroma is at mid-scale
            std::fill(m_row[i].begin(), m_row[i].end(), static_cast<std::uint16_t>(1u << (m_layout.bitDepth - 1)));
        else
            repeatSamples(picture.planes[i], y / m_layout.ySubsampling, m_layout.xSubsampling, m_info.width,
                          m_row[i].data());
    }
}

void Session::fetchAlpha(const Picture& picture, std::uint32_t y) {
    std::vector<std::uint16_t>& alpha = m_row[3];
    if (!m_target.type->alpha || !m_layout.alpha) {
        std::fill(alpha.begin(), alpha.end(), static_cast<std::uint16_t>(m_targetMax));
        return;
    }
    repeatSamples(picture.planes[3], y, 1, m_info.width, alpha.data());
    scaleAlpha(alpha.data(), m_info.width, maxCode(m_layout.bitDepth), m_targetMax);
}

void Session::extendRow() {
    for (std::vector<std::uint16_t>& component : m_row)
        std::fill(component.begin() + m_info.width, component.end(), component[m_info.width - 1]);
}

}  // namespace standin
