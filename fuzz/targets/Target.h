// The function that every fuzzer defines: the engine, or the replay driver, calls it for each input.
#pragma once

#include <cstddef>
#include <cstdint>

// Returns 0. Ends the process if an assertion fails.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
