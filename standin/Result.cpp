#include "standin/Result.h"

namespace standin {
namespace {

struct ResultText {
    Result result;
    const char* text;
};

constexpr ResultText kTexts[] = {
    {Result::kOk, "no error"},
    {Result::kNotInitialised, "the library is not initialised"},
    {Result::kUnknownHandle, "no open instance has this handle"},
    {Result::kOverlappingCall, "another call on this handle is still running"},
    {Result::kNullPointer, "a pointer argument is null"},
    {Result::kSessionRunning, "a decode session is already running on this handle"},
    {Result::kDecompressWithoutBegin, "no decode session is running to decode a frame in"},
    {Result::kEndWithoutBegin, "no decode session is running that could be ended"},
    {Result::kParameterUnknown, "there is no such parameter"},
    {Result::kParameterSize, "the parameter's value has another size"},
    {Result::kEncoderInput, "the encoder does not take this format"},
    {Result::kOutOfMemory, "out of memory"},
    {Result::kInternal, "internal error"},
    {Result::kExtraDataSize, "the compressed format has the wrong size"},
    {Result::kExtraDataMagic, "the compressed format is not one of this codec"},
    {Result::kExtraDataVersion, "the compressed format is of an unknown version"},
    {Result::kExtraDataType, "the compressed format names an unknown type"},
    {Result::kExtraDataDimensions, "the compressed format's width or height is out of bounds"},
    {Result::kExtraDataColorSpace, "the compressed format names an unknown colour space"},
    {Result::kExtraDataRange, "the compressed format names an unknown range"},
    {Result::kRequestMissing, "a session needs a requested format"},
    {Result::kRequestWords, "the requested format's fixed words are not as they must be"},
    {Result::kRequestDimensions, "the requested format must leave width and height 0"},
    {Result::kRequestType, "the requested type cannot be decoded into"},
    {Result::kRequestFlags, "the requested format has unknown flags"},
    {Result::kRequestScale, "the requested type has no 16-bit samples to scale to 32768"},
    {Result::kRequestColorSpace, "the requested colour space is unknown"},
    {Result::kRequestRange, "the requested range is unknown"},
    {Result::kRequestRgbRange, "RGB is delivered in full range only"},
    {Result::kFrameTruncated, "the frame is truncated"},
    {Result::kFrameMagic, "the frame is not one of this codec"},
    {Result::kFrameType, "the frame is of another type than the stream"},
    {Result::kFrameDimensions, "the frame has other dimensions than the stream"},
    {Result::kFrameSizes, "the frame's plane sizes contradict each other"},
    {Result::kFrameData, "the frame's data is corrupt"},
    {Result::kFrameTooSmall, "the frame has too little data for its picture"},
    {Result::kPlaneAddress, "the plane has no address"},
    {Result::kPlaneRowBytes, "the plane's rows are too short for the frame's width"},
    {Result::kPlaneSize, "the plane is too small for the frame's height"},
    {Result::kPlaneUnused, "only the first plane is used, the others must be zero"},
};

}  // namespace

const char* resultText(std::uint32_t code) {
    for (const ResultText& row : kTexts) {
        if (static_cast<std::uint32_t>(row.result) == code)
            return row.text;
    }
    return "unknown error";
}

}  // namespace standin
