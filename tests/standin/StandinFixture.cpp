#include "StandinFixture.h"

#include "standin/Result.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace standin {

void PrintTo(Result result, std::ostream* out) {
    char number[16];
    std::snprintf(number, sizeof number, "%08X", static_cast<unsigned>(result));
    *out << number << " (" << resultText(static_cast<std::uint32_t>(result)) << ")";
}

namespace test {

StreamInfo stream(std::uint32_t type, std::uint32_t width, std::uint32_t height, std::uint32_t colorSpace,
                  std::uint32_t range) {
    return {.type = type, .width = width, .height = height, .colorSpace = colorSpace, .range = range};
}

Picture randomPicture(const StreamInfo& info, std::uint32_t seed) {
    const std::uint32_t mask = (1u << typeLayout(info.type).bitDepth) - 1;
    std::mt19937 random(seed);
    Picture picture = makePicture(info);
    for (Plane& plane : picture.planes) {
        for (std::uint16_t& sample : plane.samples)
            sample = static_cast<std::uint16_t>(random() & mask);
    }
    return picture;
}

Picture flatPicture(const StreamInfo& info, const std::vector<std::uint16_t>& values) {
    Picture picture = makePicture(info);
    for (std::size_t i = 0; i < picture.planes.size(); ++i)
        std::fill(picture.planes[i].samples.begin(), picture.planes[i].samples.end(), values.at(i));
    return picture;
}

bool isRgbTarget(std::uint32_t type) {
    return type == 2 || type == 19 || type == 1 || type == 16 || type == 15 || type == 31 || type == 32;
}

QuorvaneFormat request(std::uint32_t type, std::uint32_t flags, std::uint32_t colorSpace) {
    return {.width = 0, .height = 0, .word2 = 254, .word3 = 1, .type = type, .flags = flags, .colorSpace = colorSpace,
            .range = isRgbTarget(type) ? kFull : kLimited, .word8 = 0};
}

QuorvaneFormat preparedOutput() {
    QuorvaneFormat output;
    output.word2 = 254;
    output.word3 = 1;
    return output;
}

std::vector<QuorvanePlane> Buffer::planes() {
    std::vector<QuorvanePlane> planes(4);
    planes[0].address = reinterpret_cast<std::uintptr_t>(m_bytes.data());
    planes[0].rowBytes = m_rowBytes;
    planes[0].size = static_cast<std::uint32_t>(m_bytes.size());
    return planes;
}

Bytes Buffer::row(std::uint32_t y, std::uint32_t count) const {
    const auto first = m_bytes.begin() + static_cast<std::ptrdiff_t>(std::size_t{y} * m_rowBytes);
    return Bytes(first, first + count);
}

bool Buffer::isUntouched() const {
    return std::all_of(m_bytes.begin(), m_bytes.end(), [](std::uint8_t byte) { return byte == 0xCD; });
}

std::uint32_t neededRowBytes(std::uint32_t type, std::uint32_t width) {
    switch (type) {
    case 4:
    case 5: return (width + 1) / 2 * 4;
    case 11: return (width + 5) / 6 * 16;
    case 31:
    case 32: return width * 8;
    default: return width * 4;
    }
}

void StandinTest::SetUp() {
    standin_reset();
    ASSERT_EQ(0u, quorvane_library_init());
    ASSERT_EQ(0u, quorvane_open(&m_handle));
    ASSERT_NE(0u, m_handle);
    standin_reset();
}

void StandinTest::TearDown() {
    standin_reset();
    if (m_handle != 0)
        quorvane_close(m_handle);
    quorvane_library_close();
    EXPECT_EQ(0u, counters().openInstances);
    EXPECT_EQ(0u, counters().runningSessions);
    EXPECT_EQ(0u, counters().outstandingInits);
}

Result StandinTest::query(const Bytes& extraData, const QuorvaneFormat* wanted, QuorvaneFormat& output) {
    output = preparedOutput();
    return Result{quorvane_decompress_query(m_handle, extraData.data(), static_cast<std::uint32_t>(extraData.size()),
                                            wanted, &output)};
}

Result StandinTest::begin(const StreamInfo& info, const QuorvaneFormat& wanted) {
    const Bytes extraData = encodeExtraData(info);
    QuorvaneFormat output = preparedOutput();
    return Result{quorvane_decompress_begin(m_handle, extraData.data(), static_cast<std::uint32_t>(extraData.size()),
                                            &wanted, &output)};
}

Result StandinTest::decompress(const Bytes& frame, Buffer& buffer) {
    return Result{quorvane_decompress(m_handle, frame.data(), static_cast<std::uint32_t>(frame.size()),
                                      buffer.planes().data())};
}

Result StandinTest::end() {
    return Result{quorvane_decompress_end(m_handle)};
}

Bytes StandinTest::decoded(const StreamInfo& info, const Picture& picture, const QuorvaneFormat& wanted) {
    Buffer buffer(neededRowBytes(wanted.type, info.width), info.height);
    EXPECT_EQ(Result::kOk, begin(info, wanted));
    EXPECT_EQ(Result::kOk, decompress(encodeFrame(info, picture), buffer));
    EXPECT_EQ(Result::kOk, end());
    return buffer.bytes();
}

StandinCounters counters() {
    StandinCounters result;
    standin_counters(&result);
    return result;
}

}  // namespace test
}  // namespace standin
