// What the probe was told about the host that will load it, beyond what every host promises.
//
// HOSTPROBE_EXPECTS holds words separated by ';', each of which may be left out:
//   version=18               the interface version
//   ticks=254016000000       ticks per second
//   rows=rounded|tight|odd   padding of rows: up to 128 bytes, none, 13 bytes
//   without=NAME             a suite that is refused, in every version or with NAME:VERSION in one; may be repeated
//   async=no                 asynchronous importers are never asked for
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
    bool isToldOfSuites = false;        // without a word about the host any suite may be missing

    bool refuses(const std::string& suite, csSDK_int32 suiteVersion) const;
};

// Read once.
const Expectations& expected();

}  // namespace hostprobe
