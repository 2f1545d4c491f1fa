// What every fuzzer is: one function that the engine, or the replay driver, calls for each input.
#pragma once

#include <cstddef>
#include <cstdint>

// Gives 0. Ends the process when something is not as it must be for any input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
