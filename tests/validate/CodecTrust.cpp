#include "TrustRow.h"

std::span<const TrustRow> codecTrust() { return {}; }
