#include "hostkit/host/HostProfile.h"

#include <algorithm>
#include <stdexcept>

namespace hostkit {

namespace {

constexpr PrTime kUsualTicks = 254016000000;

// Version 23 appended to these records.
constexpr RecordSizes kSizesOf23 = {.fileInfo = 5376, .sourceVideo = 112, .asyncRequest = 124};

}  // namespace

RecordSizes HostProfile::recordSizes() const {
    return interfaceVersion >= IMPORTMOD_VERSION_23 ? kSizesOf23 : RecordSizes{};
}

bool contains(const std::vector<SuiteId>& suites, const SuiteId& wanted) {
    return std::any_of(suites.begin(), suites.end(), [&wanted](const SuiteId& suite) {
        return suite.name == wanted.name && (suite.version == kEveryVersion || suite.version == wanted.version);
    });
}

bool HostProfile::refuses(const SuiteId& suite) const { return contains(refusedSuites, suite); }

const std::vector<HostProfile>& hostProfiles() {
    static const std::vector<HostProfile> profiles = {
        {},
        {"editor-9", "interface 17", IMPORTMOD_VERSION_17, kUsualTicks, RowBytesPolicy::RoundedTo128, {}},
        {"editor-14", "interface 23 with its bigger records", IMPORTMOD_VERSION_23, kUsualTicks,
         RowBytesPolicy::RoundedTo128, {}},
        {"tight-rows", "interface 18, no padding between rows", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::Tight, {}},
        {"odd-rows", "interface 18, rows that start at odd addresses", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::Odd, {}},
        {"coarse-ticks", "interface 18, 1000 ticks per second", IMPORTMOD_VERSION_18, 1000,
         RowBytesPolicy::RoundedTo128, {}},
        {"no-cache-suite", "interface 18 without the PPix Cache Suite", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::RoundedTo128, {{kPrSDKPPixCacheSuite, kEveryVersion}}},
        {"old-cache-suite", "interface 18 that lacks version 6 of the PPix Cache Suite", IMPORTMOD_VERSION_18,
         kUsualTicks, RowBytesPolicy::RoundedTo128, {{kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion}}},
        {"no-ppix-suite", "interface 18 without the PPix Suite", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::RoundedTo128, {{kPrSDKPPixSuite, kEveryVersion}}},
        {"no-error-suite", "interface 18 without the Error Suite", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::RoundedTo128, {{kPrSDKErrorSuite, kEveryVersion}}},
        {"no-async", "interface 18, never asks for asynchronous importers", IMPORTMOD_VERSION_18, kUsualTicks,
         RowBytesPolicy::RoundedTo128, {}, false},
    };
    return profiles;
}

const HostProfile& hostProfile(std::string_view name) {
    std::string known;
    for (const HostProfile& profile : hostProfiles()) {
        if (profile.name == name) {
            return profile;
        }
        known += (known.empty() ? "" : ", ") + profile.name;
    }
    throw std::invalid_argument("There is no host profile '" + std::string(name) + "'; known are " + known + ".");
}

}  // namespace hostkit
