// What kind of host is played: interface version, ticks, missing suites, row padding. Plain data, one row per host.
#pragma once

#include "sdk/SdkImporter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

inline constexpr csSDK_int32 kEveryVersion = -1;

struct SuiteId {
    std::string name;
    csSDK_int32 version = kEveryVersion;

    friend bool operator==(const SuiteId&, const SuiteId&) = default;
    friend auto operator<=>(const SuiteId&, const SuiteId&) = default;
};

enum class RowBytesPolicy {
    RoundedTo128,       // as the editor does
    Tight,              // no padding at all
    Odd,                // 13 bytes of padding: no row but the first is aligned
};

// Bytes of the records that grew with the interface. The host passes the whole record; the part behind the one that
// this project knows stays zero.
struct RecordSizes {
    std::size_t fileInfo = sizeof(imFileInfoRec8);
    std::size_t sourceVideo = sizeof(imSourceVideoRec);
    std::size_t asyncRequest = 12 + sizeof(imSourceVideoRec);
};

// Whether one of them is this suite, or stands for all its versions.
bool contains(const std::vector<SuiteId>& suites, const SuiteId& wanted);

struct HostProfile {
    std::string name = "editor-11";
    std::string description = "interface 18, rows rounded up to 128 bytes";
    csSDK_int32 interfaceVersion = IMPORTMOD_VERSION_18;
    PrTime ticksPerSecond = 254016000000;
    RowBytesPolicy rowBytes = RowBytesPolicy::RoundedTo128;
    std::vector<SuiteId> refusedSuites = {};
    bool asksForAsync = true;           // knows asynchronous importers

    RecordSizes recordSizes() const;
    bool refuses(const SuiteId& suite) const;
};

// The known profiles, the default one first.
const std::vector<HostProfile>& hostProfiles();

// A profile of the table; throws std::invalid_argument naming all of them when there is none of that name.
const HostProfile& hostProfile(std::string_view name);

}  // namespace hostkit
