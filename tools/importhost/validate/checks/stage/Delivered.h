// What a call delivered, as one number: equal numbers for equal deliveries, in this run and in others of the plug-in.
// Addresses that a record carries do not count.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <cstdint>
#include <span>

namespace importhost::validate {

std::uint64_t delivered(const hostkit::HostFrame& frame);                           // 0 for no frame
std::uint64_t delivered(const hostkit::Answer<imFileInfoRec8>& description);        // 0 when it is none
std::uint64_t delivered(const hostkit::AudioAnswer& sound);
std::uint64_t delivered(const hostkit::AnalysisAnswer& analysis);
std::uint64_t delivered(const hostkit::DataRateAnswer& rates);
std::uint64_t delivered(const hostkit::LayoutAnswer& layout);
std::uint64_t delivered(std::span<const PrPixelFormat> formats);

// The data rates' two calls as one: the second one's result if it was made.
csSDK_int32 resultOf(const hostkit::DataRateAnswer& rates);

}  // namespace importhost::validate
