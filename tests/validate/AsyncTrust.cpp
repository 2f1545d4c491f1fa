#include "TrustRow.h"

std::span<const TrustRow> asyncTrust() { return {}; }
