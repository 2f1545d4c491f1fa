#include "wrong/Fault.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace wrong {

namespace {

constexpr std::chrono::milliseconds kTooLong{1200};
constexpr std::size_t kForgottenBytes = 64U << 10;

Answer sleepsOnce(csSDK_int32 selector) {
    return before(selector, [hasSlept = false](const Call&) mutable {
        if (!std::exchange(hasSlept, true)) {
            std::this_thread::sleep_for(kTooLong);
        }
    });
}

const Fault kMeasureFaults[] = {
    {"sleeps-when-opening", sleepsOnce(imOpenFile8)},
    {"sleeps-before-a-frame", sleepsOnce(imGetSourceVideo)},
    {"forgets-memory", before(imOpenFile8, [](const Call&) {
         static std::vector<std::vector<char>> forgotten;
         forgotten.emplace_back(kForgottenBytes, 'x');
     })},
    {"forgets-files", before(imOpenFile8, [](const Call&) {
         static std::vector<std::FILE*> forgotten;
         std::FILE* file = std::fopen("/dev/null", "r");
         forgotten.push_back(file ? file : std::fopen("NUL", "r"));
     })},
};

}  // namespace

std::span<const Fault> measureFaults() { return kMeasureFaults; }

}  // namespace wrong
