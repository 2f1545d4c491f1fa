// Assertions that must hold for any input. A fuzzer ends at the first failure, so that the input is kept.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

[[noreturn]] inline void fail(const std::string& sentence) {
    std::fprintf(stderr, "FAILED: %s\n", sentence.c_str());
    std::fflush(stderr);
    std::abort();
}

// `sentence` says what is wrong.
inline void expect(bool condition, const char* sentence) {
    if (!condition) {
        fail(sentence);
    }
}

}  // namespace fuzz
