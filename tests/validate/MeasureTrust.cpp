#include "TrustRow.h"

std::span<const TrustRow> measureTrust() { return {}; }
