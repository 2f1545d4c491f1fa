// The engine calls these instead of its own mutations.
#include "mutator/AviMutator.h"

#include <algorithm>

// The engine's own mutation, done in place.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostBytes);

namespace {

fuzz::Bytes mutatePlainly(fuzz::Bytes bytes, std::size_t mostBytes) {
    const std::size_t size = std::min(bytes.size(), mostBytes);
    bytes.resize(mostBytes);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, mostBytes));
    return bytes;
}

std::size_t give(const fuzz::Bytes& bytes, std::uint8_t* out, std::size_t mostBytes) {
    const std::size_t size = std::min(bytes.size(), mostBytes);
    std::copy_n(bytes.begin(), size, out);
    return size;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostBytes,
                                               unsigned seed) {
    fuzz::Random random(seed);
    return give(fuzz::mutateAvi({data, size}, mostBytes, random, mutatePlainly), data, mostBytes);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize, std::uint8_t* out,
                                                 std::size_t mostBytes, unsigned seed) {
    fuzz::Random random(seed);
    return give(fuzz::crossAvi({one, oneSize}, {other, otherSize}, mostBytes, random), out, mostBytes);
}
