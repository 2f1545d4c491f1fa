// The result codes of the stand-in codec library. All have bit 31 set, so they are recognised when printed as signed
// numbers.
#pragma once

#include <cstdint>
#include <exception>

namespace standin {

enum class Result : std::uint32_t {
    kOk = 0,

    // Order of calls, and simple arguments.
    kNotInitialised = 0x80004001,
    kUnknownHandle = 0x80004002,
    kOverlappingCall = 0x80004003,
    kNullPointer = 0x80004004,
    kSessionRunning = 0x80004005,
    kDecompressWithoutBegin = 0x80004006,
    kEndWithoutBegin = 0x80004007,
    kParameterUnknown = 0x80004008,
    kParameterSize = 0x80004009,
    kEncoderInput = 0x8000400A,
    kOutOfMemory = 0x8000400B,
    kInternal = 0x8000400C,

    // The stream's extra data.
    kExtraDataSize = 0x80004101,
    kExtraDataMagic = 0x80004102,
    kExtraDataVersion = 0x80004103,
    kExtraDataType = 0x80004104,
    kExtraDataDimensions = 0x80004105,
    kExtraDataColorSpace = 0x80004106,
    kExtraDataRange = 0x80004107,

    // The requested format.
    kRequestMissing = 0x80004201,
    kRequestWords = 0x80004202,
    kRequestDimensions = 0x80004203,
    kRequestType = 0x80004204,
    kRequestFlags = 0x80004205,
    kRequestScale = 0x80004206,
    kRequestColorSpace = 0x80004207,
    kRequestRange = 0x80004208,
    kRequestRgbRange = 0x80004209,

    // A compressed frame.
    kFrameTruncated = 0x80004301,
    kFrameMagic = 0x80004302,
    kFrameType = 0x80004303,
    kFrameDimensions = 0x80004304,
    kFrameSizes = 0x80004305,
    kFrameData = 0x80004306,
    kFrameTooSmall = 0x80004307,

    // The planes to write into.
    kPlaneAddress = 0x80004401,
    kPlaneRowBytes = 0x80004402,
    kPlaneSize = 0x80004403,
    kPlaneUnused = 0x80004404,
};

// The text of a result code, "unknown error" if there is none. Never null, never destroyed.
const char* resultText(std::uint32_t code);

// Thrown inside the library if a call is refused; never leaves it.
class Refusal : public std::exception {
public:
    explicit Refusal(Result result) : m_result(result) {}
    Result result() const { return m_result; }
    const char* what() const noexcept override { return resultText(static_cast<std::uint32_t>(m_result)); }

private:
    Result m_result;
};

inline void require(bool condition, Result otherwise) {
    if (!condition)
        throw Refusal(otherwise);
}

}  // namespace standin
