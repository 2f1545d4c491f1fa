#include "TrustRow.h"

constexpr TrustRow kSystemLibraryTrust[] = {
    {"library-imports", "ImportsMore", "it is loaded with 'libz.so.1', neither the codec's library nor one"},
};

std::span<const TrustRow> systemLibraryTrust() { return kSystemLibraryTrust; }
