#include "TrustRow.h"

std::span<const TrustRow> stateTrust() { return {}; }
