// One open instance of the codec library, and the library's names for its numbers.
#pragma once

#include "codec/QuorvaneApi.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The library's own names.
std::string codecTypeName(std::uint32_t type);
std::string codecColorSpaceName(std::uint32_t colorSpace);
std::string codecParameterName(std::uint32_t parameter);

// A format record as the library requires it before a call, for a request or for an answer.
QuorvaneFormat preparedFormat();

// Opens an instance at construction and closes it at destruction. A running decode session is closed with it, without
// decompressEnd. Every failing call throws QuorvaneError. Calls on one instance must not overlap.
class CodecInstance {
public:
    CodecInstance();
    ~CodecInstance();

    CodecInstance(const CodecInstance&) = delete;
    CodecInstance& operator=(const CodecInstance&) = delete;

    // Describes the stream.
    QuorvaneFormat decompressQuery(const std::vector<std::uint8_t>& compressedFormat);

    // True if the stream can be decoded into `request`. A refusal throws nothing.
    bool canDecompress(const std::vector<std::uint8_t>& compressedFormat, const QuorvaneFormat& request);

    // Opens the decode session; returns what will be delivered.
    QuorvaneFormat decompressBegin(const std::vector<std::uint8_t>& compressedFormat, const QuorvaneFormat& request);

    // Decodes one frame into the planes.
    void decompress(const std::uint8_t* frame, std::uint32_t size, const std::array<QuorvanePlane, 4>& planes);

    // Closes the decode session.
    void decompressEnd();

    // Reads a 32-bit parameter; `value` is the library's input on entry and its answer on return.
    void getParam(std::uint32_t parameter, std::uint32_t& value);

    // Asks what format the encoder would make of `input`.
    QuorvaneFormat compressQuery(const QuorvaneFormat& input, std::uint64_t& further);

private:
    std::uint32_t query(const std::vector<std::uint8_t>& compressedFormat, const QuorvaneFormat* request,
                        QuorvaneFormat& output);

    std::uint32_t m_handle = 0;
};
