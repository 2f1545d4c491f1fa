#include "TrustRow.h"

constexpr TrustRow kSystemLibraryTrust[] = {
    {"library-imports", "ImportsMore", "it is loaded with 'WS2_32.dll', neither the codec's library nor one"},
    {"library-resource", "NoResource", "it has no resource IMPT 1000"},
};

std::span<const TrustRow> systemLibraryTrust() { return kSystemLibraryTrust; }
