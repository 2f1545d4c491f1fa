// Rows of the library group that name libraries of one system.
#pragma once

#include "TrustRow.h"

std::span<const TrustRow> systemLibraryTrust();
