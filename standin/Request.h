// Checks decode requests, and describes what they deliver.
#pragma once

#include "codec/QuorvaneApi.h"
#include "standin/DecodeTypes.h"
#include "standin/Encoder.h"

namespace standin {

// A valid request.
struct Target {
    const DecodeType* type = nullptr;
    bool flip = false;
    bool to32768 = false;           // 16-bit samples end at 32768 instead of 65535
    std::uint32_t colorSpace = 0;
    std::uint32_t range = 0;
};

// Every stream can be decoded into every target. Throws Refusal for an invalid request.
Target checkRequest(const QuorvaneFormat& request);

// The stream as a format record.
QuorvaneFormat describeStream(const StreamInfo& info);

// What a session with this target delivers.
QuorvaneFormat describeDelivery(const StreamInfo& info, const Target& target);

// True if an output record is prepared as the contract requires: fixed words set, all else 0.
bool isPreparedOutput(const QuorvaneFormat& output);

}  // namespace standin
