#include "TrustRow.h"

std::span<const TrustRow> frameTrust() { return {}; }
