#include "TrustRow.h"

std::span<const TrustRow> diskTrust() { return {}; }
