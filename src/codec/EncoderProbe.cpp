#include "codec/EncoderProbe.h"

#include "codec/CodecInstance.h"

QuorvaneFormat ProbeEncoder(const QuorvaneFormat& input) {
    CodecInstance codec;
    std::uint64_t further = 0;
    return codec.compressQuery(input, further);
}
