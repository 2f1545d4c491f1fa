#include "TrustRow.h"

std::span<const TrustRow> refusingHostTrust() { return {}; }
