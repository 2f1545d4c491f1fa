// The clips of the frame measurements.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

// 8-bit YUV 4:2:2, decoded into packed 4:2:2, at 1920 x 1080 and 320 x 180.
inline constexpr std::size_t kBigFrameBytes = std::size_t{1920} * 1080 * 2;
std::filesystem::path bigClip();
std::filesystem::path smallClip();

// Median of `values`, which must not be empty.
double medianOf(std::vector<double> values);
