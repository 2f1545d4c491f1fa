// Numbers as text for people; the same in every locale.
#pragma once

#include <cstdint>
#include <string>

// `value` with `digits` decimals.
std::string fixedPoint(double value, int digits);

// "1.50 MiB".
std::string mebibytes(std::uint64_t bytes);
