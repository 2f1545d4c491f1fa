#include "TrustRow.h"

std::span<const TrustRow> audioTrust() { return {}; }
