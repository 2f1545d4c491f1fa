// What a caller may ask a stream to be decoded into, and what it is told it gets.
#pragma once

#include "codec/QuorvaneApi.h"
#include "standin/DecodeTypes.h"
#include "standin/Encoder.h"

namespace standin {

// A request found good.
struct Target {
    const DecodeType* type = nullptr;
    bool flip = false;
    bool to32768 = false;           // 16-bit samples end at 32768 instead of 65535
    std::uint32_t colorSpace = 0;
    std::uint32_t range = 0;
};

// Every stream can be decoded into every target; throws Refusal for a request that makes no sense.
Target checkRequest(const QuorvaneFormat& request);

// The stream as it is, in the terms of a format record.
QuorvaneFormat describeStream(const StreamInfo& info);

// What a session with this target delivers.
QuorvaneFormat describeDelivery(const StreamInfo& info, const Target& target);

// Whether an output record has been prepared as the contract asks: fixed words set, all else 0.
bool isPreparedOutput(const QuorvaneFormat& output);

}  // namespace standin
