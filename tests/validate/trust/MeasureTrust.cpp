#include "TrustRow.h"

constexpr TrustRow kMeasureTrust[] = {
    {"opens-quickly", "sleeps-when-opening", "plain.avi: opening and describing it took ", "warn"},
    {"first-frame-comes-quickly", "sleeps-before-a-frame", "plain.avi: the first frame took ", "warn"},
    {"does-not-grow", "forgets-memory", "memory grew by", "warn"},
    {"does-not-grow", "forgets-files", "open files and other system objects grew by", "warn"},
};

std::span<const TrustRow> measureTrust() { return kMeasureTrust; }
