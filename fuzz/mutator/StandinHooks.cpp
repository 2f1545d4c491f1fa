// The engine calls this instead of its own mutations of stand-in streams.
#include "mutator/StandinMutator.h"

#include <algorithm>

// The engine's own mutation, done in place.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostBytes);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostBytes,
                                               unsigned seed) {
    fuzz::Random random(seed);
    if (random.once(2)) {
        return LLVMFuzzerMutate(data, size, mostBytes);
    }
    const fuzz::Input input = fuzz::splitInput({data, size});
    const fuzz::Bytes changed = fuzz::joinInput(fuzz::mutateStream(input.file, random), input.script);
    if (changed.size() > mostBytes) {
        return LLVMFuzzerMutate(data, size, mostBytes);
    }
    std::copy(changed.begin(), changed.end(), data);
    return changed.size();
}
