#include "wrong/Fault.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace wrong {

namespace {

constexpr std::chrono::milliseconds kTooLong{1200};
constexpr std::size_t kForgottenBytes = 64U << 10;

template <csSDK_int32 slow>
csSDK_int32 sleepsOnce(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool hasSlept = false;
    if (selector == slow && !hasSlept) {
        hasSlept = true;
        std::this_thread::sleep_for(kTooLong);
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 forgetsMemory(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::vector<std::vector<char>> forgotten;
    if (selector == imOpenFile8) {
        forgotten.emplace_back(kForgottenBytes, 'x');
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 forgetsFiles(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::vector<std::FILE*> forgotten;
    if (selector == imOpenFile8) {
        std::FILE* file = std::fopen("/dev/null", "r");
        forgotten.push_back(file ? file : std::fopen("NUL", "r"));
    }
    return right(selector, stdParms, param1, param2);
}

constexpr Fault kMeasureFaults[] = {
    {"sleeps-when-opening", sleepsOnce<imOpenFile8>},
    {"sleeps-before-a-frame", sleepsOnce<imGetSourceVideo>},
    {"forgets-memory", forgetsMemory},
    {"forgets-files", forgetsFiles},
};

}  // namespace

std::span<const Fault> measureFaults() { return kMeasureFaults; }

}  // namespace wrong
