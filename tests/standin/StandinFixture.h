// Shared by the stand-in's tests: an initialised library with an open instance, streams, requests and guarded buffers.
#pragma once

#include "codec/QuorvaneApi.h"
#include "standin/Control.h"
#include "standin/Encoder.h"
#include "standin/Result.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace standin {

// Prints codes in hexadecimal with their text.
void PrintTo(Result result, std::ostream* out);

namespace test {

using Bytes = std::vector<std::uint8_t>;

// All compressed types, and the decode types.
inline constexpr std::uint32_t kStreamTypes[] = {101, 102, 103, 104, 105, 106, 107, 108,
                                                 109, 110, 111, 112, 113, 114, 115, 118};
inline constexpr std::uint32_t kDecodeTypes[] = {4, 5, 50, 49, 2, 19, 1, 16, 11, 15, 31, 32};

constexpr std::uint32_t kRec601 = 1;
constexpr std::uint32_t kRec709 = 2;
constexpr std::uint32_t kLimited = 1;
constexpr std::uint32_t kFull = 2;

StreamInfo stream(std::uint32_t type, std::uint32_t width, std::uint32_t height, std::uint32_t colorSpace = kRec709,
                  std::uint32_t range = kLimited);

// Random samples of the type's whole code range, the same for the same seed.
Picture randomPicture(const StreamInfo& info, std::uint32_t seed);

// A picture whose plane i holds `values[i]` everywhere.
Picture flatPicture(const StreamInfo& info, const std::vector<std::uint16_t>& values);

bool isRgbTarget(std::uint32_t type);

// A request like the importer's: fixed words set, no dimensions, full range for RGB, otherwise limited.
QuorvaneFormat request(std::uint32_t type, std::uint32_t flags = 0, std::uint32_t colorSpace = kRec709);

// An output record prepared as by the importer.
QuorvaneFormat preparedOutput();

// A frame buffer filled with 0xCD.
class Buffer {
public:
    Buffer(std::uint32_t rowBytes, std::uint32_t height)
        : m_rowBytes(rowBytes), m_bytes(std::size_t{rowBytes} * height, 0xCD) {}

    std::vector<QuorvanePlane> planes();   // four, the first is this buffer
    Bytes row(std::uint32_t y, std::uint32_t count) const;   // the first `count` bytes of row y
    const Bytes& bytes() const { return m_bytes; }
    bool isUntouched() const;

private:
    std::uint32_t m_rowBytes;
    Bytes m_bytes;
};

// Row bytes that a decode type needs, from the table in the documentation.
std::uint32_t neededRowBytes(std::uint32_t type, std::uint32_t width);

// An initialised library with one open instance; counters start from zero.
class StandinTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;   // fails the test if an instance is left open

    Result query(const Bytes& extraData, const QuorvaneFormat* request, QuorvaneFormat& output);
    Result begin(const StreamInfo& info, const QuorvaneFormat& request);
    Result decompress(const Bytes& frame, Buffer& buffer);
    Result end();

    // Encodes and decodes one picture into rows without padding, and ends the session.
    Bytes decoded(const StreamInfo& info, const Picture& picture, const QuorvaneFormat& request);

    std::uint32_t m_handle = 0;
};

StandinCounters counters();

}  // namespace test
}  // namespace standin
