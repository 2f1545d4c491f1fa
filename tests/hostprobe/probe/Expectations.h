// What the probe should expect of its host, beyond what every host promises.
//
// HOSTPROBE_EXPECTS has optional words, separated by ';':
//   version=18               the interface version
//   ticks=254016000000       ticks per second
//   rows=rounded|tight|odd   padding of rows: up to 128 bytes, none, 13 bytes
//   without=NAME             a refused suite, in every version or, as NAME:VERSION, in one; repeatable
//   async=no                 asynchronous importers are never created
#pragma once

#include "sdk/SdkTypes.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hostprobe {

enum class RowPadding { To128, None, Thirteen };

struct Expectations {
    std::optional<csSDK_int32> version;
    std::optional<PrTime> ticks;
    std::optional<RowPadding> rows;
    std::vector<std::pair<std::string, std::optional<csSDK_int32>>> refused;
    bool async = true;
    bool isToldOfSuites = false;        // if false, any suite may be missing

    bool refuses(const std::string& suite, csSDK_int32 suiteVersion) const;
};

// Read once.
const Expectations& expected();

}  // namespace hostprobe
